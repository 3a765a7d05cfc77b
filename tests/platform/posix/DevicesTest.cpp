// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/resource.h>

namespace {

using namespace Vyn::OvraBase;

TEST(Devices, ASetThatCannotBeOpenedIsLogged)
{
    Vyn::Test::RecordedLog log;
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto disks = getDisksInfo();
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);

    EXPECT_TRUE(disks.empty());
    EXPECT_THAT(log.take(), testing::ElementsAre(Vyn::Test::Record{2,
                                "Debug: WindowsUtils.cpp:64 Vyn::OvraBase::enumerateDevices()",
                                "Cannot get devices: " + errorMessage(EMFILE)}));
}

} // namespace
