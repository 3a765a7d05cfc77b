// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/services/Service.h>
#include <ovrabase/services/future.h>

#include <QString>

#include <atomic>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>

namespace Vyn::OvraBase {

/// Keeps account of the asynchronous operations that are under way. All calls but the destructor
/// may come from any thread.
class OVRABASE_EXPORT DefaultAsyncRecovery : public Service {
public:
    OVRABASE_SERVICE_TYPE_ID(Vyn::OvraBase::DefaultAsyncRecovery)

    /// A registered operation.
    struct Recoverable {
        Vyn::future<void> future; ///< the operation
        std::string description;  ///< UTF-8
    };

    /// Nothing is registered.
    DefaultAsyncRecovery();

    /// Waits for every registered operation before whose wait the ServiceLocator is started and
    /// holds a DefaultAsyncRecovery. The main thread handles events meanwhile, except the user's
    /// and those of sockets, and deletes what deleteLater() was called for, also in the event loop
    /// that the wait began in; any other thread blocks. Else waits for none, so a registry that
    /// ServiceLocator::stop() destroys returns at once (unless it held the last copy of a
    /// std::async() future).
    ~DefaultAsyncRecovery() override;

    DefaultAsyncRecovery(const DefaultAsyncRecovery &) = delete;
    DefaultAsyncRecovery &operator=(const DefaultAsyncRecovery &) = delete;

    /// Registers an operation under an \a id of the caller's choice. An operation that is
    /// registered already, under whatever id, changes nothing and is logged as an error; an id that
    /// is taken changes nothing.
    void registerRecoverable(std::size_t id, Vyn::future<void> future, const QString &description);

    /// Forgets the operation of that id, which goes on; does nothing for an unknown id.
    /// Operations that have ended stay registered until this is called.
    void unregisterRecoverable(std::size_t id);

    /// Returns the number of operations at this moment, without waiting for a lock.
    std::size_t registrySize() const;

    /// Returns a line "id: description" for each operation, in no particular order. UTF-8.
    std::string dumpRegistry() const;

private:
    using Registry = std::unordered_map<std::size_t, Recoverable>;

    Registry::const_iterator findRecoverable(const Vyn::future<void> &future) const;

    Registry mRegistry{8}; ///< room for eight
    mutable std::mutex mLock;
    std::atomic<std::size_t> mSize = 0; ///< of the registry, readable without the lock
};

} // namespace Vyn::OvraBase
