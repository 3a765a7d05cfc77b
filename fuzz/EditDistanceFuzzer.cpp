// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "../tests/support/EditDistanceOracle.h"
#include "Require.h"

#include <ovrabase/text/StringUtils.h>

#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>

using namespace Vyn;
using namespace Vyn::OvraBase;

/// Compares the distances of two texts with those of a simple implementation. The second text is
/// the first one after some edits, because long unrelated texts never have a small distance.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto letters = input.ConsumeIntegralInRange<unsigned>(1, 250);
    const auto distance = input.ConsumeBool() ? 1U : 97U;
    const auto letter = [&](unsigned of) {
        return QChar(static_cast<char16_t>(of % letters * distance));
    };
    QString a(input.ConsumeIntegralInRange<qsizetype>(0, 400), Qt::Uninitialized);
    std::generate(a.begin(), a.end(), [&, i = 0U]() mutable { return letter(i++); });
    QString b = a;
    while (input.remaining_bytes() > 0) {
        const auto at = input.ConsumeIntegralInRange<qsizetype>(0, b.size());
        switch (input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            b.insert(at, letter(input.ConsumeIntegral<std::uint8_t>()));
            break;
        case 1:
            b.remove(at, 1);
            break;
        case 2:
            b.truncate(at);
            break;
        default:
            std::reverse(b.begin() + at, b.begin() + std::min(at + 2, b.size()));
        }
    }

    const auto [whole, part] = Test::expectedDistances(a, b);
    const StringUtils::DamerauLevenshteinMatcher matcher(a);
    require(StringUtils::damerauLevenshteinDistance(a, b) == whole);
    require(StringUtils::damerauLevenshteinDistance(b, a) == whole);
    require(StringUtils::damerauLevenshteinSubstringDistance(a, b) == part);
    require(matcher.distance(b) == whole);
    require(matcher.substringDistance(b) == part);
    for (const std::uint64_t limit : {std::uint64_t{3}, part, whole / 2}) {
        require(matcher.distance(b, limit) == std::min(whole, limit + 1));
        require(matcher.substringDistance(b, limit) == std::min(part, limit + 1));
    }
    return 0;
}
