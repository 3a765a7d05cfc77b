// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

namespace Vyn::OvraBase::ThreadUtils {

/// Returns true if the calling thread is the main thread, which is the thread of the application
/// object. Without an application object, logs an error on the logger Debug and returns false.
/// Thread-safe.
OVRABASE_EXPORT bool isMainThread();

} // namespace Vyn::OvraBase::ThreadUtils
