// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/DeviceWalk_p.h"
#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/platform/WindowsUtils.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace Vyn::OvraBase;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST(DeviceInfo, PrintsEveryFieldEmptyOrNot)
{
    DeviceInfo device;
    EXPECT_EQ(device.toString().toStdString(),
        "PDO: <>\nInstance ID: <>\nDevice class: <>\nName: <>\nDescription: <>\n"
        "Manufacturer: <>\nService: <>\nParent Instance ID: <>\nAddress: 0");

    device.pdo = QStringLiteral("pdo %2"); // placeholders in a value are text
    device.instanceId = QStringLiteral("id");
    device.deviceClass = QStringLiteral("class");
    device.name = QStringLiteral("Диск <1>");
    device.description = QStringLiteral("%1");
    device.manufacturer = QStringLiteral("maker");
    device.service = QStringLiteral("service");
    device.parentInstanceId = QStringLiteral("parent %9");
    device.address = -7;
    EXPECT_EQ(device.toString().toStdString(),
        "PDO: <pdo %2>\nInstance ID: <id>\nDevice class: <class>\nName: <Диск <1>>\n"
        "Description: <%1>\nManufacturer: <maker>\nService: <service>\n"
        "Parent Instance ID: <parent %9>\nAddress: -7");
}

TEST(USBInfo, AddsItsChildrenAndItsNumberWhenKnown)
{
    struct Row {
        std::vector<QString> children;
        std::int32_t number;
        std::string ending;
    };
    const Row rows[] = {
        {{}, 0, "\nAddress: 4\n0 children"},
        {{}, 1, "\nAddress: 4\n0 children\nUSB1"},
        {{QStringLiteral("a"), QStringLiteral("b")}, 0, "\nAddress: 4\n2 children"},
        {{QStringLiteral("a")}, 3, "\nAddress: 4\n1 children\nUSB3"},
    };
    for (const Row &row : rows) {
        USBInfo device;
        device.address = 4;
        device.children = row.children;
        device.usbNumber = row.number;
        const DeviceInfo &base = device;
        EXPECT_THAT(base.toString().toStdString(), testing::EndsWith(row.ending));
    }
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
    EXPECT_THAT(visited({0, 0, kNoMoreDevices}), ElementsAre(0U, 1U));
    EXPECT_THAT(visited({kBroken, 0, kBroken, kBroken, 0, kNoMoreDevices}), ElementsAre(1U, 4U));
    EXPECT_THAT(visited({0, kNoMoreDevices, 0}), ElementsAre(0U));
}

TEST(DeviceWalk, EndsWhenNothingButFailuresFollow)
{
    constexpr std::uint32_t kBroken = 31;
    EXPECT_THAT(visited({kBroken}), IsEmpty());

    // The gap counts anew behind each device.
    std::vector<std::uint32_t> answers(kLongestGap - 1, kBroken);
    answers.push_back(0);
    answers.insert(answers.end(), kLongestGap - 1, kBroken);
    answers.push_back(0);
    answers.push_back(kBroken);
    EXPECT_THAT(visited(answers), ElementsAre(kLongestGap - 1, 2 * kLongestGap - 1));
}

/// A letter that has no volume, and characters that are no letters.
class EjectUsbDrive : public testing::TestWithParam<char> {};

TEST_P(EjectUsbDrive, FailsAtTheOpenWithoutAVolume)
{
    constexpr std::uint32_t kMissingFile = 2; // ERROR_FILE_NOT_FOUND and ENOENT
    const std::string message = "Failed to open device: " + errorMessage(kMissingFile);
    const std::string path = std::string("\\\\.\\") + GetParam() + ':';
    Vyn::Test::RecordedLog log;

    try {
        ejectUsbDrive(GetParam());
        FAIL() << "ejected " << path;
    } catch (const Vyn::Exception::DriveUnmountException &exception) {
        EXPECT_EQ(exception.what(), message);
        EXPECT_EQ(exception.subject().toStdString(), path);
    }
    EXPECT_THAT(
        log.take(), ElementsAre(Vyn::Test::Record{
                        2, "Debug: WindowsUtils.cpp:142 Vyn::OvraBase::ejectUsbDrive()", message}));
}
INSTANTIATE_TEST_SUITE_P(Letters, EjectUsbDrive, testing::Values('Q', 'q', '1', '~'));

TEST(ErrorMessage, HasATextForEveryCode)
{
    EXPECT_NE(errorMessage(2), errorMessage(5));
    for (const std::uint32_t code : {0U, 1U, 2U, 0x7fffffffU, 0x80004005U, 0xffffffffU}) {
        EXPECT_THAT(errorMessage(code), Not(IsEmpty())) << code;
    }
    EXPECT_THAT(errorMessage(0x0dabbedaU), testing::HasSubstr(std::to_string(0x0dabbedaU)));
}

} // namespace
