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

/// A list of asynchronous operations. Its destructor can wait for them.
///
/// All functions but the destructor are thread-safe.
class OVRABASE_EXPORT DefaultAsyncRecovery : public Service {
public:
    OVRABASE_SERVICE_TYPE_ID(Vyn::OvraBase::DefaultAsyncRecovery)

    /// A registered operation.
    struct Recoverable {
        Vyn::future<void> future; ///< the operation
        std::string description;  ///< the text given to registerRecoverable(), in UTF-8
    };

    /// Makes an empty list.
    DefaultAsyncRecovery();

    /// Waits for each registered operation in turn if the ServiceLocator is started and holds
    /// another DefaultAsyncRecovery. Checks both conditions again before each operation, and skips
    /// the operation if either is false. No other thread may use the list meanwhile.
    ///
    /// On the main thread, the wait is a busy loop. It processes events (but no user input and no
    /// socket events) and deleteLater() calls (but not of handlers of an outer event loop). On
    /// any other thread, and on every thread if there is no application object, the wait blocks.
    ///
    /// A deferred operation (std::launch::deferred) counts as ready on the main thread, and is not
    /// waited for there. A wait that blocks runs it. Operations that are registered during the wait
    /// are not waited for.
    ///
    /// ServiceLocator::stop() does not wait for the operations of the list that it destroys,
    /// because the locator is no longer started then. But the destructor of the last copy of a
    /// future of std::async() waits, also here, unless the operation is deferred. A deferred
    /// operation for which nothing has waited is never run.
    ~DefaultAsyncRecovery() override;

    DefaultAsyncRecovery(const DefaultAsyncRecovery &) = delete;
    DefaultAsyncRecovery &operator=(const DefaultAsyncRecovery &) = delete;

    /// Registers the operation of \a future under \a id, a number that the caller chooses.
    ///
    /// If a registered future equals \a future (see operator== of Vyn::future), under \a id or
    /// another id, logs an error on the logger Debug and does nothing else. Otherwise does nothing
    /// if \a id is taken. Takes time in proportion to the number of registered operations.
    void registerRecoverable(std::size_t id, Vyn::future<void> future, const QString &description);

    /// Removes the entry \a id. Does nothing for an unknown id.
    ///
    /// Releases the list's copy of the future. This neither cancels the operation nor waits for it,
    /// unless the copy is the last one, see Vyn::future. An operation that has ended stays
    /// registered until this function is called.
    void unregisterRecoverable(std::size_t id);

    /// Returns the number of registered operations. Takes no lock.
    std::size_t registrySize() const;

    /// Returns a line "id: description" for each registered operation, in unspecified order and in
    /// UTF-8. Each line ends in a line feed.
    std::string dumpRegistry() const;

private:
    using Registry = std::unordered_map<std::size_t, Recoverable>;

    /// Returns the entry whose future equals \a future, or end(). The caller holds the lock.
    Registry::const_iterator findRecoverable(const Vyn::future<void> &future) const;

    Registry mRegistry{8};              ///< with 8 buckets or more
    mutable std::mutex mLock;           ///< guards mRegistry
    std::atomic<std::size_t> mSize = 0; ///< the size of mRegistry, for readers without the lock
};

} // namespace Vyn::OvraBase
