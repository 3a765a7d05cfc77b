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
/// if (!ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>())) {
///     logger(UI).error(LOG_CONTEXT) << "another recovery service is registered already";
/// }
/// if (auto *recovery = ServiceLocator::instance()->service<DefaultAsyncRecovery>()) {
///     logger(UI).info(LOG_CONTEXT) << recovery->registrySize() << " operations are registered";
/// }
/// ServiceLocator::stop();
/// ```
///
/// All modules of the process share one locator between start() and stop(). Call these two on the
/// main thread, while no other thread uses the locator. Services can be registered and looked up on
/// any thread.
class ServiceLocator {
public:
    /// Makes an empty locator of the caller's own. Applications call start() instead.
    OVRABASE_EXPORT ServiceLocator();
    /// Destroys the registered services.
    OVRABASE_EXPORT ~ServiceLocator();
    ServiceLocator(const ServiceLocator &) = delete;
    ServiceLocator &operator=(const ServiceLocator &) = delete;

    /// Makes the locator of the process, without services. Does nothing if it exists.
    OVRABASE_EXPORT static void start();
    /// Returns true between start() and stop().
    OVRABASE_EXPORT static bool started();
    /// Destroys the locator of the process and its services. Does nothing if there is no locator.
    ///
    /// When the first service is destroyed, instance() is already empty and started() already
    /// returns false. A normal end of the process calls this function, too.
    OVRABASE_EXPORT static void stop();
    /// Returns the locator of the process. The pointer is null before start() and after stop().
    OVRABASE_EXPORT static const std::unique_ptr<ServiceLocator> &instance();

    /// Registers \a service under the type id of T. T is the class of the object or a base class of
    /// it. Returns true if the service is registered. Thread-safe.
    ///
    /// Returns false if the id is taken. The earlier service then stays, so that pointers to it
    /// stay valid, and \a service is destroyed. Returns false for null, too.
    template<class T>
    [[nodiscard]] bool registerService(std::unique_ptr<T> service)
    {
        static_assert(std::is_base_of_v<Service, T>, "services derive from Service");
        return add(T::typeId(), std::move(service));
    }

    /// Returns the service that is registered under the type id of T, or null. The pointer is valid
    /// until the locator is destroyed, for the locator of the process by stop(). Thread-safe. The
    /// lock of the locator is held during the lookup only.
    template<class T>
    T *service()
    {
        static_assert(std::is_base_of_v<Service, T>, "services derive from Service");
        return static_cast<T *>(find(T::typeId()));
    }

private:
    // Not inline, so that only code of the library accesses the table. A calling module may be
    // built with settings under which the standard containers have another layout.
    OVRABASE_EXPORT bool add(std::size_t id, std::unique_ptr<Service> service);
    OVRABASE_EXPORT Service *find(std::size_t id);

    /// The services by type id. Begins with 8 buckets or more.
    std::unordered_map<std::size_t, std::unique_ptr<Service>> mServices{8};
    std::mutex mLock; ///< guards mServices

    OVRABASE_EXPORT static std::unique_ptr<ServiceLocator> mUniqueInstance;
};

} // namespace Vyn::OvraBase
