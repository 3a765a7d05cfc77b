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

/// A handle to an asynchronous operation without a result. Copies refer to the same operation.
///
/// It wraps stlab::future<void> if the library was built with stlab, and std::shared_future<void>
/// otherwise. The interface is the same for both. Const calls are thread-safe.
///
/// The destructor of the last copy of a future of std::async() waits for the operation, as the C++
/// standard requires, unless the operation is deferred. In all other cases, the destructor of a
/// Vyn::future returns at once. With stlab, the destructor of the last copy cancels an operation
/// that has not begun.
template<>
class future<void> {
public:
    /// The type that this class wraps.
#if OVRABASE_HAS_STLAB
    using backend_type = stlab::future<void>;
#else
    using backend_type = std::shared_future<void>;
#endif

    /// Makes an invalid future, which refers to no operation.
    future() = default;
    /// Wraps \a backend. If \a backend is not valid, neither is this future.
    OVRABASE_EXPORT future(backend_type backend);

    /// Returns true if this future refers to an operation.
    bool valid() const
    {
        return mBackend != nullptr;
    }

    /// Returns true if the operation has ended, with success or with an error. A deferred operation
    /// (std::launch::deferred), which starts only when it is waited for, counts as ended. Returns
    /// false for an invalid future.
    OVRABASE_EXPORT bool isReady() const;

    /// Blocks until the operation has ended. Returns at once for an invalid future. Does not report
    /// an error of the operation: the wrapped future keeps it. Can deadlock if it blocks a pool
    /// thread that the operation needs.
    OVRABASE_EXPORT void await() const;

    /// Returns true if both are known to refer to the same operation. An invalid future is not
    /// equal to any future, not even to itself. With std::shared_future, only copies of one
    /// Vyn::future are equal: two Vyn::future that are made from one std::shared_future are not.
    friend bool operator==(const future &a, const future &b)
    {
        return a.isSameOperation(b);
    }

private:
    OVRABASE_EXPORT bool isSameOperation(const future &other) const;

    std::shared_ptr<const backend_type> mBackend;
};

} // namespace Vyn
