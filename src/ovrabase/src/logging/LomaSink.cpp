// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"
#include "logging/LomaSink_p.h"

#include <ovrabase/logging/GlobalLoggers.h>

#include <QFileInfo>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/sinks/dist_sink.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kInfoRecord{
    "Logger.cpp:58 Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()"};
constexpr LogPosition kWarningRecord{
    "Logger.cpp:62 Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()"};
constexpr LogPosition kErrorRecord{
    "Logger.cpp:67 Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()"};

StreamLogger openRecord(spdlog::level::level_enum level)
{
    const Logger &debug = logger(Debug);
    switch (level) {
    case spdlog::level::warn:
        return debug.warning(std::string(kWarningRecord.text));
    case spdlog::level::err:
    case spdlog::level::critical:
        return debug.error(std::string(kErrorRecord.text));
    default:
        return debug.info(std::string(kInfoRecord.text));
    }
}

class LomaSink final : public spdlog::sinks::base_sink<std::mutex> {
protected:
    void sink_it_(const spdlog::details::log_msg &msg) override
    {
        const auto view = [](spdlog::string_view_t text) {
            return std::string_view(text.data(), text.size());
        };
        const auto *const function = msg.source.funcname ? msg.source.funcname : "";
        openRecord(msg.level)
            << view(msg.logger_name) << " ["
            << QFileInfo(QString::fromUtf8(msg.source.filename)).fileName().toStdString() << ':'
            << msg.source.line << ' ' << function << "()] " << view(msg.payload);
    }

    void flush_() override {}
};

/// Returns true if \a sink is a dist_sink that contains a LomaSink.
template<class Mutex>
bool distributesToLomaSink(spdlog::sinks::sink *sink)
{
    auto *const distributor = dynamic_cast<spdlog::sinks::dist_sink<Mutex> *>(sink);
    return distributor && hasLomaSink(distributor->sinks());
}

} // namespace

spdlog::sink_ptr makeLomaSink()
{
    return std::make_shared<LomaSink>();
}

bool hasLomaSink(const std::vector<spdlog::sink_ptr> &sinks)
{
    return std::any_of(sinks.begin(), sinks.end(), [](const spdlog::sink_ptr &sink) {
        return dynamic_cast<LomaSink *>(sink.get()) ||
               distributesToLomaSink<std::mutex>(sink.get()) ||
               distributesToLomaSink<spdlog::details::null_mutex>(sink.get());
    });
}

} // namespace Vyn::OvraBase
