// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Included first: its statics are then destroyed after those of this file, so that services can log
// in their destructors at the end of the process.
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/services/ServiceLocator.h>

namespace Vyn::OvraBase {
// Initialised before the first static constructor runs.
constinit std::unique_ptr<ServiceLocator> ServiceLocator::mUniqueInstance;

namespace {

/// Calls stop() before mUniqueInstance is destroyed. Otherwise that destructor would destroy the
/// services while started() still returns true.
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
    // If the id is taken, try_emplace() does not move from the parameter. The refused service is
    // then destroyed after the lock is released.
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
