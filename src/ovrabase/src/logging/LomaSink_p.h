// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <spdlog/common.h>

#include <vector>

namespace Vyn::OvraBase {

/// Makes a sink that connects loggers of spdlog with the log manager ("loma"). The sink writes each
/// record that it receives to the logger Debug, as "name [file:line function()] payload".
spdlog::sink_ptr makeLomaSink();

/// Returns true if a sink of makeLomaSink() is among \a sinks, or in a dist_sink among them.
bool hasLomaSink(const std::vector<spdlog::sink_ptr> &sinks);

} // namespace Vyn::OvraBase
