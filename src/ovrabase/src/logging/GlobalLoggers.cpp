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

// Plain data, so that it is there before the first static constructor and after the last
// destructor.
constinit int sCounter = 0;
constinit std::vector<Logger> *sLoggers = nullptr;

/// The makers' log back-end is closed and not part of this build: this states what it is started
/// with and starts nothing.
void initLogBackend([[maybe_unused]] const std::string &first,
    [[maybe_unused]] spdlog::level::level_enum level, [[maybe_unused]] bool second,
    [[maybe_unused]] bool third, [[maybe_unused]] int format,
    [[maybe_unused]] const std::string &last)
{
}

/// Appends a new sink to spdlog's default logger, which an application may have taken away.
void bridgeSpdlog()
{
    os::pinThisModule();
    static auto &sink = *new spdlog::sink_ptr; // services log until the very end
    sink = makeLomaSink();
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
    bridgeSpdlog();
}

} // namespace Vyn::OvraBase
