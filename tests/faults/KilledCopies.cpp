// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// A process that copies with backup is killed before and after each of its system calls.

#include "faults/Faults.h"

int main()
{
    using namespace Vyn::Test;
    for (const bool isThere : {false, true}) {
        const QTemporaryDir folder;
        const int stops = killCopiesAtEachStop(
            folder.path(), isThere, [] {}, [] {});
        require(stops > 20, "the copies are killed too");
        std::printf("killed at %d stops\n", stops);
    }
    return 0;
}
