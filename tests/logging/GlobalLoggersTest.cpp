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

using namespace Test;
using namespace testing;

TEST(GlobalLoggers, LiveAsLongAsACountedInstance)
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

TEST(GlobalLoggers, PutTheirPrefixesBeforeTheContext)
{
    const RecordedLog log;
    for (const LogService service : {UI, Support, Debug, Service9}) {
        logger(service).info("c") << "x"; // dropped by the last, which the application may bind
    }
    bindLogger(Service9, QStringLiteral("Nine: "));
    logger(Service9).info("c") << "x";
    (*GlobalLoggersInstanciator::loggers)[Service9].setDelegate({});
    EXPECT_THAT(log.records(), ElementsAre(Record{0, "UI: c", "x"}, Record{0, "Support: c", "x"},
                                   Record{0, "Debug: c", "x"}, Record{0, "Nine: c", "x"}));
}

TEST(GlobalLoggers, BringTheRecordsOfSpdlogToDebug)
{
    const RecordedLog log;
    // A logger of another module that writes to nothing but the bridge.
    spdlog::logger core("core", spdlog::default_logger()->sinks().back());
    core.set_level(spdlog::level::trace);
    namespace level = spdlog::level;
    std::vector<Record> expected;
    for (const auto &[spdlogLevel, shown, line] :
        {std::tuple{level::trace, 0, "58"}, {level::info, 0, "58"}, {level::warn, 1, "62"},
            {level::err, 2, "67"}, {level::critical, 2, "67"}, {level::off, 0, "58"}}) {
        core.log(spdlog::source_loc("/some/dir/io.cpp", 12, "save"), spdlogLevel, "disk full");
        expected.push_back({shown,
            "Debug: Logger.cpp:" + std::string(line) +
                " Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()",
            "core [io.cpp:12 save()] disk full"});
    }
    core.log(spdlog::source_loc(nullptr, 3, nullptr), spdlog::level::off, "neither");
    expected.push_back({0, expected.back().context, "core [:3 ()] neither"});
    spdlog::error("plain {} 尺", 1); // through the default logger
    expected.push_back(
        {2, expected.at(4).context, spdlog::default_logger()->name() + " [:0 ()] plain 1 尺"});
    EXPECT_EQ(log.records(), expected);
}

} // namespace
} // namespace Vyn::OvraBase
