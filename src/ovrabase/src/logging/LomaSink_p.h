// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <spdlog/common.h>

#include <vector>

namespace Vyn::OvraBase {

/// Makes the sink that writes spdlog's records to the Debug logger, as
/// "name [file:line function()] payload".
spdlog::sink_ptr makeLomaSink();

/// True if a sink of makeLomaSink() is among \a sinks or among those that one of them hands on to.
bool hasLomaSink(const std::vector<spdlog::sink_ptr> &sinks);

} // namespace Vyn::OvraBase
