// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "ovrabase/logging/LogManager.h"

#include <ovrabase/logging/Logger.h>

#include <QScopeGuard>

#include <set>
#include <string>
#include <utility>

namespace Vyn::Core::Log {
namespace {

/// The delegate of a bound logger. A plain pointer, so that the copy in each message is free.
struct BoundDelegate {
    const std::string *prefix;

    void operator()(
        Logger::LogSeverity severity, std::string &&context, const std::string &message) const
    {
        const int level = severity == Logger::Info ? 0 : severity == Logger::Warning ? 1 : 2;
        context.insert(0, *prefix);
        LogManager::instance()->log(
            level, QString::fromStdString(context), QString::fromStdString(message));
    }
};

/// Returns the one copy of \a prefix that lives as long as the process.
const std::string *keep(const QString &prefix)
{
    // Loggers may be bound until the last static is destroyed.
    static auto &mutex = *new QMutex;
    static auto &prefixes = *new std::set<std::string>;
    const QMutexLocker lock(&mutex);
    return &*prefixes.insert(prefix.toStdString()).first;
}

} // namespace

LogDelegate::~LogDelegate() = default;

LogManager *LogManager::instance()
{
    // Other modules log until their last static destructor: the manager is closed, not destroyed.
    static LogManager &manager = *new LogManager;
    static const auto closer = qScopeGuard([] { manager.close(); });
    return &manager;
}

void LogManager::log(int level, const QString &context, const QString &message)
{
    if (mClosed) {
        return;
    }
    try {
        const QMutexLocker lock(&mMutex);
        if (mDispatching != 0) {
            mQueue.append({level, context, message}); // the loop below us delivers it
            return;
        }
        mDispatching = 1;
        const auto finished = qScopeGuard([this] { mDispatching = 0; });
        deliver(level, context, message);
        while (!mQueue.isEmpty()) {
            const LogRecord record = mQueue.takeFirst();
            deliver(record.level, record.context, record.message);
        }
    } catch (...) {
        // Out of memory: the record is lost, the caller is not.
    }
}

void LogManager::deliver(int level, const QString &context, const QString &message)
{
    const auto registrations = mRegistrations;
    for (const Registration &registration : registrations) {
        if (!mRegistrations.contains(registration)) {
            continue;
        }
        try {
            registration.delegate->log(level, context, message);
        } catch (...) {
            // The others are served all the same.
        }
    }
}

void LogManager::add(std::shared_ptr<LogDelegate> delegate)
{
    if (!mClosed) {
        const QMutexLocker lock(&mMutex);
        mRegistrations.append({std::move(delegate), ++mLastNumber});
    }
}

void LogManager::remove(const std::shared_ptr<LogDelegate> &delegate)
{
    if (!mClosed) {
        const QMutexLocker lock(&mMutex);
        mRegistrations.removeIf(
            [&delegate](const Registration &entry) { return entry.delegate == delegate; });
    }
}

void LogManager::close() noexcept
{
    mClosed = true;
    // A thread that delivers may be stuck, or dead: Windows ends the others before it comes here.
    constexpr int kPatience = 100; // ms
    if (mMutex.tryLock(kPatience)) {
        mQueue.clear();
        mRegistrations.clear();
        mMutex.unlock();
    }
}

ScopedPushLogDelegate::ScopedPushLogDelegate(std::shared_ptr<LogDelegate> delegate)
    : mDelegate(std::move(delegate))
{
    if (mDelegate) {
        LogManager::instance()->add(mDelegate);
    }
}

ScopedPushLogDelegate::~ScopedPushLogDelegate()
{
    if (mDelegate) {
        LogManager::instance()->remove(mDelegate);
    }
}

void bindLogger(Vyn::Logger &logger, const QString &prefix)
{
    logger.setDelegate(BoundDelegate{keep(prefix)});
}

} // namespace Vyn::Core::Log
