// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/platform/ThreadUtils.h>
#include <ovrabase/platform/memory.h>

#include <QCoreApplication>
#include <QEvent>

#include <gmock/gmock.h>

#include <future>
#include <typeinfo>

namespace {

using namespace Vyn;
using namespace Vyn::Test;
using namespace testing;

/// For each model that died since deathsInEventLoop() returned: whether on the main thread.
std::vector<bool> gDeaths;

struct Model : QObject {
    using QObject::QObject;
    ~Model() override { gDeaths.push_back(OvraBase::ThreadUtils::isMainThread()); }
};

/// Runs the event loop. Returns gDeaths, also the deaths before the loop ran, and clears it.
std::vector<bool> deathsInEventLoop()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return std::exchange(gDeaths, {});
}

TEST(Memory, DeletesASharedObjectOnceOnTheMainThread)
{
    // A deferred call runs on this thread, the main thread.
    constexpr std::launch kThreads[] = {std::launch::deferred, std::launch::async};
    for (const auto maker : kThreads) {
        EXPECT_EQ(std::async(maker, OvraBase::ThreadUtils::isMainThread).get(),
            maker == std::launch::deferred);
        for (const auto lastOwner : kThreads) {
            std::shared_ptr<QObject> shared;
            std::async(maker, [&] { shared.reset(new Model, QObjectDeleteLater()); }).get();
            std::async(lastOwner, [&] { shared.reset(); }).get();
            EXPECT_THAT(gDeaths, IsEmpty()) << "before events are processed";
            EXPECT_THAT(deathsInEventLoop(), ElementsAre(true));
        }
    }
}

TEST(Memory, DeletesAnObjectWithAParentAndLogsIt)
{
    RecordedLog log;
    QObject parent;
    QObjectDeleteLater()(nullptr);
    QObjectDeleteLater()(new Model(&parent));
    EXPECT_THAT(deathsInEventLoop(), SizeIs(1));
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

struct Owner : SharedObjectBase, noncopyable_::noncopyable {};
static_assert(std::has_virtual_destructor_v<Owner> && !std::is_copy_constructible_v<Owner>);

} // namespace
