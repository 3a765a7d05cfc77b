// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"
#include "logging/LomaSink_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/logging/SpdlogDelegate.h>

#include <spdlog/logger.h>

#include <algorithm>
#include <string>
#include <utility>

namespace Vyn::Core::Log {

using OvraBase::fail;
using OvraBase::hasLomaSink;

SpdlogDelegate::SpdlogDelegate(std::shared_ptr<spdlog::logger> logger)
    : mLogger(std::move(logger))
{
    if (!mLogger) {
        fail<Exception::NullParameterException>(
            LOG_CONTEXT, QStringLiteral("No logger of spdlog is given."));
    }
    if (hasLomaSink(mLogger->sinks())) {
        fail<Exception::InvalidArgumentException>(LOG_CONTEXT,
            QStringLiteral("The records of spdlog's logger <%1> come back to the log manager.")
                .arg(QString::fromStdString(mLogger->name())));
    }
}

SpdlogDelegate::~SpdlogDelegate() = default;

void SpdlogDelegate::log(int level, const QString &context, const QString &message)
{
    if (hasLomaSink(mLogger->sinks())) {
        return;
    }
    // The context is part of the text. An asynchronous logger stores only pointers to the texts of
    // a source_loc, and may read them after this call.
    std::string text;
    if (!context.isEmpty()) {
        text = '[' + context.toStdString() + "] ";
    }
    text += message.toStdString();
    static constexpr spdlog::level::level_enum kLevels[] = {
        spdlog::level::info, spdlog::level::warn, spdlog::level::err};
    mLogger->log(
        spdlog::source_loc{}, kLevels[std::clamp(level, 0, 2)], spdlog::string_view_t(text));
}

} // namespace Vyn::Core::Log
