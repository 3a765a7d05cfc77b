// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/services/future.h>

#include <chrono>
#include <utility>

namespace Vyn {

future<void>::future(backend_type backend)
    : mBackend(backend.valid() ? std::make_shared<const backend_type>(std::move(backend)) : nullptr)
{
}

bool future<void>::isReady() const
{
    return mBackend && mBackend->wait_for(std::chrono::seconds(0)) != std::future_status::timeout;
}

void future<void>::await() const
{
    if (mBackend) {
        mBackend->wait();
    }
}

bool future<void>::isSameOperation(const future &other) const
{
    return mBackend && mBackend == other.mBackend;
}

} // namespace Vyn
