// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/EditDistanceOracle.h"

#include <ovrabase/text/StringUtils.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <random>

namespace {

using namespace Vyn::OvraBase::StringUtils;
using namespace Qt::StringLiterals;
using Vyn::Test::expectedDistances;

/// The distances to the whole of a text and to the nearest part of it.
using Distances = std::pair<std::uint64_t, std::uint64_t>;

void expectDistances(const QString &a, const QString &b, const Distances &expected)
{
    SCOPED_TRACE(a.toStdString() + " | " + b.toStdString());
    ASSERT_EQ(
        Distances(damerauLevenshteinDistance(a, b), damerauLevenshteinSubstringDistance(a, b)),
        expected);
    const DamerauLevenshteinMatcher matcher(a);
    ASSERT_EQ(Distances(matcher.distance(b), matcher.substringDistance(b)), expected);
    const auto [whole, part] = expected;
    for (const std::uint64_t limit : {std::uint64_t{0}, std::uint64_t{3}, part, whole / 2,
             whole - 1, whole, UINT64_MAX - 1, UINT64_MAX}) {
        const auto capped = [limit](std::uint64_t d) { return d > limit ? limit + 1 : d; };
        ASSERT_EQ(Distances(matcher.distance(b, limit), matcher.substringDistance(b, limit)),
            Distances(capped(whole), capped(part)))
            << "a limit of " << limit << " does not hold";
    }
}

// Checks expectedDistances() too, because the test with random texts relies on it.
TEST(EditDistance, CountsUnitsAndSwappedPairs)
{
    const struct {
        QString a, b;
        Distances expected;
    } rows[] = {{{}, u"abc"_s, {3, 0}}, {u"abc"_s, {}, {3, 3}}, {u"ab"_s, u"ba"_s, {1, 1}},
        {u"ca"_s, u"abc"_s, {3, 1}}, // a swapped pair is not edited again
        {u"xxabcxx"_s, u"abd"_s, {5, 5}}, {u"abd"_s, u"xxabcxx"_s, {5, 1}}};
    for (const auto &row : rows) {
        EXPECT_EQ(expectedDistances(row.a, row.b), row.expected);
        expectDistances(row.a, row.b, row.expected);
    }
}

/// Makes texts over alphabets of different kinds.
struct Texts {
    std::mt19937 random{2003};

    qsizetype below(qsizetype limit) { return qsizetype(random() % std::size_t(limit)); }

    /// Chooses an alphabet and makes two texts. In half of the pairs, the second text is the first
    /// one after up to four changes of a unit and four swaps. Most texts are short, and some have
    /// about 64 or 128 units.
    std::pair<QString, QString> pair()
    {
        static constexpr int kSizes[] = {1, 2, 4, 26, 300, 60000};
        static constexpr int kStarts[] = {u'a', 0x00F0, 0x0430, 0xD7F0};
        const int letters = kSizes[below(6)];
        const int first = kStarts[below(4)];
        const int step = below(4) == 0 ? 256 : 1;
        const auto text = [&](qsizetype size) {
            QString result(size, Qt::Uninitialized);
            for (QChar &c : result) {
                c = QChar(static_cast<char16_t>(first + below(letters) * step));
            }
            return result;
        };
        const auto size = [this] {
            return below(20) != 0 ? below(13) : (1 + below(2)) * 64 + below(3) - 1;
        };
        const QString a = text(size());
        QString b = below(2) == 0 ? text(size()) : a;
        for (qsizetype edits = below(5); edits > 0; --edits) {
            const qsizetype at = below(b.size() + 1);
            b.replace(at, below(2), text(below(2)));
            std::reverse(b.begin() + at, b.begin() + std::min(at + below(3), b.size()));
        }
        return {a, b};
    }
};

TEST(EditDistance, ToATextOrAPartOfItIsThatOfTheDefinitionOrOneMoreThanTheLimit)
{
    Texts texts;
    for (int i = 0; i < 20'000 && !HasFailure(); ++i) {
        auto [a, b] = texts.pair();
        // The texts of every 300th pair are long and mostly alike.
        for (const auto size = i % 300 == 0 ? 129 + texts.below(500) : 0; a.size() < size;) {
            const auto [c, d] = texts.pair();
            a += c;
            b += texts.below(8) == 0 ? d : c;
        }
        expectDistances(a, b, expectedDistances(a, b));
    }
}

TEST(EditDistance, OfAMatcherNeedsNothingThatItWasMadeFrom)
{
    DamerauLevenshteinMatcher copy(u"other"_s);
    {
        const DamerauLevenshteinMatcher matcher(QString::fromLatin1("Oak, rough"));
        copy = matcher;
    }
    EXPECT_EQ(copy.distance(u"Oak, tough"_s), 1U);
}

} // namespace
