// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Logs before main(), after it, and after the manager is closed and the loggers are destroyed. A
// process of its own, because it tests the order of statics. It exits with 0 if the right
// number of records is delivered and the last instance destroys the loggers.

#include "support/Require.h"

#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>

namespace {

using namespace Vyn;
using namespace Vyn::OvraBase;

int gDelivered = 0;

struct Counting : Core::Log::LogDelegate {
    void log(int, const QString &, const QString &) override { ++gDelivered; }
};

Logger gBound;
Core::Log::ScopedPushLogDelegate *volatile gLeftRegistered = nullptr;

/// Logs last of all: constructed before the manager, and destroyed after the manager is closed,
/// except on Windows.
const struct LateSpeaker {
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
        Test::require(!GlobalLoggersInstanciator::loggers, "the last instance destroys them");
        logger(Debug).error("last") << "dropped, the loggers are gone";

        // On Windows the statics of a DLL end after those of the program, so that the manager is
        // still open here. The delegate that main() left registered gets the first three records
        // of this destructor, and both delegates get the fourth.
#ifdef _WIN32
        constexpr int kExpected = 2 + 3 + 2;
#else
        constexpr int kExpected = 2;
#endif
        Test::require(gDelivered == kExpected, "the expected number of records is delivered");
    }
} gLateSpeaker;

const bool gEarly = (logger(UI).info("early") << "dropped, not bound yet", true);

/// Destroyed before the manager is closed: its record is delivered.
struct TimelySpeaker {
    ~TimelySpeaker() { logger(Debug).info("timely") << "delivered"; }
};

} // namespace

int main()
{
    // Left registered on purpose, so that the manager is closed with a registration.
    gLeftRegistered = new Core::Log::ScopedPushLogDelegate(std::make_shared<Counting>());
    logger(UI).info("main") << "dropped, not bound yet";
    bindLoggers();
    Core::Log::bindLogger(gBound, QStringLiteral("Bound: "));
    static const TimelySpeaker timely;
    logger(UI).info("main") << "delivered";
    return 0;
}
