// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "../tests/support/EditDistanceOracle.h"

#include <ovrabase/text/StringUtils.h>

#include <cstdlib>

using namespace Vyn;
using namespace Vyn::OvraBase;

/// The first byte tells how many letters there are and how far apart, the second where one text
/// ends and the other begins; each other byte is a letter.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size < 2 || size > 600) {
        return 0;
    }
    const unsigned letters = 1 + data[0] % 64U * 4;
    const unsigned distance = data[0] < 64 ? 1 : 97;
    const auto split = static_cast<qsizetype>((size - 2) * data[1] / 255);
    QString text;
    for (std::size_t i = 2; i < size; ++i) {
        text += QChar(static_cast<char16_t>(data[i] % letters * distance));
    }
    const QString a = text.first(split);
    const QString b = text.sliced(split);

    const auto expected = Test::expectedDistances(a, b);
    const StringUtils::DamerauLevenshteinMatcher matcher(a);
    if (StringUtils::damerauLevenshteinDistance(a, b) != expected.whole ||
        StringUtils::damerauLevenshteinDistance(b, a) != expected.whole ||
        StringUtils::damerauLevenshteinSubstringDistance(a, b) != expected.part ||
        matcher.distance(b) != expected.whole || matcher.substringDistance(b) != expected.part) {
        std::abort();
    }
    return 0;
}
