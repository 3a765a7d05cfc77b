// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/PluginServices.h"

#include <ovrabase/platform/base.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/MessagingService.h>
#include <ovrabase/services/ServiceLocator.h>

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <utility>

namespace Vyn::OvraBase {
namespace {

using Test::HostService;
using Test::PluginService;

class ServiceLocatorTest : public testing::Test {
protected:
    void SetUp() override { ServiceLocator::start(); }
    void TearDown() override { ServiceLocator::stop(); }
};

/// Tells of its end.
struct Mortal : Service {
    OVRABASE_SERVICE_TYPE_ID(Vyn::OvraBase::Service) // any declared name serves
    explicit Mortal(std::function<void()> atEnd)
        : mAtEnd(std::move(atEnd))
    {
    }
    ~Mortal() override { mAtEnd(); }

private:
    std::function<void()> mAtEnd;
};

TEST(ServiceTypeId, IsThePublishedHashOfTheQualifiedName)
{
    EXPECT_EQ(serviceTypeId(""), 0xcbf29ce484222325U);
    EXPECT_EQ(serviceTypeId("foobar"), 0x85944171f73967e8U);
    EXPECT_EQ(serviceTypeId("\xff"), 0xaf64724c8602eb6eU) << "bytes are unsigned";
    EXPECT_EQ(MessagingService::typeId(), serviceTypeId("Vyn::OvraBase::MessagingService"));
    EXPECT_EQ(DefaultAsyncRecovery::typeId(), serviceTypeId("Vyn::OvraBase::DefaultAsyncRecovery"));
}

TEST(ServiceLocator, RunsFromStartToStopAndBeginsEmptyAgain)
{
    EXPECT_FALSE(ServiceLocator::started());
    ServiceLocator::stop();
    ServiceLocator::start();
    EXPECT_TRUE(ServiceLocator::started());
    const ServiceLocator *first = ServiceLocator::instance().get();
    ServiceLocator::instance()->registerService(std::make_unique<HostService>(1));
    ServiceLocator::start();
    EXPECT_EQ(ServiceLocator::instance().get(), first);
    EXPECT_NE(ServiceLocator::instance()->service<HostService>(), nullptr);

    ServiceLocator::stop();
    ServiceLocator::stop();
    EXPECT_FALSE(ServiceLocator::started());
    EXPECT_EQ(ServiceLocator::instance(), nullptr);
    ServiceLocator::start();
    EXPECT_EQ(ServiceLocator::instance()->service<HostService>(), nullptr);
    ServiceLocator::stop();
}

TEST_F(ServiceLocatorTest, RefusesASecondServiceOfOneIdAndNull)
{
    auto &locator = *ServiceLocator::instance();
    EXPECT_FALSE(locator.registerService(std::unique_ptr<HostService>()));
    // Under the id of the base, which then is how it is found.
    EXPECT_TRUE(locator.registerService<HostService>(std::make_unique<PluginService>(1)));
    const HostService *first = locator.service<HostService>();
    EXPECT_FALSE(locator.registerService(std::make_unique<HostService>(2)));
    EXPECT_EQ(locator.service<HostService>(), first);
    EXPECT_EQ(first->number, 1);
    EXPECT_EQ(locator.service<PluginService>(), nullptr);
}

TEST_F(ServiceLocatorTest, DestroysEachServiceOnceAndARefusedOneOutsideTheLock)
{
    int ends = 0;
    ServiceLocator::instance()->registerService(std::make_unique<Mortal>([&ends] {
        ++ends;
        EXPECT_FALSE(ServiceLocator::started());
        EXPECT_EQ(ServiceLocator::instance(), nullptr);
    }));
    int refusals = 0;
    ServiceLocator::instance()->registerService(std::make_unique<Mortal>([&refusals] {
        ++refusals;
        ServiceLocator::instance()->service<HostService>(); // takes the lock
    }));
    EXPECT_EQ(refusals, 1);
    EXPECT_EQ(ends, 0);
    ServiceLocator::stop();
    EXPECT_EQ(ends, 1);
}

TEST_F(ServiceLocatorTest, IsOneForEveryModule)
{
    ServiceLocator::instance()->registerService(std::make_unique<HostService>(42));
    void *plugin = loadSharedLibrary(QStringLiteral("ovrabaseTestPlugin.dll"));
    ASSERT_NE(plugin, nullptr);
    auto *plugInServices =
        reinterpret_cast<int (*)()>(loadSymbol(plugin, QStringLiteral("plugInServices")));
    ASSERT_NE(plugInServices, nullptr);

    EXPECT_EQ(plugInServices(), 42);
    const auto *service = ServiceLocator::instance()->service<PluginService>();
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->number, 7);

    ServiceLocator::stop(); // before the service's code goes
    closeSharedLibrary(plugin);
}

template<int N>
struct Numbered : HostService {
    static std::size_t typeId() { return HostService::typeId() + N; }
    Numbered()
        : HostService(N)
    {
    }
    std::atomic<int> uses = 0;
};

TEST_F(ServiceLocatorTest, ServesEightThreadsWhileServicesAreRegistered)
{
    constexpr int rounds = 2000;
    auto &locator = *ServiceLocator::instance();
    locator.registerService(std::make_unique<Numbered<1>>());
    std::atomic<int> registered = 0;
    const auto work = [&] {
        for (int i = 0; i < rounds; ++i) {
            ++locator.service<Numbered<1>>()->uses;
            registered += locator.registerService(std::make_unique<Numbered<2>>()) ? 1 : 0;
            ++locator.service<Numbered<2>>()->uses;
        }
    };
    std::array<std::thread, 8> threads;
    for (std::thread &thread : threads) {
        thread = std::thread(work);
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(registered, 1);
    EXPECT_EQ(locator.service<Numbered<1>>()->uses, 8 * rounds);
    EXPECT_EQ(locator.service<Numbered<2>>()->uses, 8 * rounds);
}

} // namespace
} // namespace Vyn::OvraBase
