// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/services/future.h>

#include <stlab/concurrency/await.hpp>

#include <utility>

namespace Vyn {

future<void>::future(backend_type backend)
    : mBackend(backend.valid() ? std::make_shared<const backend_type>(std::move(backend)) : nullptr)
{
}

bool future<void>::isReady() const
{
    return mBackend && mBackend->is_ready();
}

void future<void>::await() const
{
    if (!mBackend) {
        return;
    }
    try {
        stlab::await(backend_type(*mBackend));
    } catch (...) {
        // The operation's own error; it has ended.
    }
}

bool future<void>::isSameOperation(const future &other) const
{
    return mBackend && other.mBackend && *mBackend == *other.mBackend;
}

} // namespace Vyn
