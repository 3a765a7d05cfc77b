// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/Devices_p.h"

#include <ovrabase/platform/WindowsUtils.h>

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <libudev.h>
#include <memory>
#include <system_error>
#include <unistd.h>

namespace Vyn::OvraBase::os {
namespace {

struct Unref {
    void operator()(udev *context) const { udev_unref(context); }
    void operator()(udev_enumerate *search) const { udev_enumerate_unref(search); }
    void operator()(udev_device *device) const { udev_device_unref(device); }
};
template<class T>
using Owner = std::unique_ptr<T, Unref>;

QString text(const char *value)
{
    return QString::fromUtf8(value).trimmed();
}

/// Returns the first non-empty text. \a attributes are tried first, because their texts come from
/// the device itself; one that begins with "0x" is a number and is skipped. \a properties come from
/// udev's rules and database.
QString firstOf(udev_device *device, std::initializer_list<const char *> attributes,
    std::initializer_list<const char *> properties)
{
    QString value;
    for (const char *const name : attributes) {
        value = value.isEmpty() ? text(udev_device_get_sysattr_value(device, name)) : value;
        value = value.startsWith(QLatin1String("0x")) ? QString() : value;
    }
    for (const char *const name : properties) {
        value = value.isEmpty() ? text(udev_device_get_property_value(device, name)) : value;
    }
    return value;
}

void fill(DeviceInfo &info, udev_device *device)
{
    udev_device *const parent = udev_device_get_parent(device); // owned by the device
    info.description = firstOf(device, {}, {"ID_MODEL_FROM_DATABASE"});
    info.deviceClass = text(udev_device_get_subsystem(device));
    info.manufacturer = firstOf(
        device, {"manufacturer", "device/vendor"}, {"ID_VENDOR", "ID_VENDOR_FROM_DATABASE"});
    info.name =
        firstOf(device, {"product", "device/model", "device/name"}, {"ID_MODEL", "ID_NAME"});
    info.service = text(udev_device_get_driver(device));
    info.pdo = text(udev_device_get_devnode(device));
    info.instanceId = text(udev_device_get_devpath(device));
    info.parentInstanceId = parent ? text(udev_device_get_devpath(parent)) : QString();
    info.address = firstOf(device, {"devnum"}, {}).toInt();
}

/// Calls \a visit for each device that passes the filters that \a addFilters adds to a search.
/// Returns 0, or an error of errno.
template<class AddFilters, class Visit>
std::uint32_t enumerateDevices(udev *context, AddFilters addFilters, Visit visit)
{
    // Without sysfs, udev finds no devices and reports no error.
    if (::access("/sys/devices", F_OK) != 0) {
        return static_cast<std::uint32_t>(errno);
    }
    errno = 0;
    const Owner<udev_enumerate> search(context ? udev_enumerate_new(context) : nullptr);
    if (!search) {
        return static_cast<std::uint32_t>(errno != 0 ? errno : ENOMEM);
    }
    addFilters(search.get());
    if (const int result = udev_enumerate_scan_devices(search.get()); result < 0) {
        return static_cast<std::uint32_t>(-result);
    }
    udev_list_entry *entry = nullptr;
    udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(search.get()))
    {
        // Null if the device was unplugged after the scan.
        if (const Owner<udev_device> device{
                udev_device_new_from_syspath(context, udev_list_entry_get_name(entry))}) {
            visit(device.get());
        }
    }
    return 0;
}

bool isOfType(udev_device *device, const char *type)
{
    const char *const actual = udev_device_get_devtype(device);
    return actual && std::strcmp(actual, type) == 0;
}

/// Returns the driver of \a device or of its nearest ancestor that has one. A block device has no
/// driver itself.
QString driverAbove(udev_device *device)
{
    const char *driver = nullptr;
    while (device && !driver) {
        driver = udev_device_get_driver(device);
        device = udev_device_get_parent(device);
    }
    return text(driver);
}

/// Returns true if the block device \a device with the driver \a driver counts as a disk for
/// getDisksInfo().
bool isDisk(udev_device *device, const QString &driver)
{
    if (!isOfType(device, "disk") || udev_device_get_sysattr_value(device, "dm/name")) {
        return false;
    }
    if (driver == QLatin1String("sr") || driver == QLatin1String("floppy")) {
        return false;
    }
    // Linux makes loop, zram and network block devices before they are used. Their size is then 0.
    // The size of a card reader without a card is 0 too, but it is not virtual, so it is a disk.
    const bool isVirtual =
        text(udev_device_get_devpath(device)).startsWith(QLatin1String("/devices/virtual/"));
    return !isVirtual || firstOf(device, {"size"}, {}) != QLatin1String("0");
}

/// Returns true if \a device is a node of the ACPI table that getUnknownDevicesInfo() leaves out.
/// Either it has a physical device, to which drivers bind instead, or its identifier begins with
/// "LNX": Linux chose it, for example for the root of the table.
bool isPassiveAcpiNode(udev_device *device)
{
    const QString folder = QFile::decodeName(udev_device_get_syspath(device));
    const QString drivers = firstOf(device, {"modalias"}, {});
    return QFileInfo::exists(folder + QStringLiteral("/physical_node")) ||
           drivers.startsWith(QLatin1String("acpi:LNX"));
}

/// Returns true if \a device is on a bus, has no driver, and is not a passive ACPI node. A device
/// of a class (in /sys/class and not on a bus) never has a driver: drivers create it.
bool lacksDriver(udev_device *device)
{
    const QString bus = QStringLiteral("/sys/bus/") + text(udev_device_get_subsystem(device));
    return !udev_device_get_driver(device) && QFileInfo::exists(bus) && !isPassiveAcpiNode(device);
}

std::vector<QString> childrenOf(udev *context, udev_device *device)
{
    std::vector<QString> children;
    const QByteArray path = udev_device_get_syspath(device);
    enumerateDevices(
        context,
        [&](udev_enumerate *search) {
            udev_enumerate_add_match_subsystem(search, "usb");
            udev_enumerate_add_match_parent(search, device);
        },
        [&](udev_device *descendant) {
            udev_device *const parent = udev_device_get_parent(descendant);
            if (parent && path == udev_device_get_syspath(parent)) {
                children.push_back(text(udev_device_get_devpath(descendant)));
            }
        });
    return children;
}

/// Returns the USB generation for the negotiated speed, which sysfs gives in Mbit/s.
std::int32_t usbNumberOf(udev_device *device)
{
    const double speed = firstOf(device, {"speed"}, {}).toDouble();
    if (speed <= 0) {
        return 0;
    }
    return speed >= 5000 ? 3 : speed >= 480 ? 2 : 1;
}

} // namespace

DeviceSet<DeviceInfo> disks()
{
    DeviceSet<DeviceInfo> found;
    const Owner<udev> context(udev_new());
    found.error = enumerateDevices(
        context.get(),
        [](udev_enumerate *search) { udev_enumerate_add_match_subsystem(search, "block"); },
        [&](udev_device *device) {
            const QString driver = driverAbove(device);
            if (isDisk(device, driver)) {
                DeviceInfo &info = found.devices.emplace_back();
                fill(info, device);
                info.service = driver;
            }
        });
    return found;
}

DeviceSet<USBInfo> usbDevices()
{
    DeviceSet<USBInfo> found;
    const Owner<udev> context(udev_new());
    found.error = enumerateDevices(
        context.get(),
        [](udev_enumerate *search) { udev_enumerate_add_match_subsystem(search, "usb"); },
        [&](udev_device *device) {
            if (isOfType(device, "usb_device")) {
                USBInfo &info = found.devices.emplace_back();
                fill(info, device);
                info.children = childrenOf(context.get(), device);
                info.usbNumber = usbNumberOf(device);
            }
        });
    return found;
}

DeviceSet<DeviceInfo> unknownDevices()
{
    DeviceSet<DeviceInfo> found;
    const Owner<udev> context(udev_new());
    found.error = enumerateDevices(
        context.get(),
        [](udev_enumerate *search) {
            udev_enumerate_add_match_sysattr(search, "modalias", nullptr);
        },
        [&](udev_device *device) {
            if (lacksDriver(device)) {
                fill(found.devices.emplace_back(), device);
            }
        });
    return found;
}

std::optional<EjectFailure> eject(const std::string & /*path*/)
{
    // No volume has a letter on Linux. The path is not opened: a file may have such a name.
    return EjectFailure{false, ENOENT};
}

std::string errorText(std::uint32_t code)
{
    return std::system_category().message(static_cast<int>(code));
}

} // namespace Vyn::OvraBase::os
