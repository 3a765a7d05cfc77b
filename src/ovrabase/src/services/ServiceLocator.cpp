// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// First, so that services destroyed at the end of the process can still log.
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/services/ServiceLocator.h>

namespace Vyn::OvraBase {
// Ready before the first static constructor runs.
constinit std::unique_ptr<ServiceLocator> ServiceLocator::mUniqueInstance;

namespace {

/// Stops the locator before mUniqueInstance ends, whose destructor would let services still see it.
struct StopAtExit {
    ~StopAtExit() { ServiceLocator::stop(); }
};
const StopAtExit stopAtExit;

} // namespace

Service::~Service() = default;

ServiceLocator::ServiceLocator() = default;

ServiceLocator::~ServiceLocator() = default;

void ServiceLocator::start()
{
    if (!mUniqueInstance) {
        mUniqueInstance = std::make_unique<ServiceLocator>();
    }
}

bool ServiceLocator::started()
{
    return mUniqueInstance != nullptr;
}

void ServiceLocator::stop()
{
    const std::unique_ptr<ServiceLocator> stopped = std::move(mUniqueInstance);
}

const std::unique_ptr<ServiceLocator> &ServiceLocator::instance()
{
    return mUniqueInstance;
}

bool ServiceLocator::add(std::size_t id, std::unique_ptr<Service> service)
{
    if (!service) {
        return false;
    }
    // try_emplace() leaves a refused service to its parameter, which outlives the lock.
    const std::lock_guard lock(mLock);
    return mServices.try_emplace(id, std::move(service)).second;
}

Service *ServiceLocator::find(std::size_t id)
{
    const std::lock_guard lock(mLock);
    const auto found = mServices.find(id);
    return found != mServices.end() ? found->second.get() : nullptr;
}

} // namespace Vyn::OvraBase
