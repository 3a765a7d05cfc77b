// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>

namespace Vyn::OvraBase {

/// The answer of an index behind the last device: ERROR_NO_MORE_ITEMS.
inline constexpr std::uint32_t kNoMoreDevices = 259;

/// A set that is broken as a whole can fail at every index and never say that there are no more.
/// Indices are dense, so no machine comes near a gap of this length between two devices.
inline constexpr int kLongestGap = 1024;

/// Asks for the devices 0, 1, 2, … and visits each that is there. A single device that fails (just
/// unplugged, say) is skipped.
///
/// \a next takes an index, makes the device at it current and answers 0, or the system's error.
/// \a visit takes nothing and looks at the current device.
template<class Next, class Visit>
void walkDevices(Next &&next, Visit &&visit)
{
    int gap = 0;
    for (std::uint32_t index = 0; gap < kLongestGap; ++index) {
        const std::uint32_t error = next(index);
        if (error == kNoMoreDevices) {
            return;
        }
        if (error != 0) {
            ++gap;
            continue;
        }
        gap = 0;
        visit();
    }
}

} // namespace Vyn::OvraBase
