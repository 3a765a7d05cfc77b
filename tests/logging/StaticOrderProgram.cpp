// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Logs before main(), after it and after everything is gone. The process ends with 0 when each
// record went where it should; its own process, because the order of statics is what it tests.

#include "support/Require.h"

#include <ovrabase/logging/LogManager.h>

#include <QString>

#include <memory>

namespace {

int gDelivered = 0;

// On Windows the statics of a DLL end after those of the program: there the manager is still open
// for the late speaker, with the delegate left registered and one more.
#ifdef _WIN32
constexpr int kExpected = 2 + 3 + 2;
#else
constexpr int kExpected = 2;
#endif

/// Checked first of all statics made, so destroyed last.
struct Verdict {
    ~Verdict() { Vyn::Test::require(gDelivered == kExpected, "every record goes where it should"); }
};
const Verdict gVerdict;

} // namespace

#include <ovrabase/logging/GlobalLoggers.h>

namespace {

using namespace Vyn;
using namespace Vyn::OvraBase;

struct Counting : Core::Log::LogDelegate {
    void log(int, const QString &, const QString &) override { ++gDelivered; }
};

Logger gBound;
Core::Log::ScopedPushLogDelegate *volatile gLeftRegistered = nullptr;

/// Speaks at the very end: made before the manager, destroyed after it is closed.
struct LateSpeaker {
    ~LateSpeaker()
    {
        gBound.error("late") << "dropped, the manager is closed";
        logger(Debug).error("late") << "dropped";
        logManagerInstance()->log(2, QString(), QStringLiteral("dropped"));
        const Core::Log::ScopedPushLogDelegate tooLate(std::make_shared<Counting>());
        logger(Debug).error("late") << "dropped";

        {
            const GlobalLoggersInstanciator last;
            GlobalLoggersInstanciator::counter() = 1;
        }
        Test::require(GlobalLoggersInstanciator::loggers == nullptr, "the last owner frees them");
        logger(Debug).error("last") << "dropped, the loggers are gone";
    }
};
const LateSpeaker gLateSpeaker;

struct EarlySpeaker {
    EarlySpeaker() { logger(UI).info("early") << "dropped, not bound yet"; }
};
const EarlySpeaker gEarlySpeaker;

/// Destroyed before the manager is closed: its record still arrives.
struct TimelySpeaker {
    ~TimelySpeaker() { logger(Debug).info("timely") << "delivered"; }
};

} // namespace

int main()
{
    // Left registered on purpose: the manager must let go of it at its own end.
    gLeftRegistered = new Core::Log::ScopedPushLogDelegate(std::make_shared<Counting>());
    logger(UI).info("main") << "dropped, not bound yet";
    bindLoggers();
    Core::Log::bindLogger(gBound, QStringLiteral("Bound: "));
    static const TimelySpeaker timely;
    logger(UI).info("main") << "delivered";
    return 0;
}
