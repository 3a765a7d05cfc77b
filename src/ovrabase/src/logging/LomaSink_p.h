// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <spdlog/common.h>

namespace Vyn::OvraBase {

/// Makes the sink that writes spdlog's records to the Debug logger, as
/// "name [file:line function()] payload".
spdlog::sink_ptr makeLomaSink();

} // namespace Vyn::OvraBase
