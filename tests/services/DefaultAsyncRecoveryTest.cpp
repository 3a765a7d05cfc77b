// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "services/Operation.h"
#include "support/RecordedLog.h"

#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <QString>

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace Vyn::OvraBase {
namespace {

using Test::Operation;
using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;

TEST(Future, WithoutAnOperationIsInvalid)
{
    for (const Vyn::future<void> &none :
        {Vyn::future<void>(), Vyn::future<void>(Vyn::future<void>::backend_type())}) {
        EXPECT_FALSE(none.valid());
        EXPECT_FALSE(none.isReady());
        none.await();
        const auto copy = none;
        EXPECT_FALSE(copy == none);
    }
}

TEST(Future, KnowsItsOperationAndWhenItHasEnded)
{
    Operation good;
    Operation bad;
    const auto copy = good.future;
    EXPECT_TRUE(copy == good.future);
    EXPECT_FALSE(bad.future == good.future);
    EXPECT_FALSE(Vyn::future<void>() == good.future);

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
    const auto destroyRegistry = [&] {
        DefaultAsyncRecovery registry;
        registry.registerRecoverable(1, endless.future, {});
        registry.registerRecoverable(2, {}, {});
    };
    destroyRegistry(); // no locator
    ServiceLocator::start();
    destroyRegistry(); // no recovery service
    auto service = std::make_unique<DefaultAsyncRecovery>();
    service->registerRecoverable(1, endless.future, {});
    ServiceLocator::instance()->registerService(std::move(service));
    {
        DefaultAsyncRecovery registry;
        registry.registerRecoverable(2, {}, {}); // no operation
    }
    ServiceLocator::stop();
    EXPECT_FALSE(endless.future.isReady());
    endless.finish();
}

/// A registry of its own beside the recovery service of a started locator: this is the one that
/// waits at its end.
class WaitingRegistry : public testing::TestWithParam<bool> {
protected:
    WaitingRegistry()
    {
        ServiceLocator::start();
        ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>());
        registry->registerRecoverable(1, operation.future, {});
    }
    void TearDown() override { ServiceLocator::stop(); }

    void end() { GetParam() ? operation.finish() : operation.fail(); }

    Operation operation;
    std::unique_ptr<DefaultAsyncRecovery> registry = std::make_unique<DefaultAsyncRecovery>();
};

TEST_P(WaitingRegistry, TurnsEventsOnTheMainThread)
{
    // Only the event loop can end the operation.
    DefaultAsyncRecovery *waiting = registry.get();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [this, waiting] {
            waiting->unregisterRecoverable(1);
            end();
        },
        Qt::QueuedConnection);
    registry.reset();
    EXPECT_TRUE(operation.future.isReady());
}

TEST_P(WaitingRegistry, BlocksAnyOtherThread)
{
    auto destroyed = std::async(std::launch::async, [this] { registry.reset(); });
    EXPECT_EQ(destroyed.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    end();
    destroyed.get();
}

INSTANTIATE_TEST_SUITE_P(Ends, WaitingRegistry, testing::Bool(),
    [](const auto &row) { return row.param ? "Well" : "WithAnError"; });

TEST(DefaultAsyncRecovery, ServesEightThreads)
{
    constexpr std::size_t rounds = 100;
    DefaultAsyncRecovery registry;
    std::array<std::thread, 8> threads;
    for (std::size_t i = 0; i < threads.size(); ++i) {
        threads[i] = std::thread([&registry, i] {
            for (std::size_t round = 0; round < rounds; ++round) {
                const std::size_t id = i * rounds + round;
                const Operation operation;
                registry.registerRecoverable(id, operation.future, QStringLiteral("x"));
                EXPECT_GT(registry.registrySize(), 0U);
                EXPECT_NE(registry.dumpRegistry(), "");
                if (round % 2 == 0) {
                    registry.unregisterRecoverable(id);
                }
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(registry.registrySize(), threads.size() * rounds / 2);
}

} // namespace
} // namespace Vyn::OvraBase
