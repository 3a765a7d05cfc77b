// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/config.h>
#include <ovrabase/export.h>

#if OVRABASE_HAS_STLAB
#include <stlab/concurrency/future.hpp>
#else
#include <future>
#endif

#include <memory>

namespace Vyn {

template<class T>
class future;

/// A pending operation without a result. Copies stand for the same operation.
///
/// It wraps stlab's future where the library was built with stlab, else the standard library's, and
/// looks the same over both. Const calls are thread-safe. The last copy of a std::async() future
/// waits for its operation when it goes, as the standard has it; no other future does.
template<>
class future<void> {
public:
    /// What this class wraps.
#if OVRABASE_HAS_STLAB
    using backend_type = stlab::future<void>;
#else
    using backend_type = std::shared_future<void>;
#endif

    /// Makes an invalid future: no operation.
    future() = default;
    /// Wraps \a backend; what is not valid makes an invalid future.
    OVRABASE_EXPORT future(backend_type backend);

    /// Tells whether there is an operation.
    bool valid() const
    {
        return mBackend != nullptr;
    }

    /// Tells whether the operation has ended, well or not. One that only starts when it is waited
    /// for counts as ended. False for an invalid future.
    OVRABASE_EXPORT bool isReady() const;

    /// Blocks until the operation has ended; at once for an invalid future. How it ended is not
    /// told: the error of a failed operation stays with the backend. Must not be called by a worker
    /// of the pool that the operation still needs.
    OVRABASE_EXPORT void await() const;

    /// Tells whether both are the same operation. Invalid futures are none, so they are not equal
    /// even to themselves. Standard futures know their operation only through copies of one
    /// Vyn::future: two that are made from one std::shared_future differ.
    friend bool operator==(const future &a, const future &b)
    {
        return a.isSameOperation(b);
    }

private:
    OVRABASE_EXPORT bool isSameOperation(const future &other) const;

    std::shared_ptr<const backend_type> mBackend;
};

} // namespace Vyn
