// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "logging/LogPosition_p.h"

#include <ovrabase/logging/GlobalLoggers.h>

#include <QString>

#include <utility>

namespace Vyn::OvraBase {

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
