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

/// The log manager, which delivers log records to the registered delegates.
namespace Core::Log {

/// Receives log records. Registered by ScopedPushLogDelegate.
struct OVRABASE_EXPORT LogDelegate {
    virtual ~LogDelegate();

    /// Receives a record. \a level is 0 (info), 1 (warning) or 2 (error), unless LogManager::log()
    /// was called with another value. The texts are valid during the call only; copies of them may
    /// be passed to another thread. An exception is ignored.
    ///
    /// The manager calls this function on the thread that logged, and delivers one record at a
    /// time. After bindLoggers(), a record of spdlog's default logger arrives on spdlog's thread if
    /// that logger is asynchronous. Other threads that log, register or unregister meanwhile wait
    /// at least until the function returns. So it must not wait for such a thread: no join(), no
    /// Qt::BlockingQueuedConnection, no event loop.
    ///
    /// The function may log, register and unregister. Its records are delivered after the current
    /// one. After installQtMessageHandler(), so are the Qt messages that it causes. If one such
    /// message and all that follow from it are more than 100, a warning is delivered in place of
    /// the 101st, and all further ones are dropped. A fatal Qt message that the function causes is
    /// written to standard error, because the process ends before the message could be
    /// delivered.
    ///
    /// The function must not log through a spdlog logger with the library's sink. After
    /// bindLoggers(), spdlog's default logger has that sink. The call would wait for a lock that
    /// this thread holds, or that is held by a thread which waits for this one, or it would cause
    /// an endless sequence of records.
    virtual void log(int level, const QString &context, const QString &message) = 0;
};

/// Delivers each log record to all registered delegates, in the order of arrival.
///
/// All functions are thread-safe, and log() throws nothing. At process exit the manager is closed,
/// and drops all later records.
class OVRABASE_EXPORT LogManager {
public:
    LogManager(const LogManager &) = delete;
    LogManager &operator=(const LogManager &) = delete;

    /// Returns the manager. The first call creates it. Never null.
    static LogManager *instance();

    /// Delivers a record. Waits while another thread delivers one.
    ///
    /// A record that is logged inside LogDelegate::log() is queued. It is delivered when all
    /// delegates have received the current record.
    void log(int level, const QString &context, const QString &message);

private:
    friend class ScopedPushLogDelegate;
    friend class QtMessageCapture;
    struct LogRecord {
        int level;
        QString context;
        QString message;
        /// The number of Qt messages in the chain of this record. A record that a delegate causes
        /// is in the chain of the record that is being delivered, and shares its counter. If that
        /// record is in no chain, a Qt message begins one. Null outside of a chain.
        std::shared_ptr<int> chainLength;
    };

    /// The number distinguishes two registrations of the same delegate.
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

    QRecursiveMutex mMutex; ///< guards all members below except mClosed
    QList<Registration> mRegistrations;
    quint64 mLastNumber = 0;
    const LogRecord *mBeingDelivered = nullptr; ///< null if no record is being delivered
    QList<LogRecord> mQueue; ///< logged by delegates during the delivery of another record
    /// Unregistered during a delivery, and released after it.
    QList<std::shared_ptr<LogDelegate>> mUnregistered;
    std::atomic<bool> mClosed = false;
};

/// Registers a delegate during the lifetime of this object.
///
/// A delegate that is registered during the delivery of a record receives the next one. A delegate
/// that is unregistered during a delivery is not called again. If a delegate is registered more
/// than once, the first destructor ends all its registrations.
///
/// Constructor and destructor wait while another thread delivers a record. So do not call them
/// while you hold a lock that a delegate takes. After the destructor, no other thread runs the
/// delegate, except at the end of the process.
///
/// A registration may end inside LogDelegate::log(). Its delegate is then released after all queued
/// records are delivered, and without a lock, so that the destructor of the delegate may wait for a
/// thread that logs.
class OVRABASE_EXPORT ScopedPushLogDelegate {
public:
    /// Registers \a delegate. Does nothing for null.
    [[nodiscard]] explicit ScopedPushLogDelegate(std::shared_ptr<LogDelegate> delegate);
    /// Ends the registration.
    virtual ~ScopedPushLogDelegate();

    ScopedPushLogDelegate(const ScopedPushLogDelegate &) = delete;
    ScopedPushLogDelegate &operator=(const ScopedPushLogDelegate &) = delete;

private:
    std::shared_ptr<LogDelegate> mDelegate;
};

/// Sets the delegate of \a logger to one that sends each message to the log manager.
///
/// The context of the record is \a prefix followed by the context of the message. The level is the
/// severity; a severity other than 0, 1 and 2 counts as 2. Texts are decoded from UTF-8. \a prefix
/// must not have unpaired surrogates, which UTF-8 cannot encode. Each different prefix stays in
/// memory until the process ends. Must not run while another thread uses \a logger.
OVRABASE_EXPORT void bindLogger(Vyn::Logger &logger, const QString &prefix);

/// Installs a Qt message handler that sends Qt's messages (qWarning() and so on) to the log
/// manager. Returns the handler that was installed before. Thread-safe.
///
/// The text of a record is "file(line): message", and its context is "Default". Qt ends the process
/// after a fatal message; the handler itself does not. A fatal message that no delegate can receive
/// is written to standard error. The library is not unloaded from then on.
OVRABASE_EXPORT QtMessageHandler installQtMessageHandler();

/// Sets the types of Qt messages that are sent to the log manager. Messages of all other types are
/// dropped, and a fatal one is then not written to standard error either. Bit n of \a mask is for
/// the QtMsgType with the value n. The default is 0x1e, all types except debug messages.
/// Thread-safe.
OVRABASE_EXPORT void setQtMessageMask(int mask);

} // namespace Core::Log
} // namespace Vyn
