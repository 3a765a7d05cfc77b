// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

namespace Vyn::OvraBase::ThreadUtils {

/// Tells whether the caller runs on the main thread: the one that the application object lives in.
/// Without an application object false, which is logged as an error. Thread-safe.
OVRABASE_EXPORT bool isMainThread();

} // namespace Vyn::OvraBase::ThreadUtils
