// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Runs on the machine that described_machine.umockdev describes.

#include "support/RecordedLog.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <cerrno>
#include <map>
#include <string>

namespace {

using namespace Vyn::OvraBase;
using testing::ElementsAre;
using testing::Pair;
using testing::SizeIs;

const std::string kController = "/devices/pci0000:00/0000:00:14.0";
const std::string kDisk = kController + "/usb2/2-3/2-3:1.0/host4/target4:0:0/4:0:0:0";

TEST(DescribedMachine, ListsDiskDrivesAndVirtualDisksInUse)
{
    std::map<std::string, DeviceInfo> disks;
    std::map<std::string, std::string> names;
    for (const DeviceInfo &disk : getDisksInfo()) {
        disks[disk.pdo.toStdString()] = disk;
        names[disk.pdo.toStdString()] = disk.name.toStdString();
    }

    EXPECT_THAT(names, ElementsAre(Pair("/dev/loop1", ""), Pair("/dev/mmcblk0", "SC16G"),
                           Pair("/dev/mmcblk1", "Empty reader"), Pair("/dev/sdx", "Stick 64G")));
    EXPECT_EQ(disks["/dev/sdx"].toString().toStdString(),
        "PDO: </dev/sdx>\nInstance ID: <" + kDisk +
            "/block/sdx>\nDevice class: <block>\nName: <Stick 64G>\nDescription: <>\n"
            "Manufacturer: <Soehne %1>\nService: <sd>\nParent Instance ID: <" +
            kDisk + ">\nAddress: 0");
}

TEST(DescribedMachine, ListsUsbDevicesWithWhatIsDirectlyBelow)
{
    std::map<std::string, USBInfo> devices;
    std::map<std::string, std::int32_t> numbers;
    for (const USBInfo &device : getUSBInfo()) {
        devices[device.instanceId.toStdString()] = device;
        numbers[device.instanceId.toStdString()] = device.usbNumber;
    }

    EXPECT_THAT(numbers, ElementsAre(Pair(kController + "/usb1/1-4", 2),
                             Pair(kController + "/usb1/1-5", 1), Pair(kController + "/usb1/1-6", 0),
                             Pair(kController + "/usb2", 3), Pair(kController + "/usb2/2-3", 3)));
    const USBInfo &hub = devices[kController + "/usb2"];
    EXPECT_THAT(
        hub.children, testing::UnorderedElementsAre(hub.instanceId + QStringLiteral("/2-0:1.0"),
                          hub.instanceId + QStringLiteral("/2-3")));
    EXPECT_EQ(devices[kController + "/usb2/2-3"].toString().toStdString(),
        "PDO: </dev/bus/usb/002/007>\nInstance ID: <" + kController +
            "/usb2/2-3>\nDevice class: <usb>\nName: <Stick>\nDescription: <Flash Drive>\n"
            "Manufacturer: <Schlüssel & Söhne>\nService: <usb>\nParent Instance ID: <" +
            kController + "/usb2>\nAddress: 7\n1 children\nUSB3");
}

TEST(DescribedMachine, UnknownIsABusDeviceWithoutADriver)
{
    const auto devices = getUnknownDevicesInfo();

    ASSERT_THAT(devices, SizeIs(2));
    EXPECT_EQ(
        devices[0].instanceId, QStringLiteral("/devices/LNXSYSTM:00/LNXSYBUS:00/XMPL0001:00"));
    EXPECT_EQ(devices[1].instanceId, QStringLiteral("/devices/pci0000:00/0000:00:1f.4"));
    EXPECT_EQ(devices[1].description, QStringLiteral("SMBus Controller"));
    EXPECT_EQ(devices[1].manufacturer, QStringLiteral("Example Corporation"));
    EXPECT_EQ(devices[1].service, QString());
}

TEST(DescribedMachine, WithoutSysfsIsLogged)
{
    const QTemporaryDir empty;
    const QByteArray machine = qgetenv("UMOCKDEV_DIR");
    Vyn::Test::RecordedLog log;
    qputenv("UMOCKDEV_DIR", empty.path().toUtf8());
    EXPECT_THAT(getDisksInfo(), SizeIs(0));
    EXPECT_THAT(getUSBInfo(), SizeIs(0));
    EXPECT_THAT(getUnknownDevicesInfo(), SizeIs(0));
    qputenv("UMOCKDEV_DIR", machine);

    const Vyn::Test::Record record{2,
        "Debug: WindowsUtils.cpp:64 Vyn::OvraBase::enumerateDevices()",
        "Cannot get devices: " + errorMessage(ENOENT)};
    EXPECT_THAT(log.take(), ElementsAre(record, record, record));
}

} // namespace
