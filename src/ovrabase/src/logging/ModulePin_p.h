// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Vyn::OvraBase::os {

/// Keeps this library loaded until the process ends, whoever unloads it: what it has handed to
/// spdlog or to Qt is called by them later. Reports nothing.
void pinThisModule();

} // namespace Vyn::OvraBase::os
