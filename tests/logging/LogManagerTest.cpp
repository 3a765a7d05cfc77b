// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"
#include "support/Threads.h"

#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/Logger.h>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace Vyn::Core::Log {
namespace {

using Test::onThreads;
using Test::Record;
using Test::RecordedLog;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;
using testing::StartsWith;

struct Calling : LogDelegate {
    void log(int, const QString &, const QString &message) override { function(message); }
    std::function<void(const QString &)> function;
};

std::shared_ptr<Calling> calling(std::function<void(const QString &)> function)
{
    const auto delegate = std::make_shared<Calling>();
    delegate->function = std::move(function);
    return delegate;
}

void say(const char *message)
{
    LogManager::instance()->log(0, QStringLiteral("c"), QString::fromUtf8(message));
}

Record said(const char *message)
{
    return {0, "c", message};
}

TEST(LogManager, ARecordOfADelegateFollowsTheOneBeingDelivered)
{
    int inside = 0;
    const ScopedPushLogDelegate echo(calling([&](const QString &message) {
        EXPECT_EQ(++inside, 1) << "nested delivery";
        if (message == QStringLiteral("a")) {
            say("b");
            say("c");
        }
        --inside;
    }));
    const RecordedLog later;
    say("a");
    EXPECT_THAT(later.records(), ElementsAre(said("a"), said("b"), said("c")));
}

TEST(LogManager, AThrowingOrNullDelegateKeepsNobodyFromBeingServed)
{
    const ScopedPushLogDelegate null(nullptr);
    const ScopedPushLogDelegate thrower(
        calling([](const QString &) { throw std::runtime_error("broken"); }));
    const RecordedLog log;
    EXPECT_NO_THROW(say("first"));
    say("second");
    EXPECT_THAT(log.records(), ElementsAre(said("first"), said("second")));
}

TEST(LogManager, TheEndOfOneRegistrationEndsAllOfTheSameDelegateAndReleasesIt)
{
    int calls = 0;
    auto delegate = calling([&](const QString &) { ++calls; });
    const std::weak_ptr<LogDelegate> watched = delegate;
    {
        const ScopedPushLogDelegate first(delegate);
        {
            const ScopedPushLogDelegate second(std::move(delegate));
            say("x");
            EXPECT_EQ(calls, 2);
        }
        say("y");
        EXPECT_EQ(calls, 2);
    }
    EXPECT_TRUE(watched.expired());
}

TEST(LogManager, DelegatesMayComeAndGoDuringARecord)
{
    std::optional<RecordedLog> added;
    std::optional<ScopedPushLogDelegate> ended;
    int callsAfterItsEnd = 0;
    const auto counting = calling([&](const QString &) { ++callsAfterItsEnd; });
    const ScopedPushLogDelegate changer(calling([&](const QString &) {
        if (!added) {
            added.emplace();
            ended.reset();
            ended.emplace(counting); // again, but from the next record on
        }
    }));
    ended.emplace(counting);

    say("during");
    EXPECT_EQ(callsAfterItsEnd, 0);
    say("next");
    EXPECT_EQ(callsAfterItsEnd, 1);
    EXPECT_THAT(added->records(), ElementsAre(said("next")));
}

TEST(LogManager, ReleasesADelegateThatEndsItsOwnRegistrationWithoutTheLock)
{
    const RecordedLog log;
    std::optional<ScopedPushLogDelegate> registration;
    struct Writer : Calling {
        ~Writer() override
        {
            const auto flushed = std::make_shared<std::promise<void>>();
            std::thread([flushed] { (say("flushed"), flushed->set_value()); }).detach();
            EXPECT_EQ(flushed->get_future().wait_for(std::chrono::seconds(10)),
                std::future_status::ready);
        }
    };
    auto writer = std::make_shared<Writer>();
    writer->function = [&](const QString &) { registration.reset(); };
    registration.emplace(std::move(writer));
    say("x");
    EXPECT_THAT(log.records(), ElementsAre(said("x"), said("flushed")));
}

TEST(LogManager, GivesEachDelegateTheTextThatWasLogged)
{
    QString text = QStringLiteral("as logged");
    const ScopedPushLogDelegate changer(calling([&](const QString &message) {
        const_cast<QString &>(message).append(u'!');
        text.append(u'?');
    }));
    const RecordedLog later;
    LogManager::instance()->log(0, QStringLiteral("c"), text);
    EXPECT_THAT(later.records(), ElementsAre(said("as logged")));
    EXPECT_EQ(text, QStringLiteral("as logged?"));
}

TEST(LogManager, EightThreadsLoseDoubleAndReorderNothing)
{
    constexpr int kThreads = 8;
    constexpr int kMessages = 2000;
    std::map<int, std::vector<int>> seen;
    std::atomic<int> inside = 0;
    const ScopedPushLogDelegate collector(calling([&](const QString &message) {
        EXPECT_EQ(++inside, 1) << "two records at once";
        const QStringList parts = message.split(u' ');
        seen[parts.at(0).toInt()].push_back(parts.at(1).toInt());
        --inside;
    }));

    Logger logger;
    bindLogger(logger, QString());
    onThreads(kThreads, [&logger](int thread) {
        for (int i = 0; i < kMessages; ++i) {
            logger.info("c") << thread << ' ' << i;
        }
    });

    ASSERT_EQ(seen.size(), std::size_t{kThreads});
    std::vector<int> all(kMessages);
    std::iota(all.begin(), all.end(), 0);
    for (const auto &[thread, numbers] : seen) {
        EXPECT_EQ(numbers, all) << thread;
    }
}

TEST(BindLogger, PutsThePrefixBeforeTheContextAndCapsTheLevel)
{
    const RecordedLog log;
    Logger logger;
    bindLogger(logger, QStringLiteral("Größe %1: "));
    logger.info("main.cpp:12 f()") << "i";
    logger.warning("") << "%1";
    logger.error("尺") << "尺";
    logger.log(static_cast<Logger::LogSeverity>(3), "c") << "three";
    bindLogger(logger, QString());
    logger.info("\xff\xfe") << "broken \xc3" << '\0' << "end"; // not UTF-8
    EXPECT_THAT(log.records(),
        ElementsAre(Record{0, "Größe %1: main.cpp:12 f()", "i"}, Record{1, "Größe %1: ", "%1"},
            Record{2, "Größe %1: 尺", "尺"}, Record{2, "Größe %1: c", "three"},
            Record{0, "\uFFFD\uFFFD", std::string("broken \uFFFD\0end", 14)}));
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

    emitMessage(QtWarningMsg, nullptr);
    EXPECT_THAT(mLog.take(), ElementsAre(Record{1, "Default", "(42): hello"}));

    for (const auto &[only, level] : {std::pair{QtDebugMsg, 0}, {QtWarningMsg, 1},
             {QtCriticalMsg, 2}, {QtFatalMsg, 2}, {QtInfoMsg, 0}}) {
        setQtMessageMask(1 << only);
        for (const int type : {0, 1, 2, 3, 4}) {
            emitMessage(static_cast<QtMsgType>(type));
        }
        EXPECT_THAT(mLog.take(), ElementsAre(Record{level, "Default", text})) << only;
    }
    setQtMessageMask(0x01);
    emitMessage(static_cast<QtMsgType>(7));
    EXPECT_THAT(mLog.take(), ElementsAre(Record{0, "Default", text}));
}

TEST_F(QtMessages, OfADelegateDoNotDeadlock)
{
    // This thread delivers and makes Qt speak, the other one comes from Qt meanwhile.
    std::thread other;
    const ScopedPushLogDelegate speaking(calling([&](const QString &message) {
        if (message == QStringLiteral("x")) {
            std::atomic<bool> isComing = false;
            other = std::thread([&isComing] {
                isComing = true;
                emitMessage(QtInfoMsg);
            });
            while (!isComing) {
            }
            for (int i = 0; i < 200; ++i) {
                std::this_thread::yield();
                emitMessage(QtWarningMsg);
            }
        }
    }));
    say("x");
    other.join();
    EXPECT_EQ(mLog.take().size(), 202U);
}

TEST_F(QtMessages, OfADelegateForEachRecordEndAfterAHundredInARow)
{
    for (const int perRecord : {1, 2}) {
        const ScopedPushLogDelegate broken(calling([&](const QString &message) {
            for (int i = 0; i < perRecord; ++i) {
                emitMessage(QtWarningMsg);
            }
            if (message.startsWith(QStringLiteral("widget"))) {
                say("plain");
            }
        }));
        say("x"); // each of its messages begins a chain
        std::map<std::string, int> times;
        for (const Record &record : mLog.take()) {
            ++times[record.context + ' ' + record.message];
        }
        EXPECT_THAT(times,
            ElementsAre(Pair("Default widget.cpp(42): hello", 100 * perRecord),
                Pair(AllOf(StartsWith("LogManager.cpp:"), HasSubstr("<widget.cpp(42): hello>")),
                    perRecord),
                Pair("c plain", 100 * perRecord), Pair("c x", 1)));
    }
}

TEST_F(QtMessages, ThatAreFatalInADelegateReachStandardError)
{
    const ScopedPushLogDelegate dying(calling([](const QString &message) {
        emitMessage(message == QStringLiteral("x") ? QtFatalMsg : QtDebugMsg);
    }));
    testing::internal::CaptureStderr();
    say("x");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "widget.cpp(42): hello\n");
}

} // namespace
} // namespace Vyn::Core::Log
