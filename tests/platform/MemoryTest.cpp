// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/platform/memory.h>

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <thread>
#include <typeinfo>
#include <utility>
#include <vector>

namespace Vyn {
namespace {

using namespace Test;
using testing::ElementsAre;
using testing::IsEmpty;

/// The threads on which models died since events were processed last.
std::vector<QThread *> gDeaths;

struct Model : QObject {
    using QObject::QObject;
    ~Model() override { gDeaths.push_back(QThread::currentThread()); }
};

std::vector<QThread *> deathsInEventLoop()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return std::exchange(gDeaths, {});
}

void run(bool onWorker, const std::function<void()> &work)
{
    onWorker ? std::thread(work).join() : work();
}

TEST(Memory, DeletesASharedObjectOnceOnTheMainThread)
{
    for (const bool madeByWorker : {false, true}) {
        for (const bool droppedByWorker : {false, true}) {
            std::shared_ptr<QObject> shared;
            run(madeByWorker, [&] { shared.reset(new Model, QObjectDeleteLater()); });
            run(droppedByWorker, [&] { shared.reset(); });
            EXPECT_THAT(gDeaths, IsEmpty()) << "before events are processed";
            EXPECT_THAT(deathsInEventLoop(), ElementsAre(QThread::currentThread()));
        }
    }
}

TEST(Memory, DeletesAnObjectWithAParentAndLogsIt)
{
    RecordedLog log;
    QObject parent;
    QObjectDeleteLater()(nullptr);
    QObjectDeleteLater()(new Model(&parent));
    EXPECT_THAT(deathsInEventLoop(), testing::SizeIs(1));
    EXPECT_THAT(log.take(),
        ElementsAre(Record{2, "Debug: memory.cpp:30 Vyn::QObjectDeleteLater::operator ()()",
            std::string("Risk of double delete on a shared QObject of type ") +
                typeid(Model).name() + " that has a parent of type " + typeid(QObject).name()}));
}

TEST(Memory, CallsTheOwnershipHookWhileItIsSet)
{
    QObject object;
    OvraBase::forbidStealingOwnership(&object); // no hook
    std::vector<QObject *> received;
    OvraBase::setForbidStealingOwnershipFuction([&](QObject *stolen) {
        OvraBase::setForbidStealingOwnershipFuction({}); // while it runs
        received.push_back(stolen);
    });
    OvraBase::forbidStealingOwnership(&object);
    OvraBase::forbidStealingOwnership(&object);
    EXPECT_THAT(received, ElementsAre(&object));
}

TEST(Memory, MainThreadIsTheOneOfTheApplication)
{
    EXPECT_TRUE(OvraBase::ThreadUtils::isMainThread());
    run(true, [] { EXPECT_FALSE(OvraBase::ThreadUtils::isMainThread()); });
}

struct Owner : noncopyable_::noncopyable {};
static_assert(!std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner>);
static_assert(
    std::has_virtual_destructor_v<SharedObjectBase> && std::is_copy_assignable_v<SharedObjectBase>);

} // namespace
} // namespace Vyn
