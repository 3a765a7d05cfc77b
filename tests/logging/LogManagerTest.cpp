// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/Logger.h>

#include <QScopeGuard>

#include <gmock/gmock.h>

#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <thread>

namespace Vyn::Core::Log {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

struct Calling : LogDelegate {
    explicit Calling(std::function<void(const QString &)> f)
        : function(std::move(f))
    {
    }
    void log(int, const QString &, const QString &message) override { function(message); }
    std::function<void(const QString &)> function;
};

void say(const QString &message)
{
    LogManager::instance()->log(0, QStringLiteral("c"), message);
}

std::vector<std::string> messagesOf(const RecordedLog &log)
{
    std::vector<std::string> messages;
    for (const Record &record : log.records()) {
        messages.push_back(record.message);
    }
    return messages;
}

TEST(LogManager, PassesARecordAsItIs)
{
    const RecordedLog log;
    LogManager::instance()->log(2, QStringLiteral("Контекст"), QStringLiteral("%1 尺"));
    EXPECT_THAT(log.records(), ElementsAre(Record{2, "Контекст", "%1 尺"}));
}

TEST(LogManager, ARecordOfADelegateFollowsTheOneBeingDelivered)
{
    bool inside = false;
    const ScopedPushLogDelegate echo(std::make_shared<Calling>([&](const QString &message) {
        EXPECT_FALSE(inside) << "nested delivery";
        inside = true;
        const auto leave = qScopeGuard([&] { inside = false; });
        if (message == QStringLiteral("a")) {
            say(QStringLiteral("b"));
            say(QStringLiteral("c"));
        }
    }));
    const RecordedLog later;
    say(QStringLiteral("a"));
    EXPECT_THAT(messagesOf(later), ElementsAre("a", "b", "c"));
}

TEST(LogManager, AThrowingDelegateKeepsNobodyFromBeingServed)
{
    const ScopedPushLogDelegate thrower(
        std::make_shared<Calling>([](const QString &) { throw std::runtime_error("broken"); }));
    const RecordedLog log;
    EXPECT_NO_THROW(say(QStringLiteral("first")));
    say(QStringLiteral("second"));
    EXPECT_THAT(messagesOf(log), ElementsAre("first", "second"));
}

TEST(LogManager, TheEndOfOneRegistrationEndsAllOfTheSameDelegate)
{
    int calls = 0;
    const auto delegate = std::make_shared<Calling>([&](const QString &) { ++calls; });
    const ScopedPushLogDelegate first(delegate);
    {
        const ScopedPushLogDelegate second(delegate);
        say(QStringLiteral("x"));
        EXPECT_EQ(calls, 2);
    }
    say(QStringLiteral("y"));
    EXPECT_EQ(calls, 2);
}

TEST(LogManager, ANullDelegateIsIgnored)
{
    const ScopedPushLogDelegate null(nullptr);
    const RecordedLog log;
    say(QStringLiteral("x"));
    EXPECT_THAT(messagesOf(log), ElementsAre("x"));
}

TEST(LogManager, ARegistrationReleasesItsDelegate)
{
    std::weak_ptr<LogDelegate> watched;
    {
        auto delegate = std::make_shared<Calling>([](const QString &) {});
        watched = delegate;
        const ScopedPushLogDelegate registration(std::move(delegate));
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

TEST(LogManager, DelegatesMayComeAndGoDuringARecord)
{
    std::optional<RecordedLog> added;
    std::optional<ScopedPushLogDelegate> ended;
    int callsAfterItsEnd = 0;
    const ScopedPushLogDelegate changer(std::make_shared<Calling>([&](const QString &) {
        if (!added) {
            added.emplace();
            ended.reset();
        }
    }));
    ended.emplace(std::make_shared<Calling>([&](const QString &) { ++callsAfterItsEnd; }));

    say(QStringLiteral("during"));
    say(QStringLiteral("next"));

    EXPECT_EQ(callsAfterItsEnd, 0);
    EXPECT_THAT(messagesOf(*added), ElementsAre("next"));
}

TEST(LogManager, EightThreadsLoseDoubleAndReorderNothing)
{
    constexpr int kThreads = 8;
    constexpr int kMessages = 2000;
    std::map<int, std::vector<int>> seen;
    std::atomic<int> inside = 0;
    const ScopedPushLogDelegate collector(std::make_shared<Calling>([&](const QString &message) {
        EXPECT_EQ(++inside, 1) << "two records at once";
        const QStringList parts = message.split(u' ');
        seen[parts.at(0).toInt()].push_back(parts.at(1).toInt());
        --inside;
    }));

    Logger logger;
    bindLogger(logger, QString());
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&logger, thread] {
            for (int i = 0; i < kMessages; ++i) {
                logger.info("c") << thread << ' ' << i;
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }

    ASSERT_EQ(seen.size(), std::size_t{kThreads});
    for (const auto &[thread, numbers] : seen) {
        ASSERT_EQ(numbers.size(), std::size_t{kMessages}) << thread;
        for (int i = 0; i < kMessages; ++i) {
            ASSERT_EQ(numbers[static_cast<std::size_t>(i)], i) << thread;
        }
    }
}

TEST(BindLogger, PutsThePrefixBeforeTheContextAndCapsTheLevel)
{
    const RecordedLog log;
    Logger logger;
    bindLogger(logger, QStringLiteral("Größe: "));
    logger.info("main.cpp:12 f()") << "i";
    logger.warning("") << "w";
    logger.error("尺") << "尺";
    logger.log(static_cast<Logger::LogSeverity>(3), "c") << "three";
    bindLogger(logger, QString());
    logger.info("plain") << "p";
    EXPECT_THAT(log.records(),
        ElementsAre(Record{0, "Größe: main.cpp:12 f()", "i"}, Record{1, "Größe: ", "w"},
            Record{2, "Größe: 尺", "尺"}, Record{2, "Größe: c", "three"}, Record{0, "plain", "p"}));
}

TEST(BindLogger, TakesTextThatIsNotUtf8)
{
    const RecordedLog log;
    Logger logger;
    bindLogger(logger, QStringLiteral("p "));
    logger.info("\xff\xfe") << "broken \xc3" << '\0' << "end";
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].message, std::string("broken \uFFFD\0end", 14));
}

class QtMessages : public testing::Test {
protected:
    QtMessageHandler mPrevious = installQtMessageHandler();
    RecordedLog mLog;

    ~QtMessages() override
    {
        setQtMessageMask(0x1e);
        qInstallMessageHandler(mPrevious);
    }

    static void emitMessage(QtMsgType type, const char *file = "widget.cpp")
    {
        // The installed handler itself: QMessageLogger would end the process on a fatal message.
        const QtMessageHandler handler = qInstallMessageHandler(nullptr);
        qInstallMessageHandler(handler);
        handler(type, QMessageLogContext(file, 42, "f", "category"), QStringLiteral("hello"));
    }
};

TEST_F(QtMessages, ArriveWithTheirLevelUnlessMasked)
{
    const std::string text = "widget.cpp(42): hello";
    for (const QtMsgType type : {QtDebugMsg, QtWarningMsg, QtCriticalMsg, QtFatalMsg, QtInfoMsg}) {
        emitMessage(type);
    }
    EXPECT_THAT(mLog.take(), ElementsAre(Record{1, "Default", text}, Record{2, "Default", text},
                                 Record{2, "Default", text}, Record{0, "Default", text}));

    setQtMessageMask(0x01);
    for (const int type : {0, 1, 2, 3, 4, 7}) {
        emitMessage(static_cast<QtMsgType>(type));
    }
    EXPECT_THAT(mLog.take(), ElementsAre(Record{0, "Default", text}, Record{0, "Default", text}));

    setQtMessageMask(0);
    emitMessage(QtFatalMsg);
    EXPECT_THAT(mLog.take(), IsEmpty());
}

TEST_F(QtMessages, MayComeWithoutAFile)
{
    emitMessage(QtWarningMsg, nullptr);
    EXPECT_THAT(mLog.take(), ElementsAre(Record{1, "Default", "(42): hello"}));
}

TEST_F(QtMessages, OfADelegateDoNotDeadlock)
{
    // One thread delivers and makes Qt speak, the other one comes from Qt.
    const ScopedPushLogDelegate speaking(std::make_shared<Calling>([](const QString &message) {
        if (message == QStringLiteral("x")) {
            emitMessage(QtWarningMsg);
        }
    }));
    std::thread other([] {
        for (int i = 0; i < 500; ++i) {
            emitMessage(QtInfoMsg);
        }
    });
    for (int i = 0; i < 500; ++i) {
        say(QStringLiteral("x"));
    }
    other.join();
    EXPECT_EQ(mLog.take().size(), 1500U);
}

} // namespace
} // namespace Vyn::Core::Log
