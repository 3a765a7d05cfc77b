// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/DeviceWalk_p.h"
#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/platform/WindowsUtils.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace Vyn::OvraBase;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST(USBInfo, AddsItsChildrenAndItsNumberWhenKnown)
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

/// Walks over \a answers, one for each index, the last for every index behind them; returns the
/// indices that were visited.
std::vector<std::uint32_t> visited(const std::vector<std::uint32_t> &answers)
{
    std::vector<std::uint32_t> indices;
    std::uint32_t current = 0;
    walkDevices(
        [&](std::uint32_t index) {
            current = index;
            return index < answers.size() ? answers[index] : answers.back();
        },
        [&] { indices.push_back(current); });
    return indices;
}

TEST(DeviceWalk, SkipsAFailingIndexAndEndsWhereThereAreNoMore)
{
    constexpr std::uint32_t kBroken = 31;
    EXPECT_THAT(visited({kNoMoreDevices}), IsEmpty());
    EXPECT_THAT(visited({kBroken, 0, kBroken, kBroken, 0, kNoMoreDevices}), ElementsAre(1U, 4U));
    EXPECT_THAT(visited({0, kNoMoreDevices, 0}), ElementsAre(0U));
    EXPECT_THAT(visited({kBroken}), IsEmpty()) << "nothing but failures";

    // The gap counts anew behind each device.
    std::vector<std::uint32_t> answers(2 * kLongestGap + 1, kBroken);
    answers[kLongestGap - 1] = answers[2 * kLongestGap - 1] = 0;
    EXPECT_THAT(visited(answers), ElementsAre(kLongestGap - 1, 2 * kLongestGap - 1));
}

TEST(EjectUsbDrive, FailsAtTheOpenWithoutAVolume)
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

TEST(ErrorMessage, HasATextForEveryCode)
{
    EXPECT_NE(errorMessage(2), errorMessage(5));
    EXPECT_THAT(errorMessage(2), Not(testing::HasSubstr("2"))) << "the system's own words";
    EXPECT_THAT(errorMessage(0x0dabbedaU), testing::HasSubstr(std::to_string(0x0dabbedaU)));
}

} // namespace
