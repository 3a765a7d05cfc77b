// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"
#include "support/Threads.h"

#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/Logger.h>

#include <QScopeGuard>

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace Vyn::Core::Log {
namespace {

using namespace Test;
using namespace testing;

using Function = std::function<void(const QString &)>;

/// Is called with the message of each record.
struct Calling : LogDelegate, Function {
    using Function::Function;
    void log(int, const QString &, const QString &message) override { (*this)(message); }
};

void say(const char *message)
{
    LogManager::instance()->log(0, QStringLiteral("c"), QString::fromUtf8(message));
}

TEST(LogManager, DeliversWhatABrokenDelegateLogsAfterWhatItTakes)
{
    QString text = QStringLiteral("a");
    const ScopedPushLogDelegate null(nullptr);
    const ScopedPushLogDelegate broken(std::make_shared<Calling>([&](const QString &message) {
        if (message == QStringLiteral("a")) {
            say("b");
            say("c");
        }
        const_cast<QString &>(message).append(u'!');
        text.append(u'?');
        throw std::runtime_error("broken");
    }));
    const RecordedLog later;
    LogManager::instance()->log(0, QStringLiteral("c"), text);
    EXPECT_THAT(later.records(),
        ElementsAre(Record{0, "c", "a"}, Record{0, "c", "b"}, Record{0, "c", "c"}));
    EXPECT_EQ(text, QStringLiteral("a???"));
}

TEST(LogManager, EndsAllRegistrationsOfADelegateWithTheFirstAndReleasesIt)
{
    QString taken;
    auto delegate = std::make_shared<Calling>([&](const QString &message) { taken += message; });
    const std::weak_ptr<LogDelegate> watched = delegate;
    auto first = std::make_unique<ScopedPushLogDelegate>(delegate);
    auto second = std::make_unique<ScopedPushLogDelegate>(std::move(delegate));
    say("x");
    second.reset();
    say("y");
    first.reset();
    EXPECT_EQ(taken, QStringLiteral("xx"));
    EXPECT_TRUE(watched.expired());
}

TEST(LogManager, LetsDelegatesComeAndGoDuringARecord)
{
    std::optional<RecordedLog> added;
    std::optional<ScopedPushLogDelegate> ended;
    QString taken;
    const auto other = std::make_shared<Calling>([&](const QString &text) { taken += text; });
    const ScopedPushLogDelegate changer(std::make_shared<Calling>([&](const QString &) {
        if (!added) {
            added.emplace();
            ended.emplace(other); // ends the old registration first
        }
    }));
    ended.emplace(other);
    say("during");
    say("next");
    EXPECT_EQ(taken, QStringLiteral("next"));
    EXPECT_THAT(added->records(), ElementsAre(Record{0, "c", "next"}));
}

TEST(LogManager, ReleasesADelegateThatEndsItsOwnRegistrationWithoutTheLock)
{
    const RecordedLog log;
    std::optional<ScopedPushLogDelegate> registration;
    const auto flush = [](const LogDelegate *) {
        const auto flushed = std::make_shared<std::promise<void>>();
        std::thread([flushed] { (say("flushed"), flushed->set_value()); }).detach();
        EXPECT_EQ(
            flushed->get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);
    };
    Calling writer([&](const QString &) { registration.reset(); });
    registration.emplace(std::shared_ptr<LogDelegate>(&writer, flush));
    say("x");
    EXPECT_THAT(log.records(), ElementsAre(Record{0, "c", "x"}, Record{0, "c", "flushed"}));
}

TEST(LogManager, GetsThePrefixBeforeTheContextOfABoundLoggerAndALevelUpTo2)
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

void emitMessage(QtMsgType type, const char *file = "widget.cpp",
    const QString &message = QStringLiteral("hello"))
{
    // The installed handler itself: QMessageLogger would end the process on a fatal message.
    static const QtMessageHandler handler = qInstallMessageHandler(installQtMessageHandler());
    handler(type, QMessageLogContext(file, 42, "f", "category"), message);
}

TEST(LogManager, GetsTheMessagesOfQtWithTheirLevelsUnlessTheyAreMasked)
{
    RecordedLog log;
    const auto emitAll = [](const char *file) {
        for (const int type : {0, 1, 2, 3, 4}) {
            emitMessage(static_cast<QtMsgType>(type), file);
        }
    };
    emitAll(nullptr);
    const std::string text = "(42): hello";
    EXPECT_THAT(log.take(), ElementsAre(Record{1, "Default", text}, _, _, _)) << "not of debug";

    const auto restore = qScopeGuard([] { setQtMessageMask(0x1e); });
    for (const auto &[type, level] : {std::pair{QtDebugMsg, 0}, {QtWarningMsg, 1},
             {QtCriticalMsg, 2}, {QtFatalMsg, 2}, {QtInfoMsg, 0}}) {
        setQtMessageMask(1 << type);
        emitAll("widget.cpp");
        EXPECT_THAT(log.take(), ElementsAre(Record{level, "Default", "widget.cpp" + text})) << type;
    }
}

TEST(LogManager, DeliversEachRecordOnceAndInOrderWhileEightThreadsAndADelegateLog)
{
    constexpr int kMessages = 2000;
    int next[8] = {};
    int answers = 0;
    std::atomic<int> inside = 0;
    const ScopedPushLogDelegate collector(std::make_shared<Calling>([&](const QString &message) {
        EXPECT_EQ(++inside, 1) << "two records at once";
        if (message.startsWith(QStringLiteral("answer"))) {
            ++answers;
        } else {
            const QStringList parts = message.split(u' ');
            EXPECT_EQ(parts.at(2).toInt(), next[parts.at(1).toUInt()]++);
            emitMessage(QtInfoMsg, "answer"); // must not wait for a thread that comes from Qt
        }
        --inside;
    }));
    Logger logger;
    bindLogger(logger, QString());
    onThreads(8, [&logger](int thread) {
        for (int i = 0; i < kMessages; ++i) {
            if (thread % 2 == 0) {
                logger.info("c") << "thread " << thread << ' ' << i;
            } else {
                emitMessage(QtInfoMsg, "qt", QStringLiteral("%1 %2").arg(thread).arg(i));
            }
        }
    });
    EXPECT_THAT(next, Each(kMessages));
    EXPECT_EQ(answers, 8 * kMessages);
}

TEST(LogManager, DropsQtMessagesThatADelegateCausesForEachRecordAfterAHundredInARow)
{
    const RecordedLog log;
    const ScopedPushLogDelegate broken(std::make_shared<Calling>([&](const QString &message) {
        emitMessage(QtWarningMsg);
        emitMessage(QtWarningMsg);
        if (message.startsWith(QStringLiteral("widget"))) {
            say("plain");
        }
    }));
    say("x"); // each of its two messages begins a chain
    std::map<std::string, int> times;
    for (const Record &record : log.records()) {
        ++times[record.context + ' ' + record.message];
    }
    EXPECT_THAT(times,
        ElementsAre(Pair("Default widget.cpp(42): hello", 200),
            Pair(AllOf(StartsWith("LogManager.cpp:"), HasSubstr("<widget.cpp(42): hello>")), 2),
            Pair("c plain", 200), Pair("c x", 1)));
}

TEST(LogManager, WritesAFatalQtMessageOfADelegateToStandardError)
{
    const ScopedPushLogDelegate dying(std::make_shared<Calling>([](const QString &message) {
        emitMessage(message == QStringLiteral("x") ? QtFatalMsg : QtDebugMsg);
    }));
    testing::internal::CaptureStderr();
    say("x");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "widget.cpp(42): hello\n");
}

} // namespace
} // namespace Vyn::Core::Log
