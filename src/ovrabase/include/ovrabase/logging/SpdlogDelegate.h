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

/// Writes each record to a logger of spdlog, with whatever sinks, pattern, level filter and flush
/// policy that has: files that rotate, a coloured console, a background thread.
///
/// ```cpp
/// auto file = spdlog::rotating_logger_mt("app", "app.log", 5 << 20, 3);
/// const ScopedPushLogDelegate toFile(std::make_shared<SpdlogDelegate>(file));
/// ```
///
/// The text is "[context] message" in UTF-8, or the message alone where the context is empty; it is
/// no format, so braces stay. The levels are spdlog's info, warn and err.
///
/// All threads that log wait while the logger writes. Give it spdlog's async_logger where a sink
/// may be slow. The logger must come from the spdlog that the library was built with. A program
/// that makes one links spdlog itself: `find_package(ovrabase 6 CONFIG REQUIRED COMPONENTS spdlog)`
/// and `spdlog::spdlog`, or `pkg-config --libs ovrabase spdlog`.
class OVRABASE_EXPORT SpdlogDelegate : public LogDelegate {
public:
    /// \a logger must not have the library's own bridge among its sinks, as spdlog's default logger
    /// has it after bindLoggers(): each record would come back as the next one, for ever. Where
    /// the bridge is added later, nothing is written any more.
    ///
    /// \throws NullParameterException    \a logger is null
    /// \throws InvalidArgumentException  \a logger has the bridge, perhaps inside a dist_sink
    explicit SpdlogDelegate(std::shared_ptr<spdlog::logger> logger);
    ~SpdlogDelegate() override;

    /// Below 0 counts as 0, above 2 as 2.
    void log(int level, const QString &context, const QString &message) override;

private:
    std::shared_ptr<spdlog::logger> mLogger;
};

} // namespace Vyn::Core::Log
