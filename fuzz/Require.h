// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>

/// Aborts if a property does not hold. libFuzzer reports that as a finding.
inline void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}
