// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Runs on the machine that described_machine.umockdev describes.

#include "support/Guards.h"
#include "support/RecordedLog.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cerrno>

namespace {

using namespace Vyn::OvraBase;
using namespace Qt::StringLiterals;
using namespace testing;

TEST(Devices, ListsDiskDrivesAndVirtualDisksInUse)
{
    std::vector<QString> texts;
    for (const DeviceInfo &disk : getDisksInfo()) {
        texts.push_back(
            disk.pdo + u": "_s + disk.name + u", "_s + disk.manufacturer + u", "_s + disk.service);
    }
    EXPECT_THAT(
        texts, UnorderedElementsAre(u"/dev/loop1: , , "_s, u"/dev/mmcblk0: SC16G, , mmcblk"_s,
                   u"/dev/mmcblk1: Empty reader, , "_s, u"/dev/sdx: Stick 64G, Soehne %1, sd"_s));
}

TEST(Devices, ListsUsbDevicesWithWhatIsDirectlyBelow)
{
    const QString controller = u"/devices/pci0000:00/0000:00:14.0/"_s;
    std::vector<QString> numbers;
    for (const USBInfo &device : getUSBInfo()) {
        numbers.push_back(u"%1: %2"_s.arg(device.instanceId).arg(device.usbNumber));
    }
    EXPECT_THAT(numbers, UnorderedElementsAre(controller + u"usb1/1-4: 2"_s,
                             controller + u"usb1/1-5: 1"_s, controller + u"usb1/1-6: 0"_s,
                             controller + u"usb2: 3"_s, controller + u"usb2/2-3: 3"_s));
    EXPECT_THAT(getUSBInfo(),
        Contains(Field(&USBInfo::children,
            UnorderedElementsAre(controller + u"usb2/2-0:1.0"_s, controller + u"usb2/2-3"_s))));
    EXPECT_THAT(getUSBInfo(),
        Contains(Property(&USBInfo::toString,
            u"PDO: </dev/bus/usb/002/007>\nInstance ID: "
            u"</devices/pci0000:00/0000:00:14.0/usb2/2-3>\n"
            "Device class: <usb>\nName: <Stick>\nDescription: <Flash Drive>\n"
            "Manufacturer: <Schlüssel & Söhne>\nService: <usb>\nParent Instance ID: "
            "</devices/pci0000:00/0000:00:14.0/usb2>\nAddress: 7\n1 children\nUSB3"_s)));
}

TEST(Devices, UnknownIsABusDeviceWithoutADriver)
{
    std::vector<QString> texts;
    for (const DeviceInfo &device : getUnknownDevicesInfo()) {
        texts.push_back(device.instanceId + u", "_s + device.description + u", "_s +
                        device.manufacturer + u", "_s + device.service);
    }
    EXPECT_THAT(
        texts, UnorderedElementsAre(u"/devices/LNXSYSTM:00/LNXSYBUS:00/XMPL0001:00, , , "_s,
                   u"/devices/pci0000:00/0000:00:1f.4, SMBus Controller, Example Corporation, "_s));
}

TEST(Devices, LogsThatDevicesCannotBeListed)
{
    Vyn::Test::RecordedLog log;
    EXPECT_THAT(getDisksInfo(), Not(IsEmpty())); // logs nothing
    {
        const QTemporaryDir empty;
        const auto machine = Vyn::Test::withVariable("UMOCKDEV_DIR", empty.path().toUtf8());
        EXPECT_THAT(getDisksInfo(), IsEmpty());
        EXPECT_THAT(getUSBInfo(), IsEmpty());
        EXPECT_THAT(getUnknownDevicesInfo(), IsEmpty());
    }
    {
        // This comes last: the undefined behaviour sanitizer opens a pipe when it first checks an
        // object of a class. The calls above, which fail too, make it check all these classes.
        const auto limit = Vyn::Test::withOpenFiles(0);
        EXPECT_THAT(getDisksInfo(), IsEmpty());
    }
    const auto record = [](std::uint32_t error) {
        return Vyn::Test::Record{2, "Debug: WindowsUtils.cpp:64 Vyn::OvraBase::enumerateDevices()",
            "Cannot get devices: " + errorMessage(error)};
    };
    EXPECT_THAT(
        log.take(), ElementsAre(record(ENOENT), record(ENOENT), record(ENOENT), record(EMFILE)));
}

} // namespace
