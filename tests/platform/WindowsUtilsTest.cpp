// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/platform/WindowsUtils.h>

#include <gmock/gmock.h>

namespace {

using namespace Vyn::OvraBase;
using namespace Vyn::Test;
using namespace testing;
using Vyn::Exception::DriveUnmountException;

TEST(WindowsUtils, TextOfAUsbDeviceHasFieldsAsTheyAreAndNoUnknownUsbNumber)
{
    USBInfo device;
    device.pdo = QStringLiteral("%2");
    EXPECT_EQ(device.toString().toStdString(),
        "PDO: <%2>\nInstance ID: <>\nDevice class: <>\nName: <>\nDescription: <>\n"
        "Manufacturer: <>\nService: <>\nParent Instance ID: <>\nAddress: 0\n0 children");
}

TEST(WindowsUtils, EjectingAMissingVolumeFailsWhereItIsOpened)
{
    // 2 is ERROR_FILE_NOT_FOUND and ENOENT.
    const std::string message = "Failed to open device: " + errorMessage(2);
    RecordedLog log;
    EXPECT_THAT([] { ejectUsbDrive('q'); },
        Throws<DriveUnmountException>(AllOf(Property(&DriveUnmountException::what, StrEq(message)),
            Property(&DriveUnmountException::subject, u"\\\\.\\q:"_s))));
    EXPECT_THAT(log.take(),
        ElementsAre(
            Record{2, "Debug: WindowsUtils.cpp:142 Vyn::OvraBase::ejectUsbDrive()", message}));
}

TEST(WindowsUtils, EveryErrorCodeHasAText)
{
    EXPECT_THAT(errorMessage(2), Not(HasSubstr("2"))) << "a number, not a text";
    EXPECT_THAT(errorMessage(0x0dabbedaU), HasSubstr(std::to_string(0x0dabbedaU)));
}

} // namespace
