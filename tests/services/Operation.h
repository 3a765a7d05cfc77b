// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/services/future.h>

#if OVRABASE_HAS_STLAB
#include <stlab/concurrency/immediate_executor.hpp>
#endif

#include <exception>
#include <stdexcept>

namespace Vyn::Test {

/// An operation that ends when the test says so.
class Operation {
#if OVRABASE_HAS_STLAB
    stlab::packaged_task<bool> mTask;

public:
    Operation()
    {
        auto [task, backend] = stlab::package<void(bool)>(stlab::immediate_executor, [](bool good) {
            if (!good) {
                throw std::runtime_error("failed");
            }
        });
        mTask = std::move(task);
        future = backend;
    }
    void finish()
    {
        mTask(true);
    }
    void fail()
    {
        mTask(false);
    }
#else
    std::promise<void> mPromise;

public:
    Operation()
        : future(mPromise.get_future().share())
    {
    }
    void finish()
    {
        mPromise.set_value();
    }
    void fail()
    {
        mPromise.set_exception(std::make_exception_ptr(std::runtime_error("failed")));
    }
#endif
    Vyn::future<void> future;
};

} // namespace Vyn::Test
