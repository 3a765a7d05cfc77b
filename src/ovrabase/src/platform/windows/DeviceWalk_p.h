// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qt_windows.h>

namespace Vyn::OvraBase::os {

/// The walk ends after this number of failures in a row. Without this bound, it would never end if
/// SetupAPI failed at every index and never returned ERROR_NO_MORE_ITEMS. The bound skips no device
/// in practice: SetupAPI numbers devices without gaps, so that few failures in a row are expected.
inline constexpr DWORD kLongestGap = 1024;

/// Visits the devices 0, 1, 2 and so on. A device that cannot be selected, for example because it
/// was unplugged, is skipped.
///
/// \a select takes an index and makes the device with that index the current one. It returns 0, or
/// the system's error, which is ERROR_NO_MORE_ITEMS after the last device. If it returns 0,
/// \a visit is called without an argument, and handles the current device.
template<class Select, class Visit>
void walkDevices(Select &&select, Visit &&visit)
{
    DWORD failures = 0;
    for (DWORD index = 0; failures < kLongestGap; ++index) {
        const DWORD error = select(index);
        if (error == ERROR_NO_MORE_ITEMS) {
            return;
        }
        if (error != ERROR_SUCCESS) {
            ++failures;
            continue;
        }
        failures = 0;
        visit();
    }
}

} // namespace Vyn::OvraBase::os
