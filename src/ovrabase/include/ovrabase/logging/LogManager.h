// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QList>
#include <QMutex>
#include <QString>
#include <QtGlobal>

#include <atomic>
#include <memory>

namespace Vyn {

class Logger;

/// The process-wide dispatcher of log records.
namespace Core::Log {

/// A receiver of log records, registered by ScopedPushLogDelegate.
struct OVRABASE_EXPORT LogDelegate {
    virtual ~LogDelegate();

    /// Takes one record; \a level is 0 (info), 1 (warning) or 2 (error).
    ///
    /// Called on the thread that logged, never for two records at once. It may log (its record
    /// follows after this one), register and unregister delegates; it must not log through spdlog,
    /// whose sink may be the caller. What it throws is dropped.
    virtual void log(int level, const QString &context, const QString &message) = 0;
};

/// Hands each record to every registered delegate, in the order of arrival.
///
/// All calls are thread-safe, and log() throws nothing. The manager stops at process exit: later
/// records are dropped.
class OVRABASE_EXPORT LogManager {
public:
    LogManager(const LogManager &) = delete;
    LogManager &operator=(const LogManager &) = delete;

    /// Returns the one manager, made on the first call. Never null.
    static LogManager *instance();

    /// Queues a record and, unless called from inside a delegate, delivers all that are queued.
    /// Waits while another thread's record is being delivered.
    void log(int level, const QString &context, const QString &message);

private:
    friend class ScopedPushLogDelegate;
    struct LogRecord {
        int level;
        QString context;
        QString message;
    };

    struct Registration {
        std::shared_ptr<LogDelegate> delegate;
        quint64 number;
        bool operator==(const Registration &) const = default;
    };

    LogManager() = default;
    ~LogManager() = default;
    void deliver(int level, const QString &context, const QString &message);
    void add(std::shared_ptr<LogDelegate> delegate);
    void remove(const std::shared_ptr<LogDelegate> &delegate);
    void close() noexcept;

    QRecursiveMutex mMutex;
    QList<Registration> mRegistrations;
    quint64 mLastNumber = 0;
    int mDispatching = 0;
    QString mName = QStringLiteral("Default");
    QList<LogRecord> mQueue;
    std::atomic<bool> mClosed = false;
};

/// Registers a delegate for as long as this object lives.
///
/// A delegate registered while a record is delivered is served from the next record on; one whose
/// registration ends meanwhile is not called again. The end of one registration ends all of the
/// same delegate. A null delegate is ignored.
class OVRABASE_EXPORT ScopedPushLogDelegate {
public:
    explicit ScopedPushLogDelegate(std::shared_ptr<LogDelegate> delegate);
    virtual ~ScopedPushLogDelegate();

    ScopedPushLogDelegate(const ScopedPushLogDelegate &) = delete;
    ScopedPushLogDelegate &operator=(const ScopedPushLogDelegate &) = delete;

private:
    std::shared_ptr<LogDelegate> mDelegate;
};

/// Makes \a logger deliver to the manager: the record's context is \a prefix followed by the
/// message's context, its level the severity (above 2 counts as 2). Text is read as UTF-8, and the
/// prefix must be text that UTF-8 can hold. Each different prefix is kept until the process ends.
OVRABASE_EXPORT void bindLogger(Vyn::Logger &logger, const QString &prefix);

/// Sends Qt's own messages (qWarning() and the like) to the manager, as "file(line): message" with
/// the context "Default". The handler only logs a fatal message; Qt ends the process after it.
/// Returns the handler that was installed before. Thread-safe.
OVRABASE_EXPORT QtMessageHandler installQtMessageHandler();

/// Sets which Qt messages are sent: bit n stands for the QtMsgType of value n. At first all but
/// debug messages (0x1e). Thread-safe.
OVRABASE_EXPORT void setQtMessageMask(int mask);

} // namespace Core::Log
} // namespace Vyn
