// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <thread>
#include <vector>

namespace Vyn::Test {

/// Calls \a work with 0 to \a count - 1, each on a thread of its own, all at once; waits for them.
template<class Work>
void onThreads(int count, const Work &work)
{
    // No std::latch: that of libstdc++ 12 can sleep through the last arrival on Windows, for ever.
    std::atomic<int> missing = count;
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            --missing;
            while (missing > 0) {
                std::this_thread::yield();
            }
            work(i);
        });
    }
}

} // namespace Vyn::Test
