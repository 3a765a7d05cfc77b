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
/// A site without such a name passes LOG_CONTEXT.
struct LogPosition {
    template<std::size_t N>
    consteval LogPosition(const char (&literal)[N])
        : text(literal, N - 1)
    {
    }

    constexpr operator std::string_view() const noexcept { return text; }

    std::string_view text;
};

/// Writes \a message to the logger of \a service; \a position, a LogPosition or LOG_CONTEXT, is
/// the context of the record.
void logAt(std::string_view position, LogService service, Logger::LogSeverity severity,
    const QString &message) noexcept;

/// Logs \a message as an error on Debug at \a position, then throws an E made from it and, for
/// input/output failures, \a subject. The only way in which the library throws.
template<class E, class... Subject>
[[noreturn]] void fail(std::string_view position, const QString &message, Subject &&...subject)
{
    logAt(position, Debug, Logger::Error, message);
    throw E(message, std::forward<Subject>(subject)...);
}

} // namespace Vyn::OvraBase
