// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace Vyn::OvraBase {

/// The stable name of a log site, written out in full: "File.cpp:12 qualified::function()".
/// Log readers filter by it, so it stays when the code around it moves.
struct LogPosition {
    std::string_view text;
};

} // namespace Vyn::OvraBase
