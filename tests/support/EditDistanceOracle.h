// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The edit distances by their definition, as a full table that is slow and obvious.
namespace Vyn::Test {

inline std::vector<std::uint64_t> lastRow(
    const std::u16string &a, const std::u16string &b, bool anyStart)
{
    std::vector table(a.size() + 1, std::vector<std::uint64_t>(b.size() + 1));
    for (std::size_t j = 0; j <= b.size(); ++j) {
        table[0][j] = anyStart ? 0 : j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        table[i][0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::uint64_t cost = a[i - 1] == b[j - 1] ? 0 : 1;
            table[i][j] =
                std::min({table[i - 1][j] + 1, table[i][j - 1] + 1, table[i - 1][j - 1] + cost});
            if (i > 1 && j > 1 && a[i - 2] == b[j - 1] && a[i - 1] == b[j - 2]) {
                table[i][j] = std::min(table[i][j], table[i - 2][j - 2] + cost);
            }
        }
    }
    return table.back();
}

/// Returns the distances between \a a and the whole of \a b, and between \a a and the part of \a b
/// that is nearest to it.
inline std::pair<std::uint64_t, std::uint64_t> expectedDistances(const QString &a, const QString &b)
{
    const auto whole = lastRow(a.toStdU16String(), b.toStdU16String(), false);
    const auto part = lastRow(a.toStdU16String(), b.toStdU16String(), true);
    return {whole.back(), *std::min_element(part.begin(), part.end())};
}

} // namespace Vyn::Test
