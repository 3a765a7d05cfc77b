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
using Test::require;

int gDeaths = 0;
int gDeathsWithGui = 0;

struct Model : QObject {
    ~Model() override
    {
        ++gDeaths;
        gDeathsWithGui += QGuiApplication::primaryScreen() ? 1 : 0;
    }
    std::shared_ptr<QObject> part;
};

std::shared_ptr<QObject> makeModel()
{
    return {new Model, QObjectDeleteLater()};
}

// So many that the test reaches its time limit if deleting one takes time for each that waits.
constexpr int kMany = 200'000;
constexpr int kWaiting = 3 + kMany;
constexpr int kApplications = 2;
constexpr int kDeaths = 1 + kApplications * (kWaiting + 1) + 1;

struct LastOwner {
    ~LastOwner()
    {
        model.reset();
        require(gDeaths == kDeaths, "a static owner's object dies at once");
    }
    std::shared_ptr<QObject> model;
};
LastOwner gLastOwner;

} // namespace

int main(int argc, char **argv)
{
    Test::RecordedLog log;
    require(!ThreadUtils::isMainThread(), "no main thread without an application object");
    const Test::Record expected{2,
        "Debug: ThreadUtils.cpp:33 Vyn::OvraBase::ThreadUtils::isMainThread()",
        "No QCoreApplication instance."};
    require(log.take() == std::vector{expected}, "which is logged");
    makeModel().reset();
    require(gDeaths == 1, "without an application object an object dies at once");
    // A file of the current folder, which is not the application's.
    require(loadSharedLibrary(QStringLiteral("CTestTestfile.cmake")) == nullptr, "no library");
    require(log.take().size() == 1, "which is logged as a missing one");
    QDir().mkpath(QStringLiteral("Resources"));
    QFile resource(QStringLiteral("Resources/here.rcc"));
    require(resource.open(QFile::WriteOnly), "a file in the current folder");
    require(!registerExternalResource(resource.fileName().sliced(10)), "it is no resource");
    require(log.take().at(0).level == 1, "which is logged as found nowhere");

    for (int i = 1; i <= kApplications; ++i) {
        std::shared_ptr<QObject> closing;
        const int before = gDeaths;
        {
            const QGuiApplication application(argc, argv);
            auto *whole = new Model;
            whole->part = makeModel();
            QObjectDeleteLater()(whole);
            std::thread([] { makeModel().reset(); }).join();
            for (int j = 0; j < kMany; ++j) {
                makeModel().reset();
            }
            closing = makeModel();
            gLastOwner.model = i == kApplications ? makeModel() : nullptr;
            require(gDeaths == before, "objects wait for an event loop");
        }
        require(gDeaths == before + kWaiting, "what waits dies with the application object");
        require(gDeathsWithGui == i * kWaiting, "and before the GUI goes");
        closing.reset();
        require(gDeaths == before + kWaiting + 1, "after the application an object dies at once");
    }
    return 0;
}
