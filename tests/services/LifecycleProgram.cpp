// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Logs before main(), stops and starts the locator, and exits without stopping it. A process of its
// own, because it tests the order of statics. It exits with 0 if the last service finds all that it
// uses at its end.

#include "services/Operation.h"
#include "support/RecordedLog.h"
#include "support/Require.h"

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/logStr.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/platform/memory.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>
#include <ovrabase/text/LengthUnits.h>

#include <QCoreApplication>
#include <QString>
#include <QVariant>

#include <cstdlib>
#include <memory>

namespace {

using namespace Vyn::OvraBase;
using Vyn::Test::require;

const bool gStartedBeforeMain = [] {
    ServiceLocator::stop();
    logger(Debug).error("early") << "dropped";
    return ServiceLocator::started();
}();

QObject *gGuarded = nullptr;

} // namespace

namespace Vyn::Test {

using namespace OvraBase;

/// Calls the functions that keep something from their first call on.
void useWhatIsKept()
{
    QObject object;
    forbidStealingOwnership(&object);
    require(gGuarded == &object, "the ownership hook is called");
    require(stringToMeter(QStringLiteral("2 km"), {}) == 2000, "length units are known");
    require(getSharedLibraryExtension() == QStringLiteral(".dll"), "the extension is there");
    require(FileUtils::isImageExt(QStringLiteral("png")), "image extensions are known");
    const QString file = QStringLiteral("file");
    require(FileUtils::getAppDataAbsolutePath(file).endsWith(u"/file"), "the data's folder");
    require(FileUtils::getDocumentsAbsolutePath(file).endsWith(u"/file"), "the documents'");
    require(!FileUtils::safeApplicationDirPath().isEmpty(), "the application's folder");
    require(logStr(QVariant(1)).contains(u"1 as int"), "variants have their form");
}

/// Logs and looks services up at its end, and holds an operation that never ends.
struct Farewell : Service {
    OVRABASE_SERVICE_TYPE_ID(Vyn::Test::Farewell)

    Farewell(const Vyn::future<void> &endless, bool last)
        : isLast(last)
    {
        recovery->registerRecoverable(1, endless, QStringLiteral("endless"));
    }
    ~Farewell() override
    {
        require(!ServiceLocator::started(), "services see no locator at their end");
        useWhatIsKept();
        logger(Debug).info("late") << "farewell";
        recovery.reset();
        if (isLast) {
            std::_Exit(0);
        }
    }

    bool isLast;
    std::unique_ptr<DefaultAsyncRecovery> recovery = std::make_unique<DefaultAsyncRecovery>();
};

} // namespace Vyn::Test

using Vyn::Test::Farewell;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const Vyn::Test::RecordedLog log;
    static Vyn::Test::Operation endless;
    // Too large for std::function to keep in itself.
    setForbidStealingOwnershipFuction(
        [target = std::make_shared<QObject **>(&gGuarded)](QObject *object) { **target = object; });

    require(!gStartedBeforeMain, "no locator before start()");
    for (const bool isLast : {false, true}) {
        ServiceLocator::start();
        const auto &locator = ServiceLocator::instance();
        require(!locator->service<Farewell>(), "a new locator is empty");
        require(locator->registerService(std::make_unique<Farewell>(endless.future, isLast)) &&
                    locator->registerService(std::make_unique<DefaultAsyncRecovery>()),
            "both services are registered");
        ServiceLocator::start();
        require(locator->service<Farewell>(), "a second start does nothing");
        if (!isLast) {
            ServiceLocator::stop();
            require(log.records().size() == 1, "early records are dropped, late ones are not");
            ServiceLocator::stop();
        }
    }
    return 1; // unless the end of the process stops the locator
}
