// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LomaSink_p.h"
#include "logging/ModulePin_p.h"

#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>

#include <QString>

#include <spdlog/spdlog.h>

#include <cstddef>
#include <string>
#include <utility>

namespace Vyn::OvraBase {
namespace {

constexpr std::size_t kLoggerCount = 10;

// These have no constructor and no destructor, so that they can be used before the first static
// constructor and after the last static destructor.
constinit int sCounter = 0;
constinit std::vector<Logger> *sLoggers = nullptr;

/// Stands for the initialisation of another logging library, which ovrabase does not contain. Does
/// nothing. The call in bindLoggers() documents the arguments of that initialisation.
void initLogBackend([[maybe_unused]] const std::string &first,
    [[maybe_unused]] spdlog::level::level_enum level, [[maybe_unused]] bool second,
    [[maybe_unused]] bool third, [[maybe_unused]] int format,
    [[maybe_unused]] const std::string &last)
{
}

/// Adds a new LomaSink to spdlog's default logger.
void addSinkToSpdlog()
{
    os::pinThisModule();
    static auto &sink = *new spdlog::sink_ptr; // never destroyed: static destructors log, too
    sink = makeLomaSink();
    // An application may have set the default logger to null.
    if (const auto spdlogDefault = spdlog::default_logger()) {
        spdlogDefault->sinks().push_back(sink);
    }
}

} // namespace

std::vector<Logger> *&GlobalLoggersInstanciator::table() noexcept
{
    return sLoggers;
}

GlobalLoggersInstanciator::GlobalLoggersInstanciator()
{
    if (sCounter++ == 0) {
        sLoggers = new std::vector<Logger>(kLoggerCount);
    }
}

GlobalLoggersInstanciator::GlobalLoggersInstanciator(const GlobalLoggersInstanciator & /*other*/)
    : GlobalLoggersInstanciator()
{
}

GlobalLoggersInstanciator::~GlobalLoggersInstanciator()
{
    if (--sCounter == 0) {
        delete std::exchange(sLoggers, nullptr);
    }
}

int &GlobalLoggersInstanciator::counter()
{
    return sCounter;
}

const Logger &logger(LogService service)
{
    if (!sLoggers) {
        static const Logger &unbound = *new Logger;
        return unbound;
    }
    return (*sLoggers)[static_cast<std::size_t>(service)];
}

Core::Log::LogManager *logManagerInstance()
{
    return Core::Log::LogManager::instance();
}

void bindLogger(Logger &logger, const QString &prefix)
{
    Core::Log::bindLogger(logger, prefix);
}

void bindLogger(LogService service, const QString &prefix)
{
    if (sLoggers) {
        bindLogger((*sLoggers)[static_cast<std::size_t>(service)], prefix);
    }
}

void bindLoggers()
{
    bindLogger(UI, QStringLiteral("UI: "));
    bindLogger(Support, QStringLiteral("Support: "));
    bindLogger(Debug, QStringLiteral("Debug: "));
    initLogBackend("", spdlog::level::warn, false, false, 0, "");
    addSinkToSpdlog();
}

} // namespace Vyn::OvraBase
