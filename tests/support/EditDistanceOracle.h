// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <vector>

/// The edit distances by their definition, as a full table that is slow and obvious.
namespace Vyn::Test {

struct EditDistances {
    std::uint64_t whole;
    std::uint64_t part;
    friend bool operator==(const EditDistances &, const EditDistances &) = default;
    friend std::ostream &operator<<(std::ostream &out, const EditDistances &distances)
    {
        return out << "whole " << distances.whole << ", part " << distances.part;
    }
};

inline std::vector<std::uint64_t> lastRow(QStringView a, QStringView b, bool anyStart)
{
    const auto rows = static_cast<std::size_t>(a.size());
    const auto columns = static_cast<std::size_t>(b.size());
    const char16_t *down = a.utf16();
    const char16_t *right = b.utf16();
    std::vector<std::vector<std::uint64_t>> table(
        rows + 1, std::vector<std::uint64_t>(columns + 1));
    for (std::size_t j = 0; j <= columns; ++j) {
        table[0][j] = anyStart ? 0 : j;
    }
    for (std::size_t i = 1; i <= rows; ++i) {
        table[i][0] = i;
        for (std::size_t j = 1; j <= columns; ++j) {
            const std::uint64_t cost = down[i - 1] == right[j - 1] ? 0 : 1;
            table[i][j] =
                std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + cost});
            if (i > 1 && j > 1 && down[i - 2] == right[j - 1] && down[i - 1] == right[j - 2]) {
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + cost);
            }
        }
    }
    return table[rows];
}

inline EditDistances expectedDistances(QStringView a, QStringView b)
{
    const auto part = lastRow(a, b, true);
    return {lastRow(a, b, false).back(), *std::min_element(part.begin(), part.end())};
}

} // namespace Vyn::Test
