// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// Storage devices: lists of what is attached, ejecting a USB drive, the system's error texts.
///
/// The home of these functions is Windows. On Linux the devices are those of udev, and an error
/// code is an errno. All functions are thread-safe and block while the system answers.
namespace Vyn::OvraBase {

/// One device as the system describes it. A text that the system does not know is empty.
struct OVRABASE_EXPORT DeviceInfo {
    DeviceInfo();
    DeviceInfo(const DeviceInfo &);
    DeviceInfo(DeviceInfo &&) noexcept;
    DeviceInfo &operator=(const DeviceInfo &);
    DeviceInfo &operator=(DeviceInfo &&) noexcept;
    virtual ~DeviceInfo();

    /// Returns all fields as lines of "label: <value>".
    virtual QString toString() const;

    QString pdo;              ///< physical device object; on Linux the path of the device node
    QString instanceId;       ///< on Linux the path below the mount point of sysfs
    QString deviceClass;      ///< setup class; on Linux the subsystem
    QString name;             ///< friendly name
    QString description;      ///< what kind of device it is
    QString manufacturer;     ///< who made it
    QString service;          ///< the driver that serves it
    QString parentInstanceId; ///< instanceId of the device that it is attached to
    std::int32_t address = 0; ///< on its bus
};

/// A device on the USB.
struct OVRABASE_EXPORT USBInfo : DeviceInfo {
    USBInfo();
    USBInfo(const USBInfo &);
    USBInfo(USBInfo &&) noexcept;
    USBInfo &operator=(const USBInfo &);
    USBInfo &operator=(USBInfo &&) noexcept;
    ~USBInfo() override;

    /// Returns the text of DeviceInfo, the number of children and, when known, the USB number.
    QString toString() const override;

    std::vector<QString> children; ///< instanceId of each device directly below
    std::int32_t usbNumber = 0;    ///< generation at which it runs (1, 2 or 3); 0 when unknown
};

/// Returns the disks. Empty, with an error logged on Debug, when the system does not list them (on
/// Linux: without sysfs).
///
/// A disk is a drive of fixed or exchangeable disks, also without a medium (a card reader), and
/// a virtual disk: on Windows what offers the disk interface, on Linux loop devices, compressed
/// memory, network disks and arrays that are in use. Partitions, logical volumes (device-mapper),
/// optical drives and floppies are none.
OVRABASE_EXPORT std::vector<DeviceInfo> getDisksInfo();

/// Returns the USB devices with their children. Fails as getDisksInfo() does.
OVRABASE_EXPORT std::vector<USBInfo> getUSBInfo();

/// Returns the devices that no driver serves. Fails as getDisksInfo() does. On Linux those of a bus
/// alone, and of the firmware's table (ACPI) those without another entry on a bus.
OVRABASE_EXPORT std::vector<DeviceInfo> getUnknownDevicesInfo();

/// Ejects the medium of the volume with the letter \a driveLetter.
///
/// The volume is neither locked nor dismounted first: files that are still open or written are the
/// caller's to close. On Linux no volume has a letter, so this always fails as for a missing one.
///
/// \throws Vyn::Exception::DriveUnmountException  The volume cannot be opened, or does not eject;
/// the subject is its path ("\\.\X:").
OVRABASE_EXPORT void ejectUsbDrive(char driveLetter);

/// Returns the system's text for the error \a code (GetLastError() on Windows, errno on Linux), as
/// it comes (on Windows with a line end) and in the local 8-bit encoding. A code that the system
/// does not know has a text too.
OVRABASE_EXPORT std::string errorMessage(std::uint32_t code);

} // namespace Vyn::OvraBase
