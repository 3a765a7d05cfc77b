// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/logging/LogManager.h>

#include <QString>

#include <memory>

namespace spdlog {
class logger;
}

namespace Vyn::Core::Log {

/// Writes each record to a spdlog logger. The logger decides on sinks, pattern, level filter and
/// flush policy: rotating files, a coloured console, a background thread and so on.
///
/// ```cpp
/// auto file = spdlog::rotating_logger_mt("app", "app.log", 5 << 20, 3);
/// const ScopedPushLogDelegate toFile(std::make_shared<SpdlogDelegate>(file));
/// ```
///
/// The text is "[context] message" in UTF-8, or "message" if the context is empty. It is not a
/// format string: braces have no meaning. The levels 0, 1 and 2 become spdlog's info, warn and err.
///
/// All threads that log wait while the logger writes. Use spdlog's async_logger for a slow sink.
/// The program that creates the logger links spdlog itself, in the version that the library was
/// built with: `find_package(ovrabase 6 CONFIG REQUIRED COMPONENTS spdlog)` and `spdlog::spdlog`,
/// or `pkg-config --libs ovrabase spdlog`.
class OVRABASE_EXPORT SpdlogDelegate : public LogDelegate {
public:
    /// Writes to \a logger.
    ///
    /// \a logger must not have the library's own sink, which writes to the log manager: each record
    /// would cause another one, endlessly. After bindLoggers(), spdlog's default logger has that
    /// sink. If the sink is added to \a logger later, this object writes nothing until the sink is
    /// removed.
    ///
    /// \throws NullParameterException    \a logger is null.
    /// \throws InvalidArgumentException  \a logger has the library's sink, directly or in a
    ///     dist_sink.
    explicit SpdlogDelegate(std::shared_ptr<spdlog::logger> logger);
    ~SpdlogDelegate() override;

    /// Writes a record. A \a level below 0 counts as 0, and one above 2 as 2.
    void log(int level, const QString &context, const QString &message) override;

private:
    std::shared_ptr<spdlog::logger> mLogger;
};

} // namespace Vyn::Core::Log
