// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/platform/WindowsUtils.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <string>

namespace {

using namespace Vyn::OvraBase;
using testing::ElementsAre;
using testing::Not;

TEST(WindowsUtils, TextOfAUsbDeviceEndsWithItsChildrenAndItsNumber)
{
    USBInfo device;
    const DeviceInfo &base = device;
    const std::string fields =
        "PDO: <>\nInstance ID: <>\nDevice class: <>\nName: <>\nDescription: <>\n"
        "Manufacturer: <>\nService: <>\nParent Instance ID: <>\nAddress: 0";
    EXPECT_EQ(base.toString().toStdString(), fields + "\n0 children");
    device.children.resize(2);
    device.usbNumber = 3;
    EXPECT_EQ(base.toString().toStdString(), fields + "\n2 children\nUSB3");
}

TEST(WindowsUtils, EjectingAMissingVolumeFailsWhereItIsOpened)
{
    constexpr std::uint32_t kMissingFile = 2; // ERROR_FILE_NOT_FOUND and ENOENT
    const std::string message = "Failed to open device: " + errorMessage(kMissingFile);
    Vyn::Test::RecordedLog log;
    for (const char letter : {'Q', 'q', '1', '~'}) {
        try {
            ejectUsbDrive(letter);
            ADD_FAILURE() << "ejected " << letter;
        } catch (const Vyn::Exception::DriveUnmountException &exception) {
            EXPECT_EQ(exception.what(), message);
            EXPECT_EQ(exception.subject().toStdString(), std::string("\\\\.\\") + letter + ':');
        }
        EXPECT_THAT(log.take(),
            ElementsAre(Vyn::Test::Record{
                2, "Debug: WindowsUtils.cpp:142 Vyn::OvraBase::ejectUsbDrive()", message}));
    }
}

TEST(WindowsUtils, EveryErrorCodeHasAText)
{
    EXPECT_NE(errorMessage(2), errorMessage(5));
    EXPECT_THAT(errorMessage(2), Not(testing::HasSubstr("2"))) << "the system's own words";
    EXPECT_THAT(errorMessage(0x0dabbedaU), testing::HasSubstr(std::to_string(0x0dabbedaU)));
}

} // namespace
