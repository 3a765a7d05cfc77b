// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Objects that lose their last owner before, at and after the end of the application object: each
// dies once. The process ends with 0 when all is as it should be.

#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/platform/memory.h>

#include <QCoreApplication>
#include <QObject>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

namespace {

using namespace Vyn;
using namespace Vyn::OvraBase;

int gDeaths = 0;

void require(bool condition, const char *what)
{
    if (!condition) {
        std::fprintf(stderr, "failed: %s (%d deaths)\n", what, gDeaths);
        std::_Exit(1);
    }
}

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

struct Recorder : Core::Log::LogDelegate {
    void log(int level, const QString &context, const QString &message) override
    {
        last = QString::number(level) + QLatin1Char('|') + context + QLatin1Char('|') + message;
    }
    QString last;
};

} // namespace

int main(int argc, char **argv)
{
    bindLoggers();
    const auto recorder = std::make_shared<Recorder>();
    const Core::Log::ScopedPushLogDelegate registration(recorder);

    require(!ThreadUtils::isMainThread(), "no main thread without an application object");
    require(recorder->last == QStringLiteral("2|Debug: ThreadUtils.cpp:33 "
                                             "Vyn::OvraBase::ThreadUtils::isMainThread()|"
                                             "No QCoreApplication instance."),
        "which is logged");
    makeModel().reset();
    require(gDeaths == 1, "without an application object an object dies at once");
    require(loadSharedLibrary(QStringLiteral("CMakeCache.txt")) == nullptr,
        "the current folder is not the application's");

    std::shared_ptr<QObject> closing;
    {
        const QCoreApplication application(argc, argv);
        require(ThreadUtils::isMainThread(), "the application object's thread is the main thread");
        makeModel().reset();
        std::thread([] { makeModel().reset(); }).join();
        gLastOwner.model = makeModel();
        closing = makeModel();
        require(gDeaths == 1, "objects wait for an event loop");
    }
    require(gDeaths == 3, "what waits dies with the application object");
    require(QCoreApplication::closingDown(), "the application is closed");
    closing.reset();
    require(gDeaths == 4, "after the application an object dies at once");
    return 0;
}
