// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/logging/GlobalLoggers.h>

#include <gmock/gmock.h>
#include <spdlog/spdlog.h>

#include <string>
#include <tuple>
#include <vector>

namespace Vyn::OvraBase {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;

TEST(GlobalLoggersInstanciator, CountsItsInstancesAndCopies)
{
    const int before = GlobalLoggersInstanciator::counter();
    ASSERT_GT(before, 0) << "including the header makes an instance";
    const auto *const loggers = GlobalLoggersInstanciator::loggers;
    {
        const GlobalLoggersInstanciator one;
        const GlobalLoggersInstanciator copy(one);
        EXPECT_EQ(GlobalLoggersInstanciator::counter(), before + 2);
    }
    EXPECT_EQ(GlobalLoggersInstanciator::counter(), before);
    EXPECT_EQ(GlobalLoggersInstanciator::loggers, loggers);
    EXPECT_EQ(loggers->size(), 10U);
}

TEST(GlobalLoggers, AreBoundWithTheirPrefixes)
{
    const RecordedLog log;
    logger(UI).info("c") << "ui";
    logger(Support).warning("c") << "support";
    logger(Debug).error("c") << "debug";
    logger(Service9).error("c") << "dropped, the application binds the reserved ones";
    bindLogger(Service9, QStringLiteral("Nine: "));
    logger(Service9).info("c") << "x";
    (*GlobalLoggersInstanciator::loggers)[Service9].setDelegate({});
    logger(Service9).info("c") << "dropped";
    EXPECT_THAT(
        log.records(), ElementsAre(Record{0, "UI: c", "ui"}, Record{1, "Support: c", "support"},
                           Record{2, "Debug: c", "debug"}, Record{0, "Nine: c", "x"}));
}

TEST(SpdlogBridge, BringsEachRecordToDebugWhateverItsSource)
{
    RecordedLog log;
    // A logger of another module that writes to nothing but the bridge.
    spdlog::logger core("core", spdlog::default_logger()->sinks().back());
    core.set_level(spdlog::level::trace);
    namespace level = spdlog::level;
    const std::tuple<level::level_enum, int, std::string> rows[] = {{level::trace, 0, "58"},
        {level::debug, 0, "58"}, {level::info, 0, "58"}, {level::warn, 1, "62"},
        {level::err, 2, "67"}, {level::critical, 2, "67"}, {level::off, 0, "58"}};
    for (const auto &[spdlogLevel, shown, line] : rows) {
        core.log(spdlog::source_loc("/some/dir/io.cpp", 12, "save"), spdlogLevel, "disk full");
        EXPECT_THAT(
            log.take(), ElementsAre(Record{shown,
                            "Debug: Logger.cpp:" + line +
                                " Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()",
                            "core [io.cpp:12 save()] disk full"}));
    }
    core.log(spdlog::source_loc(nullptr, 3, nullptr), spdlog::level::info, "neither");
    spdlog::error("plain {} 尺", 1); // through the default logger
    const std::vector<Record> records = log.take();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].message, "core [:3 ()] neither");
    EXPECT_EQ(records[1].message, spdlog::default_logger()->name() + " [:0 ()] plain 1 尺");
}

} // namespace
} // namespace Vyn::OvraBase
