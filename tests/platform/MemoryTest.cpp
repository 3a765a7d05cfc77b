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
#include <vector>

namespace Vyn {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down on which thread it dies.
class Model : public QObject {
public:
    explicit Model(std::vector<QThread *> &deaths, QObject *parent = nullptr)
        : QObject(parent)
        , mDeaths(deaths)
    {
    }
    ~Model() override { mDeaths.push_back(QThread::currentThread()); }

private:
    std::vector<QThread *> &mDeaths;
};

void turnEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void run(bool onWorker, const std::function<void()> &work)
{
    onWorker ? std::thread(work).join() : work();
}

TEST(QObjectDeleteLater, IgnoresNull)
{
    const RecordedLog log;
    QObjectDeleteLater()(nullptr);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(QObjectDeleteLater, LetsEachObjectDieOnceOnTheMainThread)
{
    QThread *main = QThread::currentThread();
    for (const bool madeByWorker : {false, true}) {
        for (const bool droppedByWorker : {false, true}) {
            std::vector<QThread *> deaths;
            std::shared_ptr<QObject> shared;
            run(madeByWorker, [&] { shared.reset(new Model(deaths), QObjectDeleteLater()); });
            run(droppedByWorker, [&] { shared.reset(); });
            EXPECT_THAT(deaths, IsEmpty()) << "not before the event loop turns";
            turnEvents();
            EXPECT_THAT(deaths, ElementsAre(main));
        }
    }
}

TEST(QObjectDeleteLater, DeletesAParentedObjectAllTheSameAndSaysSo)
{
    const RecordedLog log;
    QObject parent;
    std::vector<QThread *> deaths;
    QObjectDeleteLater()(new Model(deaths, &parent));
    turnEvents();
    EXPECT_EQ(deaths.size(), 1U);
    EXPECT_THAT(log.records(),
        ElementsAre(Record{2, "Debug: memory.cpp:30 Vyn::QObjectDeleteLater::operator ()()",
            std::string("Risk of double delete on a shared QObject of type ") +
                typeid(Model).name() + " that has a parent of type " + typeid(QObject).name()}));
}

TEST(OwnershipHook, ReceivesTheObjectWhileItIsSet)
{
    QObject object;
    OvraBase::forbidStealingOwnership(&object);
    std::vector<QObject *> received;
    OvraBase::setForbidStealingOwnershipFuction(
        [&](QObject *stolen) { received.push_back(stolen); });
    OvraBase::forbidStealingOwnership(&object);
    OvraBase::setForbidStealingOwnershipFuction({});
    OvraBase::forbidStealingOwnership(&object);
    EXPECT_THAT(received, ElementsAre(&object));
}

TEST(MainThread, IsTheOneOfTheApplication)
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
