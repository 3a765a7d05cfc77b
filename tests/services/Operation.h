// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/services/future.h>

#if OVRABASE_HAS_STLAB
#include <stlab/concurrency/immediate_executor.hpp>
#endif

#include <stdexcept>

namespace Vyn::Test {

/// An operation that ends, well or with an error, when finish() is called.
class Operation {
    static void end(bool isSuccess)
    {
        if (!isSuccess) {
            throw std::runtime_error("failed");
        }
    }

#if OVRABASE_HAS_STLAB
    std::pair<stlab::packaged_task<bool>, Vyn::future<void>::backend_type> mTask =
        stlab::package<void(bool)>(stlab::immediate_executor, &end);

public:
    void finish(bool isSuccess = true)
    {
        mTask.first(isSuccess);
    }
    Vyn::future<void> future{mTask.second};
#else
    std::packaged_task<void(bool)> mTask{&end};

public:
    void finish(bool isSuccess = true)
    {
        mTask(isSuccess);
    }
    Vyn::future<void> future{mTask.get_future().share()};
#endif
};

} // namespace Vyn::Test
