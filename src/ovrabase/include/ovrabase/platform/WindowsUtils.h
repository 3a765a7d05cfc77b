// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// Lists of the attached devices, ejection of a USB drive, and the error texts of the system.
///
/// On Windows, the devices come from SetupAPI, and an error code is a value of GetLastError(). On
/// Linux, the devices come from udev, and an error code is a value of errno. All functions are
/// thread-safe, and block until the system answers.
namespace Vyn::OvraBase {

/// A device as the system describes it. A text that the system does not know is empty.
struct OVRABASE_EXPORT DeviceInfo {
    DeviceInfo();
    DeviceInfo(const DeviceInfo &);
    DeviceInfo(DeviceInfo &&) noexcept;
    DeviceInfo &operator=(const DeviceInfo &);
    DeviceInfo &operator=(DeviceInfo &&) noexcept;
    virtual ~DeviceInfo();

    /// Returns a line "label: <value>" for each field; the address has no angle brackets.
    virtual QString toString() const;

    QString pdo;          ///< name of the physical device object; on Linux, path of the device node
    QString instanceId;   ///< device instance id; on Linux, the path below /sys
    QString deviceClass;  ///< device setup class; on Linux, the subsystem
    QString name;         ///< friendly name; on Linux, the product name
    QString description;  ///< kind of device; on Linux, the model in udev's database
    QString manufacturer; ///< name of the manufacturer
    QString service;      ///< name of the driver
    QString parentInstanceId; ///< instanceId of the device that this one is attached to
    std::int32_t address = 0; ///< address on the bus; 0 if unknown
};

/// A USB device.
struct OVRABASE_EXPORT USBInfo : DeviceInfo {
    USBInfo();
    USBInfo(const USBInfo &);
    USBInfo(USBInfo &&) noexcept;
    USBInfo &operator=(const USBInfo &);
    USBInfo &operator=(USBInfo &&) noexcept;
    ~USBInfo() override;

    /// Returns the lines of DeviceInfo::toString(), a line with the number of children and, if the
    /// USB number is known, a line with it.
    QString toString() const override;

    /// instanceId of each child in the system's device tree; on Linux, of USB devices and USB
    /// interfaces only
    std::vector<QString> children;
    std::int32_t usbNumber = 0; ///< USB generation of the connection: 1, 2, 3, or 0 if unknown
};

/// Returns the disk drives. If the system cannot list them (for example, on Linux without sysfs),
/// logs an error on the logger Debug and returns an empty list.
///
/// A drive for removable media is listed even without a medium. A virtual disk is listed on Windows
/// if it has the device interface GUID_DEVINTERFACE_DISK. On Linux, a virtual disk (for example, a
/// loop device, zram, a network block device or a RAID array) is listed if its size is not 0; most
/// have the size 0 while they are not in use. Partitions, device-mapper volumes, optical drives and
/// floppy drives are not listed; on Linux, a USB floppy drive is.
OVRABASE_EXPORT std::vector<DeviceInfo> getDisksInfo();

/// Returns the USB devices with their children. Fails as getDisksInfo() does.
OVRABASE_EXPORT std::vector<USBInfo> getUSBInfo();

/// Returns the devices without a driver. Fails as getDisksInfo() does.
///
/// On Linux, a device is listed only if it is on a bus and has a modalias, which is the text by
/// which Linux finds the driver for a device. A node of the ACPI table is not listed if it has a
/// physical device, because drivers bind to the physical device, or if its identifier begins with
/// "LNX": Linux chose it, for example for the root of the table.
OVRABASE_EXPORT std::vector<DeviceInfo> getUnknownDevicesInfo();

/// Ejects the medium of the volume with the letter \a driveLetter.
///
/// Neither locks nor dismounts the volume: close all files on it before the call. On Linux, a
/// volume has no letter, so that this always fails as for a missing volume.
///
/// \throws Vyn::Exception::DriveUnmountException  The volume cannot be opened or ejected.
///     subject() is its path ("\\.\X:").
OVRABASE_EXPORT void ejectUsbDrive(char driveLetter);

/// Returns the system's text for the error \a code, in the local 8-bit encoding. \a code comes from
/// GetLastError() on Windows and from errno on Linux.
///
/// The text is unchanged, so that it ends in a line end on Windows. The text of an unknown code is
/// "Unknown error <code>" on Windows.
OVRABASE_EXPORT std::string errorMessage(std::uint32_t code);

} // namespace Vyn::OvraBase
