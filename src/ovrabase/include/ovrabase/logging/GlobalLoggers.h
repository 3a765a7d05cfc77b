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
/// The ten loggers that everybody shares. Including this file keeps them alive for as long as the
/// statics of the including file live: logging from static constructors and destructors is safe.
namespace Vyn::OvraBase {

/// The global loggers. bindLoggers() binds the first three; the application may bind the others.
enum LogService : int {
    UI = 0,      ///< the application
    Support = 1, ///< warnings of the library
    Debug = 2,   ///< errors and notices of the library, and all that comes through spdlog
    Service3,
    Service4,
    Service5,
    Service6,
    Service7,
    Service8,
    Service9
};

/// Counted owner of the global loggers: the first instance makes them, the last one's end destroys
/// them. Copies count. Not thread-safe: instances live in static storage.
class GlobalLoggersInstanciator {
    OVRABASE_EXPORT static std::vector<Vyn::Logger> *&table() noexcept;

public:
    OVRABASE_EXPORT GlobalLoggersInstanciator();
    OVRABASE_EXPORT GlobalLoggersInstanciator(const GlobalLoggersInstanciator &other);
    GlobalLoggersInstanciator &operator=(const GlobalLoggersInstanciator &) = default;
    OVRABASE_EXPORT ~GlobalLoggersInstanciator();

    /// Returns the number of instances.
    OVRABASE_EXPORT static int &counter();

    /// The ten loggers, null while no instance exists. Each module has a reference of its own to
    /// the one pointer, as functions cross a library's border safely and data does not. It is there
    /// from the first static of an including file on; logger() may be called earlier.
    OVRABASE_NO_EXPORT static inline std::vector<Vyn::Logger> *&loggers = table();
};

/// Returns the logger of \a service, which must be one of the ten. Thread-safe. Outside the life
/// of the global loggers a logger that drops everything.
OVRABASE_EXPORT const Vyn::Logger &logger(LogService service);

/// Returns the log manager, made on first use.
OVRABASE_EXPORT Vyn::Core::Log::LogManager *logManagerInstance();

/// Binds \a logger to the log manager; the same as Vyn::Core::Log::bindLogger().
OVRABASE_EXPORT void bindLogger(Vyn::Logger &logger, const QString &prefix);

/// Binds the global logger of \a service, for those that bindLoggers() leaves unbound.
/// Call it at start-up, before other threads log.
OVRABASE_EXPORT void bindLogger(LogService service, const QString &prefix);

/// Binds UI, Support and Debug with the prefixes "UI: ", "Support: " and "Debug: ", and brings the
/// records of spdlog's default logger to Debug.
///
/// Call it once at start-up, before other threads log: a second call doubles spdlog's records.
OVRABASE_EXPORT void bindLoggers();

namespace {
[[maybe_unused]] const GlobalLoggersInstanciator globalLoggersInstanciator;
}

} // namespace Vyn::OvraBase
