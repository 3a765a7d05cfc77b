// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/EditDistanceOracle.h"

#include <ovrabase/text/StringUtils.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>

namespace Vyn::OvraBase::StringUtils {
namespace {

using namespace Qt::StringLiterals;
using Vyn::Test::EditDistances;
using Vyn::Test::expectedDistances;

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

EditDistances limited(const EditDistances &distances, std::uint64_t limit)
{
    const auto cap = [limit](std::uint64_t d) { return d > limit ? limit + 1 : d; };
    return {cap(distances.whole), cap(distances.part)};
}

void expectDistances(const QString &a, const QString &b, const EditDistances &expected)
{
    const DamerauLevenshteinMatcher matcher(a);
    const EditDistances byFunctions{
        damerauLevenshteinDistance(a, b), damerauLevenshteinSubstringDistance(a, b)};
    const EditDistances byMatcher{matcher.distance(b), matcher.substringDistance(b)};
    ASSERT_EQ(byFunctions, expected) << qPrintable(a) << " | " << qPrintable(b);
    ASSERT_EQ(byMatcher, expected) << qPrintable(a) << " | " << qPrintable(b);
    for (const std::uint64_t limit : {std::uint64_t{0}, std::uint64_t{3}, expected.part,
             expected.whole / 2, expected.whole - 1, expected.whole, kNoLimit - 1, kNoLimit}) {
        const EditDistances within{matcher.distance(b, limit), matcher.substringDistance(b, limit)};
        ASSERT_EQ(within, limited(expected, limit))
            << qPrintable(a) << " | " << qPrintable(b) << ", limit " << limit;
    }
}

struct Row {
    const char *name;
    QString a;
    QString b;
    EditDistances expected;
};

TEST(EditDistance, OfNamedCases)
{
    const QString a64(64, u'a');
    const std::array rows{
        Row{"both empty", {}, {}, {0, 0}},
        Row{"empty pattern", {}, u"abc"_s, {3, 0}},
        Row{"empty text", u"abc"_s, {}, {3, 3}},
        Row{"swapped pair", u"ab"_s, u"ba"_s, {1, 1}},
        Row{"a swapped pair is not edited again", u"ca"_s, u"abc"_s, {3, 1}},
        Row{"case counts", u"Abc"_s, u"abc"_s, {1, 1}},
        Row{"part found", u"abc"_s, u"xxabcxx"_s, {4, 0}},
        Row{"part nearly found", u"abd"_s, u"xxabcxx"_s, {5, 1}},
        Row{"the order of the arguments counts for parts", u"xxabcxx"_s, u"abc"_s, {4, 4}},
        Row{"surrogate pairs are two units", u"\U0001F600"_s, u"x"_s, {2, 2}},
        Row{"one half of a pair differs", u"\U0001F600"_s, u"\U0001F601"_s, {1, 1}},
        Row{"a composed letter is not its parts", u"\u00E9"_s, u"e\u0301"_s, {2, 1}},
        Row{"same low byte", u"a\u0161\u0261a"_s, u"a\u0261\u0161\u0361"_s, {2, 2}},
        // Bands are cut from the end.
        Row{"a swap across the border of a band", u'x' + a64 + u"bc"_s + a64.chopped(2) + u'y',
            u'z' + a64 + u"cb"_s + a64.chopped(2) + u'w', {3, 3}},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(expectedDistances(row.a, row.b), row.expected);
        expectDistances(row.a, row.b, row.expected);
    }
}

/// Makes pairs of texts over alphabets of different kinds, often near to each other.
class Pairs {
public:
    std::size_t below(std::size_t limit) { return mRandom() % limit; }

    /// Chooses an alphabet, then lengths: mostly short ones, sometimes next to a multiple of 64.
    std::pair<QString, QString> next()
    {
        static constexpr std::array<std::size_t, 6> kSizes = {1, 2, 4, 26, 300, 60000};
        static constexpr std::array<unsigned, 4> kStarts = {u'a', 0x00F0, 0x0430, 0xD7F0};
        mLetters = kSizes[below(kSizes.size())];
        mFirst = kStarts[below(kStarts.size())];
        mStep = below(4) == 0 ? 256 : 1;
        const QString a = text(length());
        return {a, below(2) == 0 ? text(length()) : edited(a)};
    }

private:
    std::size_t length() { return below(20) != 0 ? below(13) : (1 + below(2)) * 64 + below(3) - 1; }

    QChar unit() { return QChar(static_cast<char16_t>(mFirst + below(mLetters) * mStep)); }

    QString text(std::size_t size)
    {
        QString result;
        while (static_cast<std::size_t>(result.size()) < size) {
            result += unit();
        }
        return result;
    }

    QString edited(QString text)
    {
        for (std::size_t edits = below(5); edits > 0; --edits) {
            const auto at =
                static_cast<qsizetype>(below(static_cast<std::size_t>(text.size()) + 1));
            if (const std::size_t kind = below(3); kind == 0) {
                text.insert(at, unit());
            } else if (kind == 1) {
                text.remove(at, 1);
            } else {
                std::reverse(text.begin() + at, text.begin() + std::min(at + 2, text.size()));
            }
        }
        return text;
    }

    std::mt19937 mRandom{2003};
    std::size_t mLetters = 1;
    std::size_t mStep = 1;
    unsigned mFirst = 0;
};

TEST(EditDistance, IsThatOfTheDefinition)
{
    Pairs pairs;
    for (int i = 0; i < 20'000 && !testing::Test::HasFailure(); ++i) {
        const auto [a, b] = pairs.next();
        expectDistances(a, b, expectedDistances(a, b));
    }
    // Of many bands, most of them near to each other.
    for (int i = 0; i < 60 && !testing::Test::HasFailure(); ++i) {
        const auto size = static_cast<qsizetype>(129 + pairs.below(500));
        std::pair<QString, QString> texts;
        while (texts.first.size() < size) {
            const auto [a, b] = pairs.next();
            texts.first += a;
            texts.second += pairs.below(8) == 0 ? b : a;
        }
        expectDistances(texts.first, texts.second, expectedDistances(texts.first, texts.second));
    }
}

TEST(DamerauLevenshteinMatcher, OutlivesWhatItWasMadeFrom)
{
    DamerauLevenshteinMatcher copy(u"other"_s);
    {
        const DamerauLevenshteinMatcher matcher(QString::fromLatin1("Oak, rough"));
        copy = matcher;
    }
    EXPECT_EQ(copy.distance(u"Oak, tough"_s), 1U);
}

} // namespace
} // namespace Vyn::OvraBase::StringUtils
