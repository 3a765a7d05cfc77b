// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>

/// Ends the run, as a finding, when a property does not hold.
inline void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}
