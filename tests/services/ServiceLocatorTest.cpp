// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/PluginServices.h"
#include "support/Threads.h"

#include <ovrabase/platform/base.h>
#include <ovrabase/services/MessagingService.h>
#include <ovrabase/services/ServiceLocator.h>

#include <gmock/gmock.h>

namespace {

using namespace Vyn::OvraBase;
using namespace Vyn::Test;

TEST(ServiceLocator, UsesThePublishedHashOfAQualifiedNameAsTheTypeId)
{
    EXPECT_EQ(serviceTypeId("foobar"), 0x85944171f73967e8U);
    EXPECT_EQ(serviceTypeId("\xff"), 0xaf64724c8602eb6eU) << "bytes are unsigned";
    EXPECT_EQ(MessagingService::typeId(), serviceTypeId("Vyn::OvraBase::MessagingService"));
}

TEST(ServiceLocator, KeepsTheFirstServiceOfAnIdAndDestroysTheSecondOutsideTheLock)
{
    static ServiceLocator locator;
    static int ends = 0;
    struct Refused : HostService {
        ~Refused() override { ends += locator.service<HostService>()->number; }
    };
    EXPECT_FALSE(locator.registerService(std::unique_ptr<HostService>()));
    // A service that is registered under the id of its base class is found under that id only.
    EXPECT_TRUE(locator.registerService<HostService>(std::make_unique<PluginService>()));
    EXPECT_FALSE(locator.registerService<HostService>(std::make_unique<Refused>()));
    EXPECT_EQ(ends, 7) << "the first one stays";
    EXPECT_EQ(locator.service<PluginService>(), nullptr);
}

TEST(ServiceLocator, IsSharedByTheApplicationAndItsPlugIns)
{
    ServiceLocator::start();
    EXPECT_TRUE(ServiceLocator::instance()->registerService(std::make_unique<HostService>()));
    void *const plugin = loadSharedLibrary(QStringLiteral("ovrabaseTestPlugin.dll"));
    auto *const plugInServices =
        reinterpret_cast<int (*)()>(loadSymbol(plugin, QStringLiteral("plugInServices")));
    ASSERT_NE(plugInServices, nullptr);
    EXPECT_EQ(plugInServices(), 42);
    EXPECT_THAT(ServiceLocator::instance()->service<PluginService>(),
        testing::Pointee(testing::Field(&PluginService::number, 7)));
    ServiceLocator::stop(); // before the code of the plug-in's service is unloaded
    closeSharedLibrary(plugin);
}

/// A service whose id is a number that each thread sets for itself.
struct Numbered : Service {
    static inline thread_local std::size_t number = 0;
    static std::size_t typeId() { return number; }
};

TEST(ServiceLocator, ServesEightThreads)
{
    for (int round = 0; round < 50; ++round) {
        ServiceLocator locator;
        std::atomic<int> registered = 0;
        std::atomic<int> found = 0;
        onThreads(8, [&](int) {
            for (Numbered::number = 0; Numbered::number < 100; ++Numbered::number) {
                registered += locator.registerService(std::make_unique<Numbered>()) ? 1 : 0;
                found += locator.service<Numbered>() ? 1 : 0;
            }
        });
        ASSERT_EQ(registered, 100);
        ASSERT_EQ(found, 8 * 100);
    }
}

} // namespace
