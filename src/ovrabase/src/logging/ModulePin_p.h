// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Vyn::OvraBase::os {

/// Keeps this library loaded until the process ends, even if all modules that use it are unloaded.
/// Must be called before a sink is given to spdlog, or a message handler to Qt: spdlog and Qt may
/// call the sink and the handler after those modules are unloaded.
void pinThisModule();

} // namespace Vyn::OvraBase::os
