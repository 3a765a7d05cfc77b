// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/Logger.h>

#include <gmock/gmock.h>

#include <locale>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

namespace Vyn {
namespace {

using testing::ElementsAre;
using Message = std::tuple<int, std::string, std::string>;

class LoggerTest : public testing::Test {
protected:
    Logger mLogger;
    std::vector<Message> mMessages;

    void SetUp() override
    {
        mLogger.setDelegate(
            [this](int severity, const std::string &context, const std::string &text) {
                mMessages.emplace_back(severity, context, text);
            });
    }
};

TEST_F(LoggerTest, DeliversAWholeMessageWhenTheStatementEnds)
{
    mLogger.info("i") << "a" << 1 << ' ' << 2.5;
    mLogger.warning("w") << std::string(5000, 'x');
    mLogger.error("") << "e";
    mLogger.log(static_cast<Logger::LogSeverity>(7), "7") << "seven";
    EXPECT_THAT(
        mMessages, ElementsAre(Message{0, "i", "a1 2.5"}, Message{1, "w", std::string(5000, 'x')},
                       Message{2, "", "e"}, Message{7, "7", "seven"}));
}

TEST_F(LoggerTest, DeliversUpToTheFurthestPositionWrittenUnlessEmpty)
{
    mLogger.info("nothing written");
    mLogger.info("empty strings") << "" << std::string();
    {
        StreamLogger stream = mLogger.info("");
        stream << "12 words ";
        int number = 0;
        std::string word;
        stream >> number >> word;
        EXPECT_EQ(number, 12);
        EXPECT_EQ(word, "words");
        stream.seekp(1) << "X";
        StreamLogger moved(std::move(stream));
        moved << " one";
        StreamLogger assigned = mLogger.error("earlier");
        assigned << "goes first";
        assigned = std::move(moved);
        assigned << '!';
    }
    EXPECT_THAT(
        mMessages, ElementsAre(Message{2, "earlier", "goes first"}, Message{0, "", "1X one!s "}));
}

TEST_F(LoggerTest, NumbersAreWrittenAlikeUnderEveryGlobalLocale)
{
    struct Grouping : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new Grouping));
    // A new thread, on which no stream was made under another locale.
    std::thread([this] {
        for (int i = 0; i < 2; ++i) {
            mLogger.info("") << 12345 << ' ' << 0.5;
        }
    }).join();
    std::locale::global(before);
    EXPECT_THAT(mMessages, ElementsAre(Message{0, "", "12345 0.5"}, Message{0, "", "12345 0.5"}));
}

TEST_F(LoggerTest, AMessageKeepsTheDelegateThatItBeganWith)
{
    {
        StreamLogger stream = mLogger.info("");
        stream << "begun before";
        mLogger.setDelegate({});
    }
    mLogger.info("") << "dropped";
    EXPECT_THAT(mMessages, ElementsAre(Message{0, "", "begun before"}));
}

TEST(Logger, EachMessageHasItsOwnCopyOfTheDelegateWhoseThrowEndsThere)
{
    std::vector<int> calls;
    Logger logger;
    logger.setDelegate([&calls, n = 0](int, const std::string &, const std::string &) mutable {
        calls.push_back(++n);
        throw std::runtime_error("delegate");
    });
    EXPECT_NO_THROW(logger.info("") << "a");
    EXPECT_NO_THROW(logger.error("") << "b");
    EXPECT_THAT(calls, ElementsAre(1, 1));
}

} // namespace
} // namespace Vyn
