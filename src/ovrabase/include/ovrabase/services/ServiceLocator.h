// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/services/Service.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace Vyn::OvraBase {

/// Owns the application's services and finds them by their class.
///
/// ```cpp
/// ServiceLocator::start();
/// ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>());
/// if (auto *recovery = ServiceLocator::instance()->service<DefaultAsyncRecovery>()) {
///     logger(UI).info(LOG_CONTEXT) << recovery->registrySize() << " operations are under way";
/// }
/// ServiceLocator::stop();
/// ```
///
/// One locator serves every module of the process between start() and stop(). The main thread
/// starts and stops it while no other thread uses it; services may be registered and looked up from
/// any thread.
class ServiceLocator {
public:
    /// Makes an empty locator. Applications use start().
    OVRABASE_EXPORT ServiceLocator();
    /// Destroys the services, each once.
    OVRABASE_EXPORT ~ServiceLocator();
    ServiceLocator(const ServiceLocator &) = delete;
    ServiceLocator &operator=(const ServiceLocator &) = delete;

    /// Makes the process's locator, empty. Does nothing when there is one.
    OVRABASE_EXPORT static void start();
    /// Tells whether there is a locator.
    OVRABASE_EXPORT static bool started();
    /// Empties instance(), then destroys the locator with its services: they see started() false.
    /// Does nothing without a locator. The end of the process stops a locator that still runs.
    OVRABASE_EXPORT static void stop();
    /// Returns the process's locator, empty before start() and after stop().
    OVRABASE_EXPORT static const std::unique_ptr<ServiceLocator> &instance();

    /// Registers \a service under the id of T, which may be a base class of the object.
    ///
    /// False when that id is taken: the earlier service stays, so that pointers to it stay valid,
    /// and \a service is destroyed. False for null, too. Thread-safe.
    template<class T>
    bool registerService(std::unique_ptr<T> service)
    {
        static_assert(std::is_base_of_v<Service, T>, "services derive from Service");
        return add(T::typeId(), std::move(service));
    }

    /// Returns the service registered under the id of T, null when there is none. The pointer is
    /// valid until stop(). Thread-safe; takes one lock, which is free while the service is used.
    template<class T>
    T *service()
    {
        static_assert(std::is_base_of_v<Service, T>, "services derive from Service");
        return static_cast<T *>(find(T::typeId()));
    }

private:
    // Out of line, so that all modules work on one table with the code of one build.
    OVRABASE_EXPORT bool add(std::size_t id, std::unique_ptr<Service> service);
    OVRABASE_EXPORT Service *find(std::size_t id);

    std::unordered_map<std::size_t, std::unique_ptr<Service>> mServices{8}; ///< room for eight
    std::mutex mLock;

    OVRABASE_EXPORT static std::unique_ptr<ServiceLocator> mUniqueInstance;
};

} // namespace Vyn::OvraBase
