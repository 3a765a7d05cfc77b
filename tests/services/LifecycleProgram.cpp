// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Logs before main(), stops and starts the locator, and exits without stopping it. A process of its
// own, because it tests the order of statics. It exits with 0 if the last service finds all that it
// uses at its end.

#include "support/RecordedLog.h"
#include "support/Require.h"

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/logStr.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/platform/memory.h>
#include <ovrabase/services/ServiceLocator.h>
#include <ovrabase/text/LengthUnits.h>

#include <QCoreApplication>
#include <QVariant>

namespace Vyn::Test {
namespace {

using namespace OvraBase;

const bool gStartedBeforeMain = [] {
    ServiceLocator::stop();
    logger(Debug).error("early") << "dropped";
    return ServiceLocator::started();
}();

QObject *gGuarded = nullptr;
int gEnds = 0;

/// Logs and calls the functions that keep a static object from their first call on.
struct Farewell : Service {
    OVRABASE_SERVICE_TYPE_ID(Vyn::Test::Farewell)
    ~Farewell() override
    {
        require(!ServiceLocator::started(), "services see no locator at their end");
        logger(Debug).info("late") << "farewell";
        QObject object;
        forbidStealingOwnership(&object);
        require(gGuarded == &object, "the ownership hook is called");
        require(stringToMeter(u"2 km"_s, {}) == 2000, "length units are known");
        require(getSharedLibraryExtension() == u".dll"_s, "the extension is there");
        require(FileUtils::isImageExt(u"png"_s), "image extensions are known");
        require(FileUtils::getAppDataAbsolutePath(u"a"_s).endsWith(u"/a") &&
                    FileUtils::getDocumentsAbsolutePath(u"a"_s).endsWith(u"/a") &&
                    !FileUtils::safeApplicationDirPath().isEmpty(),
            "folders are known");
        require(logStr(QVariant(1)).contains(u"1 as int"), "logStr() shows a variant");
        if (++gEnds == 2) {
            std::_Exit(0);
        }
    }
};

} // namespace
} // namespace Vyn::Test

int main(int argc, char **argv)
{
    using namespace Vyn::Test;
    const QCoreApplication application(argc, argv);
    const RecordedLog log;
    // std::function keeps this target on the heap. A call of the hook after its destruction would
    // then use freed memory, which MALLOC_PERTURB_ makes noticeable.
    setForbidStealingOwnershipFuction(
        [target = std::make_shared<QObject **>(&gGuarded)](QObject *object) { **target = object; });

    require(!gStartedBeforeMain && !ServiceLocator::instance(), "no locator before start()");
    for (const std::size_t ends : {0U, 1U}) {
        ServiceLocator::stop();
        require(log.records().size() == ends, "early records are dropped, late ones are not");
        ServiceLocator::start();
        const auto &locator = ServiceLocator::instance();
        require(!locator->service<Farewell>(), "a new locator is empty");
        require(locator->registerService(std::make_unique<Farewell>()), "a service is registered");
        ServiceLocator::start();
        require(locator->service<Farewell>(), "a second start does nothing");
    }
    return 1; // not the status if the end of the process stops the locator: see ~Farewell()
}
