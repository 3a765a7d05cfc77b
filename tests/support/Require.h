// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdio>
#include <cstdlib>

namespace Vyn::Test {

/// Ends the process with 1, without any destructor, unless \a condition holds.
inline void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "failed: %s\n", what);
        std::_Exit(1);
    }
}

} // namespace Vyn::Test
