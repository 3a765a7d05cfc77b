// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// \file
/// The seam for devices, implemented in windows/Devices.cpp and posix/Devices.cpp. The functions
/// fill DeviceInfo and USBInfo objects, and return the system's error codes. They do not log, and
/// throw std::bad_alloc only.
namespace Vyn::OvraBase {

struct DeviceInfo;
struct USBInfo;

namespace os {

/// A list of devices, or the reason why the system cannot list them.
template<class Info>
struct DeviceSet {
    std::uint32_t error = 0;   ///< the system's code; 0 on success
    std::vector<Info> devices; ///< empty on failure
};

/// Returns what getDisksInfo() returns, and the error.
DeviceSet<DeviceInfo> disks();
/// Returns what getUSBInfo() returns, and the error.
DeviceSet<USBInfo> usbDevices();
/// Returns what getUnknownDevicesInfo() returns, and the error.
DeviceSet<DeviceInfo> unknownDevices();

/// Why a volume is not ejected.
struct EjectFailure {
    bool opened;         ///< true if the volume was opened and could not be ejected
    std::uint32_t error; ///< the system's code
};

/// Ejects the medium of the volume \a path ("\\.\X:"). Returns nothing on success.
std::optional<EjectFailure> eject(const std::string &path);

/// Returns the system's text for the error \a code. For an unknown code, returns an empty text on
/// Windows. Linux has a text for every code.
std::string errorText(std::uint32_t code);

} // namespace os
} // namespace Vyn::OvraBase
