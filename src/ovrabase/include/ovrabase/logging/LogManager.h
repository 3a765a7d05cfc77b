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

    /// Takes one record; \a level is 0 (info), 1 (warning) or 2 (error). The texts are copies that
    /// only this delegate sees.
    ///
    /// Called on the thread that logged, never for two records at once. All other threads that log,
    /// register or unregister wait meanwhile, so it must not wait for one of them: no join(), no
    /// Qt::BlockingQueuedConnection, no event loop. It must not log through a spdlog logger that
    /// has the library's bridge, as spdlog's default logger has it after bindLoggers(): a record
    /// that came from spdlog would wait for its own thread, any other would come back for ever.
    ///
    /// It may log, register and unregister: its record follows after this one. A Qt message that it
    /// causes after installQtMessageHandler() follows as a record too. When 100 such messages have
    /// followed from one another, a warning says so, and further ones are dropped. A fatal message
    /// goes to standard error at once, as the process ends before its record is delivered.
    ///
    /// What this function throws is dropped.
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
    friend class QtMessageCapture;
    struct LogRecord {
        int level;
        QString context;
        QString message;
        std::shared_ptr<int> chain; ///< of what follows from a delegate's Qt message: their count
    };

    struct Registration {
        std::shared_ptr<LogDelegate> delegate;
        quint64 number;
        bool operator==(const Registration &) const = default;
    };

    LogManager() = default;
    ~LogManager() = default;
    bool take(LogRecord record, bool isQtMessage) noexcept;
    void queue(LogRecord record, bool isQtMessage);
    bool deliver(const LogRecord &record);
    void add(std::shared_ptr<LogDelegate> delegate);
    void remove(std::shared_ptr<LogDelegate> delegate);
    void close() noexcept;

    QRecursiveMutex mMutex;
    QList<Registration> mRegistrations;
    quint64 mLastNumber = 0;
    const LogRecord *mBeingDelivered = nullptr;
    QList<LogRecord> mQueue;
    QList<std::shared_ptr<LogDelegate>> mEnded; ///< unregistered during a record, not yet released
    std::atomic<bool> mClosed = false;
};

/// Registers a delegate for as long as this object lives.
///
/// A delegate registered while a record is delivered is served from the next record on; one whose
/// registration ends meanwhile is not called again. The end of one registration ends all of the
/// same delegate. A null delegate is ignored.
///
/// The begin and the end wait for a record that another thread delivers: hold no lock meanwhile
/// that a delegate takes. After the end no other thread runs the delegate. When a delegate ends a
/// registration inside log(), the delegate of that registration is released after the queued
/// records and without a lock, so that its destructor may wait for a thread that logs.
class OVRABASE_EXPORT ScopedPushLogDelegate {
public:
    /// Begins the registration.
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
/// the context "Default". The handler only logs a fatal message, or prints it to standard error if
/// no delegate can take it; Qt ends the process after it. The library is never unloaded after this.
/// Returns the handler that was installed before. Thread-safe.
OVRABASE_EXPORT QtMessageHandler installQtMessageHandler();

/// Sets which Qt messages are sent: bit n stands for the QtMsgType of value n. At first all but
/// debug messages (0x1e). Thread-safe.
OVRABASE_EXPORT void setQtMessageMask(int mask);

} // namespace Core::Log
} // namespace Vyn
