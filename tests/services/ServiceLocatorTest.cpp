// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/PluginServices.h"

#include <ovrabase/platform/base.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/MessagingService.h>
#include <ovrabase/services/ServiceLocator.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <thread>

namespace Vyn::OvraBase {
namespace {

using Test::HostService;
using Test::PluginService;

class ServiceLocatorTest : public testing::Test {
protected:
    void SetUp() override { ServiceLocator::start(); }
    void TearDown() override { ServiceLocator::stop(); }
};

TEST(ServiceTypeId, IsThePublishedHashOfTheQualifiedName)
{
    EXPECT_EQ(serviceTypeId("foobar"), 0x85944171f73967e8U);
    EXPECT_EQ(serviceTypeId("\xff"), 0xaf64724c8602eb6eU) << "bytes are unsigned";
    EXPECT_EQ(MessagingService::typeId(), serviceTypeId("Vyn::OvraBase::MessagingService"));
    EXPECT_EQ(DefaultAsyncRecovery::typeId(), serviceTypeId("Vyn::OvraBase::DefaultAsyncRecovery"));
}

/// Takes the locator's lock at its end.
struct Refused : HostService {
    using HostService::HostService;
    ~Refused() override
    {
        ServiceLocator::instance()->service<HostService>();
        ++ends;
    }
    static inline int ends = 0;
};

TEST_F(ServiceLocatorTest, RefusesNullAndASecondServiceOfOneIdOutsideTheLock)
{
    auto &locator = *ServiceLocator::instance();
    EXPECT_FALSE(locator.registerService(std::unique_ptr<HostService>()));
    // Under the id of the base, which then is how it is found.
    EXPECT_TRUE(locator.registerService<HostService>(std::make_unique<PluginService>(1)));
    Refused::ends = 0;
    EXPECT_FALSE(locator.registerService<HostService>(std::make_unique<Refused>(2)));
    EXPECT_EQ(Refused::ends, 1);
    EXPECT_EQ(locator.service<HostService>()->number, 1);
    EXPECT_EQ(locator.service<PluginService>(), nullptr);
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

TEST_F(ServiceLocatorTest, ServesEightThreadsWhileServicesAreRegistered)
{
    constexpr int rounds = 2000;
    auto &locator = *ServiceLocator::instance();
    locator.registerService(std::make_unique<HostService>(1));
    const HostService *host = locator.service<HostService>();
    std::atomic<int> found = 0;
    std::atomic<int> registered = 0;
    const auto work = [&] {
        for (int i = 0; i < rounds; ++i) {
            found += locator.service<HostService>() == host ? 1 : 0;
            registered += locator.registerService(std::make_unique<PluginService>(2)) ? 1 : 0;
            found += locator.service<PluginService>() ? 1 : 0;
        }
    };
    {
        std::array<std::jthread, 8> threads;
        std::generate(threads.begin(), threads.end(), [&] { return std::jthread(work); });
    }
    EXPECT_EQ(registered, 1);
    EXPECT_EQ(found, 2 * 8 * rounds);
}

} // namespace
} // namespace Vyn::OvraBase
