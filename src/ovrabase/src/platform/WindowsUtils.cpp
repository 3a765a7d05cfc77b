// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"
#include "platform/Devices_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/platform/WindowsUtils.h>

#include <utility>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNoDeviceSet{"WindowsUtils.cpp:64 Vyn::OvraBase::enumerateDevices()"};
constexpr LogPosition kNotOpened{"WindowsUtils.cpp:142 Vyn::OvraBase::ejectUsbDrive()"};
constexpr LogPosition kNotEjected{"WindowsUtils.cpp:156 Vyn::OvraBase::ejectUsbDrive()"};

QString textOf(std::uint32_t code)
{
    return QString::fromLocal8Bit(errorMessage(code));
}

template<class Info>
std::vector<Info> devicesOf(os::DeviceSet<Info> set)
{
    if (set.error != 0) {
        logAt(kNoDeviceSet, Debug, Logger::Error,
            QStringLiteral("Cannot get devices: ") + textOf(set.error));
    }
    return std::move(set.devices);
}

} // namespace

DeviceInfo::DeviceInfo() = default;
DeviceInfo::DeviceInfo(const DeviceInfo &) = default;
DeviceInfo::DeviceInfo(DeviceInfo &&) noexcept = default;
DeviceInfo &DeviceInfo::operator=(const DeviceInfo &) = default;
DeviceInfo &DeviceInfo::operator=(DeviceInfo &&) noexcept = default;
DeviceInfo::~DeviceInfo() = default;

QString DeviceInfo::toString() const
{
    return QStringLiteral("PDO: <%1>\nInstance ID: <%2>\nDevice class: <%3>\nName: <%4>\n"
                          "Description: <%5>\nManufacturer: <%6>\nService: <%7>\n"
                          "Parent Instance ID: <%8>\nAddress: %9")
        .arg(pdo, instanceId, deviceClass, name, description, manufacturer, service,
            parentInstanceId, QString::number(address));
}

USBInfo::USBInfo() = default;
USBInfo::USBInfo(const USBInfo &) = default;
USBInfo::USBInfo(USBInfo &&) noexcept = default;
USBInfo &USBInfo::operator=(const USBInfo &) = default;
USBInfo &USBInfo::operator=(USBInfo &&) noexcept = default;
USBInfo::~USBInfo() = default;

QString USBInfo::toString() const
{
    QString text = DeviceInfo::toString() + QStringLiteral("\n%1 children").arg(children.size());
    if (usbNumber != 0) {
        text += QStringLiteral("\nUSB%1").arg(usbNumber);
    }
    return text;
}

std::vector<DeviceInfo> getDisksInfo()
{
    return devicesOf(os::disks());
}

std::vector<USBInfo> getUSBInfo()
{
    return devicesOf(os::usbDevices());
}

std::vector<DeviceInfo> getUnknownDevicesInfo()
{
    return devicesOf(os::unknownDevices());
}

void ejectUsbDrive(char driveLetter)
{
    // The path is the subject of the exception on every system.
    const std::string path = std::string("\\\\.\\") + driveLetter + ':';
    if (const auto failure = os::eject(path)) {
        const QString message = failure->opened ? QStringLiteral("Failed to eject volume: ")
                                                : QStringLiteral("Failed to open device: ");
        fail<Exception::DriveUnmountException>(failure->opened ? kNotEjected : kNotOpened,
            message + textOf(failure->error), QString::fromLocal8Bit(path));
    }
}

std::string errorMessage(std::uint32_t code)
{
    std::string text = os::errorText(code);
    return text.empty() ? "Unknown error " + std::to_string(code) : text;
}

} // namespace Vyn::OvraBase
