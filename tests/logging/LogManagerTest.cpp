// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"
#include "support/Threads.h"

#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/Logger.h>

#include <gmock/gmock.h>

namespace {

using namespace Vyn::Core::Log;
using namespace Vyn::Test;
using namespace testing;

void say(const QString &message)
{
    LogManager::instance()->log(0, u"c"_s, message);
}

TEST(LogManager, QueuesWhatADelegateLogsAndSurvivesWhatItThrows)
{
    QString text = u"a"_s;
    const ScopedPushLogDelegate null(nullptr);
    const ScopedPushLogDelegate broken(std::make_shared<Calling>([&](const QString &message) {
        if (message == u'a') {
            say(u"b"_s);
            say(u"c"_s);
        }
        const_cast<QString &>(message).append(u'!');
        text.append(u'?');
        throw std::exception();
    }));
    const RecordedLog later;
    say(text);
    EXPECT_THAT(later.records(),
        ElementsAre(Record{0, "c", "a"}, Record{0, "c", "b"}, Record{0, "c", "c"}));
    EXPECT_EQ(text, u"a???"_s);
}

TEST(LogManager, EndsAllRegistrationsOfADelegateWhenOneEndsAndReleasesIt)
{
    QString taken;
    const auto delegate = std::make_shared<Calling>([&](const QString &text) { taken += text; });
    std::optional<ScopedPushLogDelegate> first(delegate);
    std::optional<ScopedPushLogDelegate> second(delegate);
    say(u"x"_s);
    second.reset();
    say(u"y"_s);
    first.reset();
    EXPECT_EQ(taken, u"xx"_s);
    EXPECT_EQ(delegate.use_count(), 1);
}

TEST(LogManager, EndsARegistrationAtOnceAndBeginsOneWithTheNextRecord)
{
    std::optional<RecordedLog> added;
    std::optional<ScopedPushLogDelegate> ended;
    QString taken;
    const auto other = std::make_shared<Calling>([&](const QString &text) { taken += text; });
    const ScopedPushLogDelegate changer(std::make_shared<Calling>([&](const QString &) {
        if (!added) {
            added.emplace();
            ended.emplace(other); // first ends the registration made below
        }
    }));
    ended.emplace(other);
    say(u"during"_s);
    say(u"next"_s);
    EXPECT_EQ(taken, u"next"_s);
    EXPECT_THAT(added->records(), ElementsAre(Record{0, "c", "next"}));
}

TEST(LogManager, HoldsNoLockWhileItReleasesADelegateThatEndsItself)
{
    const RecordedLog log;
    std::optional<ScopedPushLogDelegate> registration;
    Calling writer([&](const QString &) { registration.reset(); });
    registration.emplace(std::shared_ptr<LogDelegate>(&writer, [](const LogDelegate *) {
        // ~jthread() waits for the thread, for ever if this thread holds the manager's lock.
        std::jthread([] { say(u"flushed"_s); });
    }));
    say(u"x"_s);
    EXPECT_THAT(log.records(), ElementsAre(Record{0, "c", "x"}, Record{0, "c", "flushed"}));
}

TEST(LogManager, GetsThePrefixBeforeTheContextOfABoundLoggerAndALevelUpTo2)
{
    const RecordedLog log;
    Vyn::Logger logger;
    bindLogger(logger, u"Größe %1: "_s);
    logger.info("main.cpp:12 f()") << "i";
    logger.warning("") << "%1";
    logger.error("尺") << "尺";
    logger.log(static_cast<Vyn::Logger::LogSeverity>(3), "c") << "three";
    bindLogger(logger, QString());
    logger.info("\xff\xfe") << "broken \xc3" << '\0' << "end"; // not UTF-8
    EXPECT_THAT(log.records(),
        ElementsAre(Record{0, "Größe %1: main.cpp:12 f()", "i"}, Record{1, "Größe %1: ", "%1"},
            Record{2, "Größe %1: 尺", "尺"}, Record{2, "Größe %1: c", "three"},
            Record{0, "\uFFFD\uFFFD", std::string("broken \uFFFD\0end", 14)}));
}

void emitMessage(QtMsgType type, const char *file = "widget.cpp", const QString &text = u"hello"_s)
{
    // Calls the handler directly: QMessageLogger would end the process after a fatal message.
    static const QtMessageHandler handler = qInstallMessageHandler(installQtMessageHandler());
    handler(type, QMessageLogContext(file, 42, "f", "category"), text);
}

TEST(LogManager, GetsQtMessagesWithLevelFileAndLineUnlessMasked)
{
    const RecordedLog log;
    for (const int nextMask : {1, 2, 4, 16, 8, 0x1e}) {
        for (const int type : {0, 1, 2, 3, 4}) {
            emitMessage(static_cast<QtMsgType>(type));
        }
        setQtMessageMask(nextMask);
    }
    emitMessage(QtInfoMsg, nullptr);
    std::vector<Record> expected;
    // The default mask leaves out debug messages. Each of the next five selects one type.
    for (const int level : {1, 2, 2, 0, 0, 1, 2, 0, 2}) {
        expected.push_back({level, "Default", "widget.cpp(42): hello"});
    }
    expected.push_back({0, "Default", "(42): hello"});
    EXPECT_EQ(log.records(), expected);
}

TEST(LogManager, DeliversEachRecordOnceAndInOrderWhileEightThreadsAndADelegateLog)
{
    constexpr int kMessages = 2000;
    int next[8] = {};
    int answers = 0;
    std::atomic<int> inside = 0;
    const ScopedPushLogDelegate collector(std::make_shared<Calling>([&](const QString &message) {
        EXPECT_EQ(++inside, 1) << "two records at once";
        if (message.startsWith(u"answer")) {
            ++answers;
        } else {
            const QStringList parts = message.split(u' ');
            EXPECT_EQ(parts.at(2).toInt(), next[parts.at(1).toUInt()]++);
            emitMessage(QtInfoMsg, "answer"); // no deadlock with a thread that logs through Qt
        }
        --inside;
    }));
    Vyn::Logger logger;
    bindLogger(logger, QString());
    onThreads(8, [&logger](int thread) {
        for (int i = 0; i < kMessages; i += 2) {
            logger.info("c") << "logged " << thread << ' ' << i;
            emitMessage(QtInfoMsg, "qt", u"%1 %2"_s.arg(thread).arg(i + 1));
        }
    });
    EXPECT_THAT(next, Each(kMessages));
    EXPECT_EQ(answers, 8 * kMessages);
}

TEST(LogManager, CutsAChainOfQtMessagesCausedByADelegateAfterAHundred)
{
    const RecordedLog log;
    const ScopedPushLogDelegate broken(std::make_shared<Calling>([&](const QString &message) {
        emitMessage(QtWarningMsg);
        emitMessage(QtWarningMsg);
        if (message.startsWith(u"widget")) {
            say(u"plain"_s);
        }
    }));
    say(u"x"_s); // causes two Qt messages, each the start of a chain
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
    const ScopedPushLogDelegate dying(std::make_shared<Calling>(
        [](const QString &message) { emitMessage(message == u'x' ? QtFatalMsg : QtDebugMsg); }));
    internal::CaptureStderr();
    say(u"x"_s);
    EXPECT_EQ(internal::GetCapturedStderr(), "widget.cpp(42): hello\n");
}

} // namespace
