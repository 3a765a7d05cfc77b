// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/Logger.h>

#include <utility>

namespace Vyn {

StreamLogger Logger::info(std::string context) const
{
    return log(Info, std::move(context));
}

StreamLogger Logger::warning(std::string context) const
{
    return log(Warning, std::move(context));
}

StreamLogger Logger::error(std::string context) const
{
    return log(Error, std::move(context));
}

StreamLogger Logger::log(LogSeverity severity, std::string context) const
{
    return {mDelegate, severity, std::move(context)};
}

void Logger::setDelegate(Delegate delegate)
{
    mDelegate = std::move(delegate);
}

StreamLogger::StreamLogger(
    Logger::Delegate delegate, Logger::LogSeverity severity, std::string context)
    : std::iostream(&mText)
    , mDelegate(std::move(delegate))
    , mSeverity(severity)
    , mContext(std::move(context))
{
}

StreamLogger::StreamLogger(StreamLogger &&other) noexcept
    : std::iostream(std::move(other))
    , mText(std::move(other.mText))
    , mDelegate(std::exchange(other.mDelegate, nullptr))
    , mSeverity(other.mSeverity)
    , mContext(std::move(other.mContext))
{
    set_rdbuf(&mText);
}

StreamLogger::~StreamLogger()
{
    try {
        std::string text = std::move(mText).str();
        if (mDelegate && !text.empty()) {
            mDelegate(mSeverity, std::move(mContext), std::move(text));
        }
    } catch (...) {
        // A log call never fails its caller.
    }
}

} // namespace Vyn
