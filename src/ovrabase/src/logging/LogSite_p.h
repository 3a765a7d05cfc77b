// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/logging/GlobalLoggers.h>

#include <QString>

#include <cstddef>
#include <string_view>
#include <utility>

/// \file
/// What a place in the library that logs or fails is written with.
namespace Vyn::OvraBase {

/// The stable name of a log site, written out in full: "File.cpp:12 qualified::function()".
/// Log readers filter by it, so it stays when the code around it moves. Only a literal makes one.
struct LogPosition {
    template<std::size_t N>
    consteval LogPosition(const char (&literal)[N])
        : text(literal, N - 1)
    {
    }

    std::string_view text;
};

/// Writes \a message to the logger of \a service with \a position as its context.
void logAt(const LogPosition &position, LogService service, Logger::LogSeverity severity,
    const QString &message) noexcept;

/// Logs \a message as an error on Debug at \a position, then throws an E made from it and, for
/// input/output failures, \a subject. The only way in which the library throws.
template<class E, class... Subject>
[[noreturn]] void fail(const LogPosition &position, const QString &message, Subject &&...subject)
{
    logAt(position, Debug, Logger::Error, message);
    throw E(message, std::forward<Subject>(subject)...);
}

} // namespace Vyn::OvraBase
