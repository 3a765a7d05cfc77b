// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/Logger.h>

#include <QScopeGuard>
#include <QStringDecoder>

#include <set>
#include <string>
#include <utility>

namespace Vyn::Core::Log {
namespace {

/// Returns \a prefix followed by \a utf8, in one allocation.
QString joined(const QString &prefix, const std::string &utf8)
{
    if (utf8.empty()) {
        return prefix;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const auto size = static_cast<qsizetype>(utf8.size());
    QString text(prefix.size() + decoder.requiredSpace(size), Qt::Uninitialized);
    QChar *end = std::copy(prefix.cbegin(), prefix.cend(), text.data());
    end = decoder.appendToBuffer(end, QByteArrayView(utf8.data(), size));
    text.truncate(end - text.constData());
    return text;
}

/// The delegate of a bound logger. A plain pointer, so that the copy in each message is free.
struct BoundDelegate {
    const QString *prefix;

    void operator()(
        Logger::LogSeverity severity, const std::string &context, const std::string &message) const
    {
        const int level = severity == Logger::Info ? 0 : severity == Logger::Warning ? 1 : 2;
        LogManager::instance()->log(
            level, joined(*prefix, context), QString::fromStdString(message));
    }
};

/// Returns the one copy of \a prefix that lives as long as the process.
const QString *keep(const QString &prefix)
{
    static QMutex mutex;
    static auto &prefixes = *new std::set<QString>; // loggers may outlive static destruction
    const QMutexLocker lock(&mutex);
    return &*prefixes.insert(prefix).first;
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
        mQueue.append({level, context, message});
        if (mDispatching == 0) {
            dispatch();
        }
    } catch (...) {
        // Out of memory: the record is lost, the caller is not.
    }
}

void LogManager::dispatch()
{
    mDispatching = 1;
    const auto finished = qScopeGuard([this] { mDispatching = 0; });
    while (!mQueue.isEmpty()) {
        const LogRecord record = mQueue.takeFirst();
        const auto delegates = mDelegates;
        for (const auto &delegate : delegates) {
            if (!mDelegates.contains(delegate)) {
                continue;
            }
            try {
                delegate->log(record.level, record.context, record.message);
            } catch (...) {
                // The others are served all the same.
            }
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
