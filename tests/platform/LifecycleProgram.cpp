// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Objects lose their last owner before, at and after the end of the application object. Each must
// be deleted once, and one that had to wait before the GUI ends. The process ends with 0 if they
// are.

#include "support/RecordedLog.h"
#include "support/Require.h"

#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/platform/memory.h>

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QObject>

#include <memory>
#include <thread>

namespace {

using namespace Vyn;
using namespace Vyn::OvraBase;
using namespace Qt::StringLiterals;
using Test::require;

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

/// Ends while there is no application object.
struct Owner {
    ~Owner()
    {
        const int before = gOtherDeaths;
        model.reset();
        require(gOtherDeaths == before + 1, "without an application object an object dies at once");
    }
    std::shared_ptr<QObject> model = makeModel();
};
const Owner gOwner;

} // namespace

int main(int argc, char **argv)
{
    Test::RecordedLog log;
    require(!ThreadUtils::isMainThread(), "no main thread without an application object");
    // Both files are in the current folder, which is not the application's.
    require(!loadSharedLibrary(u"CTestTestfile.cmake"_s), "no library");
    QFile resource(u"Resources/here.rcc"_s);
    require(QDir().mkpath(u"Resources"_s) && resource.open(QFile::WriteOnly), "a written file");
    require(!registerExternalResource(u"here.rcc"_s), "no resource");
    const Test::Record noMainThread{2,
        "Debug: ThreadUtils.cpp:33 Vyn::OvraBase::ThreadUtils::isMainThread()",
        "No QCoreApplication instance."};
    const std::vector<Test::Record> records = log.take();
    require(records.size() == 3 && records[0] == noMainThread && records[2].level == 1,
        "all three are logged, the resource as found nowhere");

    // So many that the test reaches its time limit if deleting one takes time for each that waits.
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
        require(gDeathsWithGui == (applications + 1) * kWaiting, "and die before the GUI goes");
    }
    return 0;
}
