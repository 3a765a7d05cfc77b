// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/logging/SpdlogDelegate.h>

#include <gmock/gmock.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/dist_sink.h>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

namespace {

using namespace Vyn::Core::Log;
using Vyn::Test::RecordedLog;
using namespace std::string_literals;

struct SpdlogDelegateTest : testing::Test {
    RecordedLog mLog; // calls bindLoggers(), which adds the bridge
    std::ostringstream mWritten;
    std::shared_ptr<spdlog::logger> mLogger = std::make_shared<spdlog::logger>(
        "file", std::make_shared<spdlog::sinks::ostream_sink_mt>(mWritten));
    /// The sink that passes spdlog's records on to the log manager.
    const spdlog::sink_ptr mBridge = spdlog::default_logger()->sinks().back();

    SpdlogDelegateTest()
    {
        mLogger->set_formatter(std::make_unique<spdlog::pattern_formatter>(
            "%l %v", spdlog::pattern_time_type::local, "|"));
    }
};

TEST_F(SpdlogDelegateTest, WritesContextAndMessageAsTheyAreAndTheNearestLevel)
{
    SpdlogDelegate delegate(mLogger);
    for (const int level : {-1, 0, 1, 2, 3}) {
        delegate.log(level, QStringLiteral("größe"), QStringLiteral("{} %1\0"));
    }
    delegate.log(1, QString(), QStringLiteral("alone"));
    EXPECT_EQ(mWritten.str(), "info [größe] {} %1\0|info [größe] {} %1\0|warning [größe] {} %1\0|"
                              "error [größe] {} %1\0|error [größe] {} %1\0|warning alone|"s);
}

TEST_F(SpdlogDelegateTest, RefusesNullAndLoggersThatLeadBackToTheManager)
{
    EXPECT_THROW(SpdlogDelegate(nullptr), Vyn::Exception::NullParameterException);
    EXPECT_THAT(mLog.records().at(0).context, testing::StartsWith("Debug: SpdlogDelegate.cpp:"));

    using namespace spdlog::sinks;
    const spdlog::sink_ptr inner = std::make_shared<dist_sink_st>(std::vector{mBridge});
    mLogger->sinks() = {std::make_shared<dist_sink_mt>(std::vector{inner})};
    EXPECT_THROW(SpdlogDelegate{mLogger}, Vyn::Exception::InvalidArgumentException);
}

TEST_F(SpdlogDelegateTest, WritesNothingOnceTheBridgeIsAddedToItsLogger)
{
    const ScopedPushLogDelegate registration(std::make_shared<SpdlogDelegate>(mLogger));
    spdlog::warn("before");
    mLogger->sinks().push_back(mBridge);
    spdlog::warn("after");
    EXPECT_EQ(mLog.take().size(), 2U);
    EXPECT_EQ(mWritten.str().find("after"), std::string::npos);
}

} // namespace
