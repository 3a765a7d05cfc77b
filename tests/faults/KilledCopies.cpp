// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Processes that copy with backup are killed, one before and one after each system call.

#include "faults/Faults.h"

int main()
{
    using namespace Vyn::Test;
    for (const bool isThere : {false, true}) {
        const QTemporaryDir folder;
        const int runs = killCopiesAtEachStop(
            folder.path(), isThere, [] {}, [] {});
        require(runs > 20, "processes are killed during the copies");
        std::printf("%d runs, all but the last one killed\n", runs);
    }
    return 0;
}
