// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/logging/Logger.h>

#include <QString>

#include <vector>

namespace Vyn::Core::Log {
class LogManager;
}

/// \file
/// The ten global loggers, which all modules of the process share.
///
/// A source that includes this file keeps the loggers alive during the lifetime of the statics that
/// follow the inclusion, so that their constructors and destructors can log.
namespace Vyn::OvraBase {

/// The global loggers. bindLoggers() binds the first three to the log manager. The application may
/// bind the others.
enum LogService : int {
    UI = 0,      ///< records of the application
    Support = 1, ///< most warnings of the library
    /// Errors and notices of the library, its warnings of copyWithBackup() and
    /// registerExternalResource(), and the records of spdlog.
    Debug = 2,
    Service3,
    Service4,
    Service5,
    Service6,
    Service7,
    Service8,
    Service9
};

/// Keeps the global loggers alive. The library counts the instances: the first one creates the
/// loggers, and the last one destroys them.
///
/// Each source that includes this file has one instance, see the end of the file. Not thread-safe:
/// instances belong in static storage, which one thread initialises and destroys.
class GlobalLoggersInstanciator {
    OVRABASE_EXPORT static std::vector<Vyn::Logger> *&table() noexcept;

public:
    OVRABASE_EXPORT GlobalLoggersInstanciator();
    OVRABASE_EXPORT GlobalLoggersInstanciator(const GlobalLoggersInstanciator &other);
    GlobalLoggersInstanciator &operator=(const GlobalLoggersInstanciator &) = default;
    OVRABASE_EXPORT ~GlobalLoggersInstanciator();

    /// Returns a reference to the number of instances in the process.
    OVRABASE_EXPORT static int &counter();

    /// A pointer to the ten loggers, which is null if there is no instance.
    ///
    /// Each program or library has its own reference to ovrabase's only pointer, because ovrabase
    /// exports no variable for it. The reference is initialised before the statics that follow the
    /// inclusion of this file. Code that runs before that must call logger() instead.
    OVRABASE_NO_EXPORT static inline std::vector<Vyn::Logger> *&loggers = table();
};

/// Returns the logger of \a service. If the global loggers do not exist (yet or any more), returns
/// a logger that drops every message. A \a service that is not one of the ten is undefined
/// behaviour. Thread-safe.
OVRABASE_EXPORT const Vyn::Logger &logger(LogService service);

/// Returns the log manager. The first call creates it. Thread-safe.
OVRABASE_EXPORT Vyn::Core::Log::LogManager *logManagerInstance();

/// Sends the records of \a logger to the log manager, with \a prefix before each context. The same
/// as Vyn::Core::Log::bindLogger().
OVRABASE_EXPORT void bindLogger(Vyn::Logger &logger, const QString &prefix);

/// Binds the global logger of \a service to the log manager. Does nothing if the global loggers do
/// not exist.
///
/// Meant for the loggers that bindLoggers() does not bind. Call it at start-up, before other
/// threads log.
OVRABASE_EXPORT void bindLogger(LogService service, const QString &prefix);

/// Binds UI, Support and Debug to the log manager, with the prefixes "UI: ", "Support: " and
/// "Debug: ". Also appends a sink to spdlog's default logger, so that the records of that logger
/// are written to Debug, too. To remove the sink, call
/// `spdlog::default_logger()->sinks().pop_back()` directly after this function. If
/// spdlog::default_logger() is null, no sink is added.
///
/// Call it once, at start-up, before other threads log. After a second call, each record of spdlog
/// arrives twice.
OVRABASE_EXPORT void bindLoggers();

namespace {
/// The instance of the including source.
[[maybe_unused]] const GlobalLoggersInstanciator globalLoggersInstanciator;
} // namespace

} // namespace Vyn::OvraBase
