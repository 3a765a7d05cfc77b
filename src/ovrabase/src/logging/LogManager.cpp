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
    take({level, context, message, nullptr}, false);
}

/// Queues or delivers \a record; true if a delegate has had it on return.
bool LogManager::take(LogRecord record, bool isQtMessage) noexcept
{
    if (mClosed) {
        return false;
    }
    try {
        // Destroyed after the lock: the destructor of a delegate may wait for a thread that logs.
        QList<std::shared_ptr<LogDelegate>> ended;
        const QMutexLocker lock(&mMutex);
        if (mBeingDelivered) {
            queue(std::move(record), isQtMessage); // the loop below us delivers it
            return false;
        }
        const auto finished = qScopeGuard([&] {
            mBeingDelivered = nullptr;
            ended.swap(mEnded);
        });
        const bool delivered = deliver(record);
        while (!mQueue.isEmpty()) {
            deliver(mQueue.takeFirst());
        }
        return delivered;
    } catch (...) {
        return false; // Out of memory: the record is lost, the caller is not.
    }
}

void LogManager::queue(LogRecord record, bool isQtMessage)
{
    // A delegate that causes a Qt message for every record would otherwise never end.
    constexpr int kLongestChain = 100;
    record.chain = mBeingDelivered->chain;
    if (isQtMessage) {
        if (!record.chain) {
            record.chain = std::make_shared<int>(0);
        }
        const int number = ++*record.chain;
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
            // The others are served all the same.
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
            mEnded.append(std::move(delegate));
        }
    }
}

void LogManager::close() noexcept
{
    mClosed = true;
    QList<Registration> registrations; // destroyed without the lock, as in take()
    // A thread that delivers may be stuck, or dead: Windows ends the others before it comes here.
    constexpr int kPatience = 100; // ms
    if (mMutex.tryLock(kPatience)) {
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
    logger.setDelegate(BoundDelegate{keep(prefix)});
}

} // namespace Vyn::Core::Log
