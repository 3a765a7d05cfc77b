// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// \file
/// What the system is asked about devices: one side in windows/, one in posix/. It fills records
/// and answers with the system's codes; it does not judge, log or throw (but for std::bad_alloc),
/// and calls nothing of the public interface.
namespace Vyn::OvraBase {

struct DeviceInfo;
struct USBInfo;

namespace os {

/// A set of devices, or why the system does not open it.
template<class Info>
struct DeviceSet {
    std::uint32_t error = 0; ///< the system's code; 0 when the set could be opened
    std::vector<Info> devices;
};

DeviceSet<DeviceInfo> disks();
DeviceSet<USBInfo> usbDevices();
DeviceSet<DeviceInfo> unknownDevices();

struct EjectFailure {
    bool opened;         ///< whether the volume could be opened, so that ejecting it failed
    std::uint32_t error; ///< the system's code
};

/// Ejects the volume at \a path ("\\.\X:"). Nothing comes back when it went well.
std::optional<EjectFailure> eject(const std::string &path);

/// The system's text for \a code, empty when it has none.
std::string errorText(std::uint32_t code);

} // namespace os
} // namespace Vyn::OvraBase
