// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/logging/LogContext.h>

#include <functional>
#include <istream>
#include <sstream>
#include <string>

namespace Vyn {

class StreamLogger;

/// The handle through which code writes log text: a value that holds one delegate.
///
///     logger.warning(LOG_CONTEXT) << "disk full: " << percent << "%";
///
/// Without a delegate everything is dropped. Const calls are thread-safe; setDelegate() must not
/// run while another thread uses the same object.
class OVRABASE_EXPORT Logger {
public:
    /// Any value above Error counts as Error.
    enum LogSeverity : int { Info = 0, Warning = 1, Error = 2 };

    /// Receives one message: severity, context, text. What it throws is dropped.
    using Delegate = std::function<void(LogSeverity, std::string, std::string)>;

    /// Begin a message of that severity; \a context says where, normally LOG_CONTEXT.
    StreamLogger info(std::string context) const;
    StreamLogger warning(std::string context) const;
    StreamLogger error(std::string context) const;
    StreamLogger log(LogSeverity severity, std::string context) const;

    /// Replaces the delegate. Messages already begun keep the one that they began with.
    void setDelegate(Delegate delegate);

private:
    Delegate mDelegate;
};

/// One message: what is written to it reaches the logger's delegate when the object ends,
/// normally with the statement. An empty message is never delivered, and nothing is thrown on
/// delivery. No lock is held while it is written. Belongs to the thread that made it.
class OVRABASE_EXPORT StreamLogger : public std::iostream {
public:
    /// The moved-from object delivers nothing.
    StreamLogger(StreamLogger &&other) noexcept;
    ~StreamLogger() override;

    StreamLogger(const StreamLogger &) = delete;
    StreamLogger &operator=(const StreamLogger &) = delete;
    /// Delivers the message that this object holds, then goes on with that of \a other.
    StreamLogger &operator=(StreamLogger &&other) noexcept;

private:
    friend class Logger;
    StreamLogger(
        const Logger::Delegate &delegate, Logger::LogSeverity severity, std::string &&context);
    void deliver() noexcept;

    std::stringbuf mText;
    Logger::Delegate mDelegate;
    Logger::LogSeverity mSeverity;
    std::string mContext;
};

} // namespace Vyn
