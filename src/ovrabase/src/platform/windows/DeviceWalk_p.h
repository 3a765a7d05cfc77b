// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <qt_windows.h>

namespace Vyn::OvraBase::os {

/// A set that is broken as a whole can fail at every index and never say that there are no more.
/// Indices are dense, so no machine comes near a gap of this length between two devices.
inline constexpr DWORD kLongestGap = 1024;

/// Asks for the devices 0, 1, 2, … and visits each that is there. A single device that fails (just
/// unplugged, say) is skipped.
///
/// \a next takes an index, makes the device at it current and answers 0 or the system's error,
/// which is ERROR_NO_MORE_ITEMS behind the last device. \a visit takes nothing and looks at the
/// current device.
template<class Next, class Visit>
void walkDevices(Next &&next, Visit &&visit)
{
    DWORD gap = 0;
    for (DWORD index = 0; gap < kLongestGap; ++index) {
        const DWORD error = next(index);
        if (error == ERROR_NO_MORE_ITEMS) {
            return;
        }
        if (error != ERROR_SUCCESS) {
            ++gap;
            continue;
        }
        gap = 0;
        visit();
    }
}

} // namespace Vyn::OvraBase::os
