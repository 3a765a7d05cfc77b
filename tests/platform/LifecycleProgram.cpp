// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Objects that lose their last owner before, at and after the end of the application object: each
// dies once. The process ends with 0 when all is as it should be.

#include "support/RecordedLog.h"
#include "support/Require.h"

#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/platform/memory.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QObject>

#include <memory>
#include <thread>

namespace {

using namespace Vyn;
using namespace Vyn::OvraBase;
using Test::require;

int gDeaths = 0;

struct Model : QObject {
    ~Model() override { ++gDeaths; }
};

std::shared_ptr<QObject> makeModel()
{
    return {new Model, QObjectDeleteLater()};
}

struct LastOwner {
    ~LastOwner()
    {
        model.reset();
        require(gDeaths == 5, "a static owner's object dies at once");
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

    std::shared_ptr<QObject> closing;
    {
        const QCoreApplication application(argc, argv);
        makeModel().reset();
        std::thread([] { makeModel().reset(); }).join();
        gLastOwner.model = makeModel();
        closing = makeModel();
        require(gDeaths == 1, "objects wait for an event loop");
    }
    require(gDeaths == 3, "what waits dies with the application object");
    closing.reset();
    require(gDeaths == 4, "after the application an object dies at once");
    return 0;
}
