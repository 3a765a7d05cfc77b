// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/services/future.h>

#include <stlab/concurrency/immediate_executor.hpp>

#include <future>
#include <memory>
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
    // stlab::await() is not used: it would start a thread pool inside this library, and the
    // application could not join the threads of that pool before exit. The promise is shared,
    // because this call may return while set_value() still runs.
    const auto ended = std::make_shared<std::promise<void>>();
    const auto continuation = backend_type(*mBackend).recover(
        stlab::immediate_executor, [ended](const backend_type &) { ended->set_value(); });
    ended->get_future().wait();
}

bool future<void>::isSameOperation(const future &other) const
{
    return mBackend && other.mBackend && *mBackend == *other.mBackend;
}

} // namespace Vyn
