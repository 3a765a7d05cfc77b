// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/PluginServices.h"
#include "support/Threads.h"

#include <ovrabase/platform/base.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/MessagingService.h>
#include <ovrabase/services/ServiceLocator.h>

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <utility>

namespace Vyn::OvraBase {
namespace {

using Test::HostService;
using Test::onThreads;
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
    EXPECT_TRUE(ServiceLocator::instance()->registerService(std::make_unique<HostService>(42)));
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

template<std::size_t N>
struct Numbered : Service {
    static std::size_t typeId() { return N; }
};

/// Registers and looks up the services of all numbers.
template<std::size_t... N>
void useAll(ServiceLocator &locator, std::atomic<int> &registered, std::atomic<int> &found,
    std::index_sequence<N...> /*numbers*/)
{
    ((registered += locator.registerService(std::make_unique<Numbered<N>>()) ? 1 : 0,
         found += locator.service<Numbered<N>>() ? 1 : 0),
        ...);
}

TEST(ServiceLocator, ServesEightThreads)
{
    constexpr int kServices = 100;
    for (int round = 0; round < 50; ++round) {
        ServiceLocator locator;
        std::atomic<int> registered = 0;
        std::atomic<int> found = 0;
        onThreads(8, [&](int) {
            useAll(locator, registered, found, std::make_index_sequence<kServices>());
        });
        ASSERT_EQ(registered, kServices);
        ASSERT_EQ(found, 8 * kServices);
    }
}

} // namespace
} // namespace Vyn::OvraBase
