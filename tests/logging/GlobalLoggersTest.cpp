// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/logging/GlobalLoggers.h>

#include <gmock/gmock.h>
#include <spdlog/spdlog.h>

#include <string>

namespace Vyn::OvraBase {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(GlobalLoggersInstanciator, CountsItsInstancesAndCopies)
{
    const int before = GlobalLoggersInstanciator::counter();
    ASSERT_GT(before, 0) << "including the header makes an instance";
    {
        const GlobalLoggersInstanciator one;
        const GlobalLoggersInstanciator copy(one);
        EXPECT_EQ(GlobalLoggersInstanciator::counter(), before + 2);
    }
    EXPECT_EQ(GlobalLoggersInstanciator::counter(), before);
    EXPECT_EQ(GlobalLoggersInstanciator::loggers->size(), 10U);
}

TEST(GlobalLoggers, AreBoundWithTheirPrefixes)
{
    const RecordedLog log;
    logger(UI).info("c") << "ui";
    logger(Support).warning("c") << "support";
    logger(Debug).error("c") << "debug";
    logger(Service3).error("c") << "dropped";
    EXPECT_THAT(
        log.records(), ElementsAre(Record{0, "UI: c", "ui"}, Record{1, "Support: c", "support"},
                           Record{2, "Debug: c", "debug"}));
}

TEST(GlobalLoggers, TheReservedOnesAreBoundByTheApplication)
{
    const RecordedLog log;
    bindLogger(Service9, QStringLiteral("Nine: "));
    logger(Service9).info("c") << "x";
    EXPECT_THAT(log.records(), ElementsAre(Record{0, "Nine: c", "x"}));
    (*GlobalLoggersInstanciator::loggers)[Service9].setDelegate({});
    logger(Service9).info("c") << "x";
    EXPECT_EQ(log.records().size(), 1U);
}

TEST(GlobalLoggers, TheManagerIsTheOneManager)
{
    EXPECT_EQ(logManagerInstance(), Core::Log::LogManager::instance());
}

struct Level {
    spdlog::level::level_enum spdlogLevel;
    int level;
    const char *line;
};

/// A logger of another module that writes to nothing but the bridge.
spdlog::logger bridged(RecordedLog & /*bound*/)
{
    spdlog::logger core("core", spdlog::default_logger()->sinks().back());
    core.set_level(spdlog::level::trace);
    return core;
}

TEST(SpdlogBridge, BringsEachRecordToDebug)
{
    RecordedLog log;
    spdlog::logger core = bridged(log);
    for (const Level &row : {
             Level{spdlog::level::trace, 0, "58"},
             Level{spdlog::level::debug, 0, "58"},
             Level{spdlog::level::info, 0, "58"},
             Level{spdlog::level::warn, 1, "62"},
             Level{spdlog::level::err, 2, "67"},
             Level{spdlog::level::critical, 2, "67"},
             Level{spdlog::level::off, 0, "58"},
         }) {
        core.log(spdlog::source_loc("/some/dir/io.cpp", 12, "save"), row.spdlogLevel, "disk full");
        EXPECT_THAT(
            log.take(), ElementsAre(Record{row.level,
                            std::string("Debug: Logger.cpp:") + row.line +
                                " Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()",
                            "core [io.cpp:12 save()] disk full"}));
    }
}

TEST(SpdlogBridge, HangsOnTheDefaultLogger)
{
    RecordedLog log;
    spdlog::error("plain {} 尺", 1);
    const std::vector<Record> records = log.take();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].level, 2);
    EXPECT_EQ(records[0].message, spdlog::default_logger()->name() + " [:0 ()] plain 1 尺");
}

TEST(SpdlogBridge, LosesNothingOfARecordWithoutASource)
{
    RecordedLog log;
    spdlog::logger core = bridged(log);
    core.log(spdlog::source_loc(nullptr, 3, nullptr), spdlog::level::info, "neither");
    core.log(spdlog::source_loc("a.cpp", 3, nullptr), spdlog::level::info, "no function");
    const std::vector<Record> records = log.take();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].message, "core [:3 ()] neither");
    EXPECT_EQ(records[1].message, "core [a.cpp:3 ()] no function");
}

} // namespace
} // namespace Vyn::OvraBase
