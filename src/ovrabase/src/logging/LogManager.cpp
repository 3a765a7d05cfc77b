// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/LogManager.h>
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
    static QMutex mutex;
    static auto &prefixes = *new std::set<std::string>; // loggers may outlive static destruction
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
    try {
        const QMutexLocker lock(&mMutex);
        if (mClosed) {
            return;
        }
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
    const auto delegates = mDelegates;
    for (const auto &delegate : delegates) {
        if (!mDelegates.contains(delegate)) {
            continue;
        }
        try {
            delegate->log(level, context, message);
        } catch (...) {
            // The others are served all the same.
        }
    }
}

void LogManager::add(std::shared_ptr<LogDelegate> delegate)
{
    const QMutexLocker lock(&mMutex);
    if (!mClosed) {
        mDelegates.append(std::move(delegate));
    }
}

void LogManager::remove(const std::shared_ptr<LogDelegate> &delegate)
{
    const QMutexLocker lock(&mMutex);
    mDelegates.removeAll(delegate);
}

void LogManager::close()
{
    const QMutexLocker lock(&mMutex);
    mClosed = true;
    mQueue.clear();
    mDelegates.clear();
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
