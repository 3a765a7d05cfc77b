// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Vyn::OvraBase::os {

/// Keeps this library loaded until the process ends, even if its users unload it. Call it before a
/// sink is given to spdlog or a message handler to Qt: they may call it after the users are
/// unloaded.
void pinThisModule();

} // namespace Vyn::OvraBase::os
