// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Guards.h"
#include "support/RecordedLog.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <gmock/gmock.h>

#include <cerrno>

namespace {

using namespace Vyn::OvraBase;

TEST(Devices, LogsThatTheSetCannotBeOpened)
{
    Vyn::Test::RecordedLog log;
    {
        const auto limit = Vyn::Test::withOpenFiles(0);
        EXPECT_TRUE(getDisksInfo().empty());
    }
    EXPECT_THAT(log.take(), testing::ElementsAre(Vyn::Test::Record{2,
                                "Debug: WindowsUtils.cpp:64 Vyn::OvraBase::enumerateDevices()",
                                "Cannot get devices: " + errorMessage(EMFILE)}));
}

} // namespace
