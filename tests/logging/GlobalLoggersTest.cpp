// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/logging/GlobalLoggers.h>

#include <gmock/gmock.h>
#include <spdlog/spdlog.h>

namespace {

using namespace Vyn::OvraBase;
using namespace Vyn::Test;
using namespace testing;

TEST(GlobalLoggers, LiveAsLongAsACountedInstance)
{
    const int before = GlobalLoggersInstanciator::counter();
    const auto *const loggers = GlobalLoggersInstanciator::loggers;
    {
        const GlobalLoggersInstanciator one;
        const GlobalLoggersInstanciator copy(one);
    }
    EXPECT_EQ(GlobalLoggersInstanciator::counter(), before);
    EXPECT_THAT(GlobalLoggersInstanciator::loggers, AllOf(Eq(loggers), Pointee(SizeIs(10))));
}

TEST(GlobalLoggers, PutTheirPrefixesBeforeTheContext)
{
    const RecordedLog log;
    for (const LogService service : {UI, Support, Debug, Service9}) {
        logger(service).info("c") << "x"; // Service9 drops it: bindLoggers() does not bind that one
    }
    bindLogger(Service9, QStringLiteral("Nine: "));
    logger(Service9).info("c") << "x";
    (*GlobalLoggersInstanciator::loggers)[Service9].setDelegate({});
    EXPECT_THAT(log.records(), ElementsAre(Record{0, "UI: c", "x"}, Record{0, "Support: c", "x"},
                                   Record{0, "Debug: c", "x"}, Record{0, "Nine: c", "x"}));
}

TEST(GlobalLoggers, BringTheRecordsOfSpdlogToDebug)
{
    using namespace spdlog::level;
    const RecordedLog log;
    // A logger of another module. Its only sink is the one that bindLoggers() has added.
    spdlog::logger core("core", spdlog::default_logger()->sinks().back());
    core.set_level(trace);
    for (const auto level : {trace, warn, err, critical, off}) {
        core.log(spdlog::source_loc("/some/dir/io.cpp", 12, "save"), level, "disk full");
    }
    core.log(spdlog::source_loc(nullptr, 3, nullptr), off, "neither");
    spdlog::error("plain {} 尺", 1); // through the default logger
    const std::string sink = " Vyn::OvraBase::`anonymous-namespace'::LomaSink::sink_it_()";
    const std::string info = "Debug: Logger.cpp:58" + sink;
    const std::string error = "Debug: Logger.cpp:67" + sink;
    const std::string text = "core [io.cpp:12 save()] disk full";
    EXPECT_THAT(log.records(),
        ElementsAre(Record{0, info, text}, Record{1, "Debug: Logger.cpp:62" + sink, text},
            Record{2, error, text}, Record{2, error, text}, Record{0, info, text},
            Record{0, info, "core [:3 ()] neither"},
            Record{2, error, spdlog::default_logger()->name() + " [:0 ()] plain 1 尺"}));
}

} // namespace
