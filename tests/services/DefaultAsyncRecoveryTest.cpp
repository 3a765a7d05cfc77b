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

using namespace Test;

/// A registry apart from the recovery service of a started locator. Its destructor waits.
struct DefaultAsyncRecoveryTest : testing::Test {
    DefaultAsyncRecoveryTest()
    {
        ServiceLocator::start();
        EXPECT_TRUE(
            ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>()));
        registry->registerRecoverable(7, operation.future, QStringLiteral("lädt %2"));
    }
    ~DefaultAsyncRecoveryTest() override { ServiceLocator::stop(); }

    Operation operation;
    std::unique_ptr<DefaultAsyncRecovery> registry = std::make_unique<DefaultAsyncRecovery>();
};

TEST_F(DefaultAsyncRecoveryTest, KnowsTheOperationsOfFuturesAndWhenTheyHaveEnded)
{
    const Vyn::future<void> none{Vyn::future<void>::backend_type()};
    EXPECT_FALSE(none.valid() || none.isReady() || none == Vyn::future<void>(none));
    none.await();

    Operation other;
    const auto copy = operation.future;
    EXPECT_TRUE(copy.valid() && copy == operation.future);
    EXPECT_FALSE(other.future == copy || none == copy || copy.isReady());
    operation.finish();
    other.finish(false);
    for (const auto &ended : {copy, other.future}) {
        EXPECT_TRUE(ended.isReady());
        EXPECT_NO_THROW(ended.await());
    }
}

TEST_F(DefaultAsyncRecoveryTest, LogsASecondRegistrationOfAnOperationAndIgnoresThatOfAnId)
{
    const RecordedLog log;
    static DefaultAsyncRecovery *dumped = nullptr;
    dumped = registry.get();
    struct Dumping : Core::Log::LogDelegate {
        // Needs the lock, which is free while the record is logged.
        void log(int, const QString &, const QString &) override
        {
            EXPECT_EQ(dumped->dumpRegistry(), "7: lädt %2\n");
        }
    };
    const Core::Log::ScopedPushLogDelegate registration(std::make_shared<Dumping>());

    Operation save;
    registry->registerRecoverable(7, save.future, QStringLiteral("dropped"));
    registry->registerRecoverable(8, operation.future, QStringLiteral("again %3"));
    EXPECT_THAT(log.records(),
        testing::ElementsAre(Record{2,
            "Debug: DefaultAsyncRecovery.cpp:49 "
            "Vyn::OvraBase::DefaultAsyncRecovery::registerRecoverable()",
            "The future with description <again %3> was already registered with id 7 and "
            "description <lädt %2>"}));

    registry->unregisterRecoverable(8);
    EXPECT_EQ(registry->registrySize(), 1U);
    registry->unregisterRecoverable(7);
    registry->registerRecoverable(1, {}, {});
    registry->registerRecoverable(2, {}, {});
    EXPECT_EQ(registry->registrySize(), 2U) << "invalid futures are not one operation";
}

TEST_F(DefaultAsyncRecoveryTest, WaitsForNothingWhereNobodyRecovers)
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
    // The operation ends later than the deferred delete, and so not when the wait first looks.
    auto *const worker = new QObject;
    QObject::connect(worker, &QObject::destroyed, [this, waiting = registry.get()] {
        QTimer::singleShot(10, QCoreApplication::instance(), [this, waiting] {
            waiting->unregisterRecoverable(7);
            operation.finish();
        });
    });
    worker->deleteLater();
    QTimer rescue;
    rescue.callOnTimeout([worker] { ADD_FAILURE(), delete worker; });
    rescue.start(5000);
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

TEST_F(DefaultAsyncRecoveryTest, ServesEightThreads)
{
    for (int round = 0; round < 20; ++round) {
        DefaultAsyncRecovery shared;
        onThreads(8, [&](int first) {
            for (auto id = static_cast<std::size_t>(first); id < 320; id += 8) {
                shared.registerRecoverable(id, Operation().future, QStringLiteral("x"));
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
} // namespace Vyn::OvraBase
