// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/platform/base.h>

#include <gmock/gmock.h>

#include <qt_windows.h>

namespace {

using namespace Vyn::OvraBase;

TEST(SharedLibrary, LoadingLeavesTheErrorModeOfTheThread)
{
    DWORD callersMode = 0;
    ::SetThreadErrorMode(SEM_NOGPFAULTERRORBOX, &callersMode);
    closeSharedLibrary(loadSharedLibrary(QStringLiteral("ovrabaseTestPlugin")));
    EXPECT_EQ(::GetThreadErrorMode(), DWORD{SEM_NOGPFAULTERRORBOX});
    ::SetThreadErrorMode(callersMode, nullptr);
}

} // namespace
