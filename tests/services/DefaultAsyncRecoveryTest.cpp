// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"
#include "support/Threads.h"

#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>

#include <QCoreApplication>
#include <QTimer>

#include <gmock/gmock.h>
#if OVRABASE_HAS_STLAB
#include <stlab/concurrency/immediate_executor.hpp>
#endif

#include <algorithm>
#include <chrono>
#include <future>
#include <stdexcept>
#include <tuple>

namespace {

using namespace Vyn::OvraBase;
using namespace Vyn::Test;

/// An operation that ends, well or with an error, when finish() is called.
struct Operation {
    static void end(bool isSuccess)
    {
        if (!isSuccess) {
            throw std::runtime_error("failed");
        }
    }
    void finish(bool isSuccess = true) { std::get<0>(task)(isSuccess); }

#if OVRABASE_HAS_STLAB
    std::pair<stlab::packaged_task<bool>, Vyn::future<void>::backend_type> task =
        stlab::package<void(bool)>(stlab::immediate_executor, &end);
    Vyn::future<void> future{task.second};
#else
    std::tuple<std::packaged_task<void(bool)>> task{&end};
    Vyn::future<void> future{std::get<0>(task).get_future().share()};
#endif
};

/// Starts the locator with a DefaultAsyncRecovery. \a registry is a second one, outside of the
/// locator. Its destructor waits for \a operation, unless the locator is stopped.
struct DefaultAsyncRecoveryTest : testing::Test {
    DefaultAsyncRecoveryTest()
    {
        ServiceLocator::start();
        EXPECT_TRUE(
            ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>()));
        registry->registerRecoverable(7, operation.future, u"lädt %2"_s);
    }
    ~DefaultAsyncRecoveryTest() override { ServiceLocator::stop(); }

    Operation operation;
    std::unique_ptr<DefaultAsyncRecovery> registry = std::make_unique<DefaultAsyncRecovery>();
};

TEST_F(DefaultAsyncRecoveryTest, AFutureKnowsWhetherItHasAnOperationAndWhetherThatHasEnded)
{
    const Vyn::future<void> none{Vyn::future<void>::backend_type()};
    EXPECT_FALSE(none.valid() || none.isReady() || none == Vyn::future<void>(none));
    EXPECT_FALSE(none == operation.future || operation.future == none);
    none.await();

    EXPECT_TRUE(operation.future.valid());
    EXPECT_FALSE(operation.future.isReady());
    operation.finish(false);
    EXPECT_TRUE(operation.future.isReady());
    operation.future.await();
}

TEST_F(DefaultAsyncRecoveryTest, IgnoresATakenIdAndLogsAnOperationRegisteredTwice)
{
    const RecordedLog log;
    const Vyn::Core::Log::ScopedPushLogDelegate registration(
        std::make_shared<Calling>([this](const QString &) { // needs the lock, which must be free
            EXPECT_EQ(registry->dumpRegistry(), "7: lädt %2\n");
        }));
    Operation save;
    registry->registerRecoverable(7, save.future, u"dropped"_s);
    registry->registerRecoverable(8, operation.future, u"again %3"_s);
    EXPECT_EQ(registry->registrySize(), 1U);
    registry->unregisterRecoverable(8);
    EXPECT_EQ(registry->registrySize(), 1U) << "8 is unknown";
    EXPECT_THAT(log.records(),
        testing::ElementsAre(Record{2,
            "Debug: DefaultAsyncRecovery.cpp:49 "
            "Vyn::OvraBase::DefaultAsyncRecovery::registerRecoverable()",
            "The future with description <again %3> was already registered with id 7 and "
            "description <lädt %2>"}));
}

TEST_F(DefaultAsyncRecoveryTest, DoesNotWaitWithoutARecoveryServiceNorWhenTheLocatorStops)
{
    ServiceLocator::stop();
    registry = std::make_unique<DefaultAsyncRecovery>(); // no locator
    registry->registerRecoverable(1, operation.future, {});
    ServiceLocator::start();
    registry = std::make_unique<DefaultAsyncRecovery>(); // no recovery service
    registry->registerRecoverable(1, operation.future, {});
    EXPECT_TRUE(ServiceLocator::instance()->registerService(std::move(registry)));
    DefaultAsyncRecovery().registerRecoverable(1, {}, {}); // no operation
    ServiceLocator::stop();
    EXPECT_FALSE(operation.future.isReady());
}

TEST_F(DefaultAsyncRecoveryTest, RunsEventsAndEarlierDeferredDeletesOnTheMainThreadWhileItWaits)
{
    // The operation ends 10 ms after the deferred delete, so that the wait has to go on after it.
    auto *const worker = new QObject;
    QObject::connect(worker, &QObject::destroyed, [this, waiting = registry.get()] {
        QTimer::singleShot(10, QCoreApplication::instance(), [this, waiting] {
            waiting->unregisterRecoverable(7);
            operation.finish();
        });
    });
    worker->deleteLater();
    registry.reset();
    EXPECT_TRUE(operation.future.isReady());
}

TEST_F(DefaultAsyncRecoveryTest, BlocksAnyOtherThreadUntilTheOperationFails)
{
    auto destroyed = std::async(std::launch::async, [this] { registry.reset(); });
    EXPECT_EQ(destroyed.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    operation.finish(false);
    destroyed.get();
}

TEST_F(DefaultAsyncRecoveryTest, CountsRegistrationsOfEightThreadsAtOnce)
{
    for (int round = 0; round < 20; ++round) {
        DefaultAsyncRecovery shared;
        onThreads(8, [&](int first) {
            for (auto id = static_cast<std::size_t>(first); id < 320; id += 8) {
                shared.registerRecoverable(id, Operation().future, u"x"_s);
                EXPECT_NE(shared.dumpRegistry(), "");
                if (id % 16 >= 8) {
                    shared.unregisterRecoverable(id);
                }
            }
        });
        const std::string dump = shared.dumpRegistry();
        ASSERT_EQ(shared.registrySize(), 160U);
        ASSERT_EQ(std::count(dump.begin(), dump.end(), '\n'), 160);
    }
}

} // namespace
