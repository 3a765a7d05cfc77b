// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/logging/GlobalLoggers.h>

#include <QString>

#include <cstddef>
#include <string_view>
#include <utility>

/// \file
/// Functions with which the library logs and fails.
namespace Vyn::OvraBase {

/// The fixed name of a log site, for example "File.cpp:12 qualified::function()".
///
/// Log readers filter by this name. So it does not change when the code moves, and is made of a
/// string literal only. A new site passes LOG_CONTEXT instead.
struct LogPosition {
    template<std::size_t N>
    consteval LogPosition(const char (&literal)[N])
        : text(literal, N - 1)
    {
    }

    constexpr operator std::string_view() const noexcept { return text; }

    std::string_view text;
};

/// Writes \a message to the logger of \a service. The context of the record is the prefix
/// of the logger and \a position, a LogPosition or LOG_CONTEXT. If memory runs out, the record is
/// lost.
void logAt(std::string_view position, LogService service, Logger::LogSeverity severity,
    const QString &message) noexcept;

/// Logs \a message as an error on Debug at \a position. Then throws an E with \a message and, for
/// an IOException, with \a subject. All exceptions of the library are thrown here.
template<class E, class... Subject>
[[noreturn]] void fail(std::string_view position, const QString &message, Subject &&...subject)
{
    logAt(position, Debug, Logger::Error, message);
    throw E(message, std::forward<Subject>(subject)...);
}

} // namespace Vyn::OvraBase
