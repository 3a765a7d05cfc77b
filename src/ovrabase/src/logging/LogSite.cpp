// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"

#include <string>

namespace Vyn::OvraBase {

void logAt(std::string_view position, LogService service, Logger::LogSeverity severity,
    const QString &message) noexcept
{
    try {
        logger(service).log(severity, std::string(position)) << message.toStdString();
    } catch (...) {
        // Out of memory. The caller goes on, normally with a throw: that exception must not be
        // replaced by this one.
    }
}

} // namespace Vyn::OvraBase
