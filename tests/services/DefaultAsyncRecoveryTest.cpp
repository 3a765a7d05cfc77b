// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "services/Operation.h"
#include "support/RecordedLog.h"
#include "support/Threads.h"

#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>

#include <QCoreApplication>
#include <QString>
#include <QTimer>

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <string>

namespace Vyn::OvraBase {
namespace {

using Test::onThreads;
using Test::Operation;
using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;

TEST(Future, KnowsItsOperationAndWhenItHasEnded)
{
    const Vyn::future<void> none{Vyn::future<void>::backend_type()};
    EXPECT_FALSE(none.valid());
    EXPECT_FALSE(none.isReady());
    none.await();
    EXPECT_FALSE(none == Vyn::future<void>(none));

    Operation good;
    Operation bad;
    const auto copy = good.future;
    EXPECT_TRUE(copy == good.future);
    EXPECT_FALSE(bad.future == good.future);
    EXPECT_FALSE(none == good.future);
    EXPECT_TRUE(copy.valid());
    EXPECT_FALSE(copy.isReady());
    good.finish();
    bad.fail();
    for (const auto &ended : {copy, bad.future}) {
        EXPECT_TRUE(ended.isReady());
        EXPECT_NO_THROW(ended.await());
    }
}

TEST(DefaultAsyncRecovery, RegistersAnOperationOnceAndAnIdOnce)
{
    const RecordedLog log;
    Operation load;
    Operation save;
    DefaultAsyncRecovery registry;
    EXPECT_EQ(registry.dumpRegistry(), "");

    registry.registerRecoverable(7, load.future, QStringLiteral("lädt %2"));
    registry.registerRecoverable(7, save.future, QStringLiteral("dropped"));
    EXPECT_EQ(registry.dumpRegistry(), "7: lädt %2\n");
    EXPECT_THAT(log.records(), ElementsAre());

    registry.registerRecoverable(8, load.future, QStringLiteral("again %3"));
    EXPECT_EQ(registry.registrySize(), 1U);
    EXPECT_THAT(log.records(),
        ElementsAre(Record{2,
            "Debug: DefaultAsyncRecovery.cpp:49 "
            "Vyn::OvraBase::DefaultAsyncRecovery::registerRecoverable()",
            "The future with description <again %3> was already registered with id 7 and "
            "description <lädt %2>"}));

    registry.unregisterRecoverable(8);
    EXPECT_EQ(registry.registrySize(), 1U);
    registry.unregisterRecoverable(7);
    EXPECT_EQ(registry.registrySize(), 0U);
    registry.registerRecoverable(1, {}, {});
    registry.registerRecoverable(2, {}, {});
    EXPECT_EQ(registry.registrySize(), 2U) << "invalid futures are not one operation";
}

TEST(DefaultAsyncRecovery, MayBeCalledByTheDelegateOfItsOwnRecord)
{
    struct Dumping : Core::Log::LogDelegate {
        void log(int, const QString &, const QString &) override { dump = registry.dumpRegistry(); }
        DefaultAsyncRecovery registry;
        std::string dump;
    };
    const RecordedLog bound;
    const auto delegate = std::make_shared<Dumping>();
    const Core::Log::ScopedPushLogDelegate registration(delegate);
    Operation load;
    delegate->registry.registerRecoverable(1, load.future, QStringLiteral("load"));
    delegate->registry.registerRecoverable(1, load.future, QStringLiteral("load"));
    EXPECT_EQ(delegate->dump, "1: load\n");
}

TEST(DefaultAsyncRecovery, WaitsForNothingWhereNobodyRecovers)
{
    Operation endless;
    const auto destroyRegistryWith = [](const Vyn::future<void> &future) {
        DefaultAsyncRecovery().registerRecoverable(1, future, {});
    };
    destroyRegistryWith(endless.future); // no locator
    ServiceLocator::start();
    destroyRegistryWith(endless.future); // no recovery service
    auto service = std::make_unique<DefaultAsyncRecovery>();
    service->registerRecoverable(1, endless.future, {});
    EXPECT_TRUE(ServiceLocator::instance()->registerService(std::move(service)));
    destroyRegistryWith({}); // no operation
    ServiceLocator::stop();
    EXPECT_FALSE(endless.future.isReady());
    endless.finish();
}

/// A registry of its own beside the recovery service of a started locator: this is the one that
/// waits at its end.
struct WaitingRegistry : testing::Test {
    WaitingRegistry()
    {
        ServiceLocator::start();
        EXPECT_TRUE(
            ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>()));
        registry->registerRecoverable(1, operation.future, {});
    }
    void TearDown() override { ServiceLocator::stop(); }

    Operation operation;
    std::unique_ptr<DefaultAsyncRecovery> registry = std::make_unique<DefaultAsyncRecovery>();
};

TEST_F(WaitingRegistry, TurnsEventsOnTheMainThread)
{
    // Only the event loop can end the operation, and not at its first turn.
    const auto end = [this, waiting = registry.get()] {
        waiting->unregisterRecoverable(1);
        operation.finish();
    };
    QTimer::singleShot(10, QCoreApplication::instance(), end);
    registry.reset();
    EXPECT_TRUE(operation.future.isReady());
}

TEST_F(WaitingRegistry, LetsTheDeferredDeleteThatEndsAnOperationRun)
{
    auto *const worker = new QObject;
    QObject::connect(worker, &QObject::destroyed, [this] { operation.finish(); });
    worker->deleteLater();
    bool isRescued = false;
    QTimer rescue;
    rescue.callOnTimeout([&] { isRescued = true, delete worker; });
    rescue.start(5000);
    registry.reset();
    EXPECT_FALSE(isRescued);
}

TEST_F(WaitingRegistry, BlocksAnyOtherThreadUntilTheOperationFails)
{
    auto destroyed = std::async(std::launch::async, [this] { registry.reset(); });
    EXPECT_EQ(destroyed.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    operation.fail();
    destroyed.get();
}

TEST(DefaultAsyncRecovery, ServesEightThreads)
{
    constexpr std::size_t kIds = 320;
    for (int round = 0; round < 20; ++round) {
        DefaultAsyncRecovery registry;
        onThreads(8, [&](int first) {
            for (auto id = static_cast<std::size_t>(first); id < kIds; id += 8) {
                registry.registerRecoverable(id, Operation().future, QStringLiteral("x"));
                EXPECT_NE(registry.dumpRegistry(), "");
                if (id % 16 >= 8) {
                    registry.unregisterRecoverable(id);
                }
            }
        });
        const std::string dump = registry.dumpRegistry();
        ASSERT_EQ(registry.registrySize(), kIds / 2);
        ASSERT_EQ(std::count(dump.begin(), dump.end(), '\n'), kIds / 2);
    }
}

} // namespace
} // namespace Vyn::OvraBase
