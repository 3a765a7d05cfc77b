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

/// The delegate of a bound logger. It contains only a pointer: the logger copies the delegate for
/// each message, and std::function copies a pointer without an allocation.
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

/// Returns a copy of \a prefix that is never destroyed. Equal prefixes share one copy.
const std::string *permanentCopy(const QString &prefix)
{
    // Never destroyed: static destructors may bind loggers.
    static auto &mutex = *new QMutex;
    static auto &prefixes = *new std::set<std::string>;
    const QMutexLocker lock(&mutex);
    return &*prefixes.insert(prefix.toStdString()).first;
}

} // namespace

LogDelegate::~LogDelegate() = default;

LogManager *LogManager::instance()
{
    // The manager is closed at process exit, and never destroyed: static destructors that log later
    // find a closed manager, which drops their records.
    static LogManager &manager = *new LogManager;
    static const auto closer = qScopeGuard([] { manager.close(); });
    return &manager;
}

void LogManager::log(int level, const QString &context, const QString &message)
{
    take({level, context, message, nullptr}, false);
}

/// Delivers \a record, or queues it if this is called inside LogDelegate::log(). Returns true if a
/// delegate got it during this call.
bool LogManager::take(LogRecord record, bool isQtMessage) noexcept
{
    if (mClosed) {
        return false;
    }
    try {
        // Destroyed after the mutex is unlocked: the destructor of a delegate may wait for a thread
        // that logs.
        QList<std::shared_ptr<LogDelegate>> unregistered;
        const QMutexLocker lock(&mMutex);
        if (mBeingDelivered) {
            // This call comes from a delegate. The loop of the outer call delivers the record.
            queue(std::move(record), isQtMessage);
            return false;
        }
        const auto finished = qScopeGuard([&] {
            mBeingDelivered = nullptr;
            unregistered.swap(mUnregistered);
        });
        const bool delivered = deliver(record);
        while (!mQueue.isEmpty()) {
            deliver(mQueue.takeFirst());
        }
        return delivered;
    } catch (...) {
        return false; // Out of memory. log() throws nothing, so the record is lost.
    }
}

void LogManager::queue(LogRecord record, bool isQtMessage)
{
    // Without a limit, take() would never return if a delegate caused a Qt message for every
    // record.
    constexpr int kLongestChain = 100;
    record.chainLength = mBeingDelivered->chainLength;
    if (isQtMessage) {
        if (!record.chainLength) {
            record.chainLength = std::make_shared<int>(0);
        }
        const int number = ++*record.chainLength;
        if (number > kLongestChain + 1) {
            return;
        }
        if (number > kLongestChain) {
            record.level = 1;
            record.context = QString::fromStdString(LOG_CONTEXT);
            record.message = QStringLiteral("Delegates caused 100 Qt messages in a row, each while "
                                            "taking the one before. Dropped from here on: <%1>")
                                 .arg(record.message);
        }
    }
    mQueue.append(std::move(record));
}

bool LogManager::deliver(const LogRecord &record)
{
    mBeingDelivered = &record;
    const auto registrations = mRegistrations;
    for (const Registration &registration : registrations) {
        if (!mRegistrations.contains(registration)) {
            continue;
        }
        try {
            registration.delegate->log(
                record.level, QString(record.context), QString(record.message));
        } catch (...) {
            // The other delegates receive the record all the same.
        }
    }
    return !registrations.isEmpty();
}

void LogManager::add(std::shared_ptr<LogDelegate> delegate)
{
    if (!mClosed) {
        const QMutexLocker lock(&mMutex);
        mRegistrations.append({std::move(delegate), ++mLastNumber});
    }
}

void LogManager::remove(std::shared_ptr<LogDelegate> delegate)
{
    if (!mClosed) {
        const QMutexLocker lock(&mMutex);
        mRegistrations.removeIf(
            [&delegate](const Registration &entry) { return entry.delegate == delegate; });
        if (mBeingDelivered) {
            mUnregistered.append(std::move(delegate));
        }
    }
}

void LogManager::close() noexcept
{
    mClosed = true;
    QList<Registration> registrations; // destroyed after the mutex is unlocked, as in take()
    // Another thread may never unlock the mutex, because that thread is blocked, or because Windows
    // ended it before statics are destroyed.
    constexpr int kTimeout = 100; // ms
    if (mMutex.tryLock(kTimeout)) {
        mQueue.clear();
        registrations.swap(mRegistrations);
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
        LogManager::instance()->remove(std::move(mDelegate));
    }
}

void bindLogger(Vyn::Logger &logger, const QString &prefix)
{
    logger.setDelegate(BoundDelegate{permanentCopy(prefix)});
}

} // namespace Vyn::Core::Log
