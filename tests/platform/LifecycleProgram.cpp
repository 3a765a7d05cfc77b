// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Functions that need an application object must fail and log before there is one. Objects lose
// their last owner before, during and after the lifetime of an application object, and in its
// destructor. Each must be deleted once. An object that waits for an event loop must be deleted
// before the GUI ends. The process ends with 0 if all this holds.

#include "support/RecordedLog.h"
#include "support/Require.h"

#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/platform/memory.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>

#include <thread>

namespace {

using namespace Vyn;
using namespace Vyn::OvraBase;
using namespace Vyn::Test;

int gDeathsWithGui = 0;
int gOtherDeaths = 0;

struct Model : QObject {
    ~Model() override { ++(QGuiApplication::primaryScreen() ? gDeathsWithGui : gOtherDeaths); }
    std::shared_ptr<QObject> part;
};

std::shared_ptr<QObject> makeModel()
{
    return {new Model, QObjectDeleteLater()};
}

/// Each instance is destroyed while there is no application object.
struct Owner {
    ~Owner()
    {
        const int before = gOtherDeaths;
        model.reset();
        require(gOtherDeaths == before + 1, "without an application, objects do not wait");
    }
    std::shared_ptr<QObject> model = makeModel();
};
const Owner gOwner;

} // namespace

int main(int argc, char **argv)
{
    RecordedLog log;
    require(!ThreadUtils::isMainThread(), "no main thread without an application object");
    // Both files exist in the current folder, but not in the folders of the application.
    require(!loadSharedLibrary(u"CTestTestfile.cmake"_s), "no library is found");
    QFile resource(u"Resources/here.rcc"_s);
    require(QDir().mkpath(u"Resources"_s) && resource.open(QFile::WriteOnly), "writes a resource");
    require(!registerExternalResource(u"here.rcc"_s), "no resource is found");
    const Record noMainThread{2,
        "Debug: ThreadUtils.cpp:33 Vyn::OvraBase::ThreadUtils::isMainThread()",
        "No QCoreApplication instance."};
    const std::vector<Record> records = log.take();
    require(records.size() == 3 && records[0] == noMainThread && records[2].level == 1,
        "all three failures are logged, that of the resource as a warning");

    // So many that the test exceeds its time limit if the time to delete one object grows with the
    // number of objects that wait.
    constexpr int kMany = 200'000;
    constexpr int kWaiting = 3 + kMany;
    delete new Owner; // before the first application
    for (int applications = 0; applications < 2; ++applications) {
        const Owner closing;
        {
            const QGuiApplication application(argc, argv);
            auto *whole = new Model;
            whole->part = makeModel();
            QObjectDeleteLater()(whole);
            std::thread([] { makeModel().reset(); }).join();
            for (int i = 0; i < kMany; ++i) {
                makeModel().reset();
            }
            require(gDeathsWithGui == applications * kWaiting, "objects wait for an event loop");
        }
        require(gDeathsWithGui == (applications + 1) * kWaiting, "deleted before the GUI ends");
    }
    return 0;
}
