// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// A process from its first static to its last: logs before main(), stops, starts again, and ends
// without stopping. It ends with 0 only if the service that is destroyed last says so: to services,
// the library is whole until their end.

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
#include <utility>

namespace {

using namespace Vyn::OvraBase;
using Vyn::Test::require;

struct BeforeMain {
    BeforeMain()
    {
        ServiceLocator::stop();
        require(!ServiceLocator::started(), "no locator before start()");
        logger(Debug).error("early") << "dropped";
    }
};
const BeforeMain gBeforeMain;

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
    const QString file = QStringLiteral("/file");
    require(FileUtils::getAppDataAbsolutePath(file.sliced(1)).endsWith(file), "the data's folder");
    require(FileUtils::getDocumentsAbsolutePath(file.sliced(1)).endsWith(file), "the documents'");
    require(!FileUtils::safeApplicationDirPath().isEmpty(), "the application's folder");
    require(
        logStr(QVariant(1)) == QStringLiteral("QVariant(1 as int)"), "variants have their form");
}

/// Logs and looks services up at its end, and holds an operation that never ends.
struct Farewell : Service {
    OVRABASE_SERVICE_TYPE_ID(Vyn::Test::Farewell)

    explicit Farewell(Vyn::future<void> pending)
    {
        recovery.registerRecoverable(1, std::move(pending), QStringLiteral("endless"));
    }
    ~Farewell() override
    {
        require(!ServiceLocator::started(), "services see no locator at their end");
        require(ServiceLocator::instance() == nullptr, "looking a service up finds no locator");
        useWhatIsKept();
        logger(Debug).info("late") << "farewell";
    }

    struct Verdict {
        ~Verdict()
        {
            if (isSuccess) {
                std::_Exit(0);
            }
        }
        bool isSuccess = false;
    } verdict;
    DefaultAsyncRecovery recovery; // ends before the verdict
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

    ServiceLocator::start();
    require(ServiceLocator::instance()->registerService(std::make_unique<Farewell>(endless.future)),
        "the first service is registered");
    require(ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>()),
        "the second service is registered");
    ServiceLocator::start();
    require(ServiceLocator::instance()->service<Farewell>() != nullptr, "a second start is none");
    ServiceLocator::stop();
    require(log.records().size() == 1, "early records are dropped, those of the end are not");
    ServiceLocator::stop();

    ServiceLocator::start();
    auto &second = *ServiceLocator::instance();
    require(second.service<Farewell>() == nullptr, "a new locator is empty");
    auto farewell = std::make_unique<Farewell>(endless.future);
    farewell->verdict.isSuccess = true;
    require(second.registerService(std::move(farewell)) &&
                second.registerService(std::make_unique<DefaultAsyncRecovery>()),
        "services are registered again");
    return 1; // unless the end of the process stops the locator
}
