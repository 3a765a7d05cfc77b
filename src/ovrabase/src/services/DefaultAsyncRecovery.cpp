// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"

#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QString>

#include <algorithm>
#include <utility>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kKnownFuture{
    "DefaultAsyncRecovery.cpp:49 Vyn::OvraBase::DefaultAsyncRecovery::registerRecoverable()"};

/// Waits for \a future. Does nothing if \a future is invalid, if the locator is not started, or if
/// no recovery service is registered.
void awaitRecoverable(const Vyn::future<void> &future)
{
    if (!future.valid() || !ServiceLocator::started() ||
        !ServiceLocator::instance()->service<DefaultAsyncRecovery>()) {
        return;
    }
    if (!ThreadUtils::isMainThread()) {
        future.await();
        return;
    }
    // The operation may need events of the main thread before it can end. A blocking wait would
    // then never end.
    while (!future.isReady()) {
        QCoreApplication::processEvents(
            QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
        // processEvents() skips calls of deleteLater() that were made in the same event loop as
        // this call.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace

DefaultAsyncRecovery::DefaultAsyncRecovery() = default;

DefaultAsyncRecovery::~DefaultAsyncRecovery()
{
    // A copy, because events that are processed during a wait may unregister operations.
    const Registry pending = mRegistry;
    for (const auto &[id, recoverable] : pending) {
        awaitRecoverable(recoverable.future);
    }
}

void DefaultAsyncRecovery::registerRecoverable(
    std::size_t id, Vyn::future<void> future, const QString &description)
{
    // Destroyed after the lock is released: the destructor of a future may run code of the caller,
    // which may call this registry.
    Recoverable added{std::move(future), description.toStdString()};
    QString refusal;
    {
        const std::lock_guard lock(mLock);
        const auto known = findRecoverable(added.future);
        if (known == mRegistry.end()) {
            mRegistry.try_emplace(id, std::move(added));
            mSize = mRegistry.size();
            return;
        }
        refusal = QStringLiteral("The future with description <%1> was already registered with id "
                                 "%2 and description <%3>")
                      .arg(description, QString::number(known->first),
                          QString::fromStdString(known->second.description));
    }
    // After the lock is released: a log delegate may call this registry.
    logAt(kKnownFuture, Debug, Logger::Error, refusal);
}

void DefaultAsyncRecovery::unregisterRecoverable(std::size_t id)
{
    Registry::node_type
        removed; // destroyed after the lock is released, as in registerRecoverable()
    const std::lock_guard lock(mLock);
    removed = mRegistry.extract(id);
    mSize = mRegistry.size();
}

std::size_t DefaultAsyncRecovery::registrySize() const
{
    return mSize;
}

std::string DefaultAsyncRecovery::dumpRegistry() const
{
    const std::lock_guard lock(mLock);
    std::string dump;
    for (const auto &[id, recoverable] : mRegistry) {
        dump += std::to_string(id) + ": " + recoverable.description + "\n";
    }
    return dump;
}

DefaultAsyncRecovery::Registry::const_iterator DefaultAsyncRecovery::findRecoverable(
    const Vyn::future<void> &future) const
{
    return std::find_if(mRegistry.begin(), mRegistry.end(),
        [&](const auto &entry) { return entry.second.future == future; });
}

} // namespace Vyn::OvraBase
