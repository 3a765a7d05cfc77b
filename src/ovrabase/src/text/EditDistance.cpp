// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <QStringView>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>
#include <vector>

// The table of distances has a row for each unit of the pattern and a column for each unit of the
// text, and neighbouring cells differ by at most 1. So a band of 64 rows keeps the differences down
// one column as bits of two words, and a few word operations lead to the next column (Hyyrö 2003;
// the names used there stand in brackets). The lowest bit is the top row of a band.
//
// The pattern fills its bands from the last row upwards. Rows left over at the top of the first
// band are idle: they repeat row 0 of the table.

namespace Vyn::OvraBase::StringUtils {
namespace {

using Word = std::uint64_t;

constexpr std::size_t kBandRows = 64;

std::size_t bandsFor(std::size_t rows)
{
    return (rows + kBandRows - 1) / kBandRows;
}

/// Tells for each unit in which rows of one band it stands.
class UnitRows {
public:
    /// Lets \a units, at most 64, fill the last rows of the band.
    explicit UnitRows(QStringView units)
    {
        // In parts that become plain stores: clearing it all at once is one slow instruction.
        for (std::size_t part = 0; part < kLatin; part += 64) {
            std::memset(&mEntries[part], 0, 64);
        }
        mUnits[0] = 0;
        mRows[0] = 0;
        Word row = Word{1} << (kBandRows - static_cast<std::size_t>(units.size())) % kBandRows;
        std::uint8_t entry = 0;
        for (const QChar unit : units) {
            if (unit.unicode() >= kLatin && !mBeyondLatin) {
                std::fill(mEntries.begin() + kLatin, mEntries.end(), std::uint8_t{0});
                mBeyondLatin = true;
            }
            // A new entry for every row: whether a unit returns is nothing a branch could predict.
            const std::size_t slot = slotOf(unit.unicode());
            ++entry;
            mUnits[entry] = unit.unicode();
            mRows[entry] = mRows[mEntries[slot]] | row;
            mEntries[slot] = entry;
            row <<= 1;
        }
    }

    Word of(char16_t unit) const
    {
        if (unit >= kLatin && !mBeyondLatin) {
            return 0;
        }
        return mRows[mEntries[slotOf(unit)]];
    }

private:
    static constexpr std::size_t kLatin = 256;

    /// Returns the slot of \a unit, or the free one where it belongs. Latin units have their own,
    /// the others share a hash table; their low byte tells the letters of one alphabet apart.
    std::size_t slotOf(char16_t unit) const
    {
        if (unit < kLatin) {
            return unit;
        }
        std::size_t slot = kLatin + unit % kLatin;
        // "Taken and by another unit" as a product: its halves as branches are unpredictable.
        while (mEntries[slot] * (mUnits[mEntries[slot]] ^ unit) != 0) {
            slot = kLatin + (slot + 1) % kLatin;
        }
        return slot;
    }

    std::array<std::uint8_t, 2 * kLatin> mEntries; ///< of each slot; 0 in a free one
    std::array<char16_t, kBandRows + 1> mUnits;    ///< of each entry; 0 is no entry
    std::array<Word, kBandRows + 1> mRows;         ///< of each entry; none for entry 0
    bool mBeyondLatin = false;                     ///< the slots from kLatin on are in use
};

/// What the lowest row of a band hands down to the next band in one column, a bit each.
struct Border {
    Word holds;   ///< the cell is not greater than the one to its left (not HP)
    Word falls;   ///< the cell is less than the one to its left (HN)
    Word crosses; ///< the row may be the first of a transposition
};

std::uint8_t packed(Border border)
{
    return static_cast<std::uint8_t>(border.holds | border.falls << 1 | border.crosses << 2);
}

Border unpacked(std::uint8_t bits)
{
    return {bits & Word{1}, Word{bits} >> 1 & 1, Word{bits} >> 2};
}

/// 64 rows of one column.
struct Band {
    Word rises;       ///< the cell is greater than the one above (VP)
    Word falls = 0;   ///< the cell is less than the one above (VN)
    Word same = 0;    ///< the cell equals the one above and to the left (D0)
    Word matched = 0; ///< the row's unit is the column's (PM)

    /// Goes one column to the right, where \a matches holds and \a above was handed down.
    Border advance(Word matches, Border above)
    {
        const Word crosses = ~same & matches;
        const Word swapped = ((crosses << 1) + above.crosses) & matched;
        const Word costless = matches | above.falls;
        const Word sum = (costless & rises) + rises;
        const Word holds = (sum | (rises | costless | swapped)) & ~falls;
        same = (sum ^ rises) | (costless | swapped | falls);
        const Word lowers = same & rises;
        const Word holdsAbove = (holds << 1) + above.holds;
        rises = ((lowers << 1) + above.falls) | (~same & holdsAbove);
        falls = same & ~holdsAbove;
        matched = matches;
        return {holds >> 63, lowers >> 63, crosses >> 63};
    }

    /// Returns by how much the \a counted rows rise together.
    std::uint64_t rise(Word counted) const
    {
        return static_cast<std::uint64_t>(std::popcount(rises & counted)) -
               static_cast<std::uint64_t>(std::popcount(falls & counted));
    }
};

/// Compares the pattern with the whole text: row 0 counts the columns.
struct WholeText {
    static constexpr Border kTop = {0, 0, 0};
    static Word matches(Word rows, Word idle) { return rows & ~idle; }
    void lastRow(Border) {}
};

/// Compares the pattern with any part of the text: row 0 is zero, the least cell of the last row
/// counts.
struct AnyPart {
    static constexpr Border kTop = {1, 0, 0};
    static Word matches(Word rows, Word idle) { return rows | idle; }
    void lastRow(Border border)
    {
        cell += 1 - border.holds - border.falls;
        least = std::min(least, cell);
    }
    std::uint64_t cell;
    std::uint64_t least = cell;
};

/// Moves neighbouring bands over the whole text, the borders given by \a above and taken by
/// \a below, and returns by how much the last column rises, down to the \a counted rows of the last
/// band. The processor works on the bands side by side.
template<class Form, class Above, class Below, class... UnitRowsOfBands>
std::uint64_t sweep(QStringView text, Word idle, Word counted, Above above, Below below,
    const UnitRowsOfBands &...rowsOfBands)
{
    constexpr std::size_t kLast = sizeof...(rowsOfBands) - 1;
    const std::array<const UnitRows *, kLast + 1> rows = {&rowsOfBands...};
    std::array<Band, kLast + 1> bands;
    bands.fill({~Word{0}});
    bands[0] = {~idle};
    for (qsizetype column = 0; column < text.size(); ++column) {
        const char16_t unit = text[column].unicode();
        Border border = bands[0].advance(Form::matches(rows[0]->of(unit), idle), above(column));
        for (std::size_t i = 1; i <= kLast; ++i) {
            border = bands[i].advance(rows[i]->of(unit), border);
        }
        below(column, border);
    }
    std::uint64_t result = bands[kLast].rise(counted);
    for (std::size_t i = 0; i < kLast; ++i) {
        result += bands[i].rise(~Word{0});
    }
    return result;
}

/// Rows of the table, counted from the top of the pattern's first band.
struct RowRange {
    std::size_t begin;
    std::size_t end;
};

RowRange rowsFor(QStringView pattern)
{
    const auto size = static_cast<std::size_t>(pattern.size());
    const std::size_t end = bandsFor(size) * kBandRows;
    return {end - size, end};
}

/// Computes a table of the bands from \a band to \a endBand, more than one. Two go together; what
/// a pair hands down is kept for the next one. Not inlined, which would slow short patterns down.
template<class Above, class Last, class Form, class UnitRowsOf>
Q_NEVER_INLINE std::uint64_t computeBands(const Form & /*form*/, QStringView text, Word idle,
    Word counted, std::size_t band, std::size_t endBand, Above top, Last last, UnitRowsOf unitRows)
{
    if (endBand - band == 2) {
        return sweep<Form>(text, idle, counted, top, last, unitRows(band), unitRows(band + 1));
    }

    std::vector<std::uint8_t> borders(static_cast<std::size_t>(text.size()));
    const auto above = [from = borders.data()](qsizetype i) { return unpacked(from[i]); };
    const auto below = [to = borders.data()](
                           qsizetype i, Border border) { to[i] = packed(border); };
    std::uint64_t result =
        sweep<Form>(text, idle, ~Word{0}, top, below, unitRows(band), unitRows(band + 1));
    for (band += 2; endBand - band > 2; band += 2) {
        result += sweep<Form>(text, 0, ~Word{0}, above, below, unitRows(band), unitRows(band + 1));
    }
    if (endBand - band == 2) {
        return result +
               sweep<Form>(text, 0, counted, above, last, unitRows(band), unitRows(band + 1));
    }
    return result + sweep<Form>(text, 0, counted, above, last, unitRows(band));
}

/// Computes a table of \a rows and returns by how much its last column rises. \a unitRows returns
/// the UnitRows of a band, or a reference to them.
template<class Form, class UnitRowsOf>
std::uint64_t compute(Form &form, QStringView text, RowRange rows, UnitRowsOf unitRows)
{
    if (rows.begin == rows.end) {
        return 0;
    }
    const std::size_t band = rows.begin / kBandRows;
    const std::size_t endBand = bandsFor(rows.end);
    const Word idle = (Word{1} << rows.begin % kBandRows) - 1;
    const Word counted = ~Word{0} >> (endBand * kBandRows - rows.end);
    const auto top = [](qsizetype) { return Form::kTop; };
    const auto last = [&form](qsizetype, Border border) { form.lastRow(border); };
    if (endBand - band == 1) {
        return sweep<Form>(text, idle, counted, top, last, unitRows(band));
    }
    return computeBands(form, text, idle, counted, band, endBand, top, last, unitRows);
}

/// Compares \a rows of the pattern with \a text.
template<class UnitRowsOf>
std::uint64_t wholeDistance(QStringView text, RowRange rows, UnitRowsOf unitRows)
{
    WholeText form;
    return static_cast<std::uint64_t>(text.size()) + compute(form, text, rows, unitRows);
}

template<class UnitRowsOf>
std::uint64_t partDistance(QStringView text, RowRange rows, UnitRowsOf unitRows)
{
    AnyPart form{rows.end - rows.begin};
    compute(form, text, rows, unitRows);
    return form.least;
}

/// Makes the UnitRows of a band when they are asked for: one or two bands at a time are enough for
/// a pattern that is used once.
auto unitRowsOf(QStringView pattern)
{
    return [pattern, idle = static_cast<qsizetype>(rowsFor(pattern).begin)](std::size_t band) {
        const qsizetype end = static_cast<qsizetype>((band + 1) * kBandRows) - idle;
        return UnitRows(pattern.first(end).last(std::min<qsizetype>(end, kBandRows)));
    };
}

/// How many units two texts have in common at their ends; they do not add to the distance.
struct CommonEnds {
    CommonEnds(QStringView a, QStringView b)
        : front(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin())
        , back(std::mismatch(a.rbegin(), a.rend() - front, b.rbegin(), b.rend() - front).first -
               a.rbegin())
    {
    }

    QStringView cutFrom(QStringView text) const
    {
        return text.sliced(front, text.size() - front - back);
    }

    qsizetype front;
    qsizetype back;
};

} // namespace

std::uint64_t damerauLevenshteinDistance(const QString &a, const QString &b)
{
    const CommonEnds common(a, b);
    QStringView pattern = common.cutFrom(a);
    QStringView text = common.cutFrom(b);
    const auto steps = [](QStringView down, QStringView right) {
        return bandsFor(static_cast<std::size_t>(down.size())) *
               static_cast<std::size_t>(right.size());
    };
    if (steps(text, pattern) < steps(pattern, text)) {
        std::swap(pattern, text);
    }
    return wholeDistance(text, rowsFor(pattern), unitRowsOf(pattern));
}

std::uint64_t damerauLevenshteinSubstringDistance(const QString &a, const QString &b)
{
    return partDistance(b, rowsFor(a), unitRowsOf(a));
}

struct DamerauLevenshteinMatcher::Prepared {
    QString pattern;
    std::vector<UnitRows> bands;

    auto unitRows() const
    {
        return [this](std::size_t band) -> const UnitRows & { return bands[band]; };
    }
};

DamerauLevenshteinMatcher::DamerauLevenshteinMatcher(const QString &pattern)
{
    auto prepared = std::make_shared<Prepared>();
    prepared->pattern = pattern;
    const std::size_t bands = bandsFor(static_cast<std::size_t>(pattern.size()));
    prepared->bands.reserve(bands);
    for (std::size_t band = 0; band < bands; ++band) {
        prepared->bands.emplace_back(unitRowsOf(prepared->pattern)(band));
    }
    mPrepared = std::move(prepared);
}

DamerauLevenshteinMatcher::DamerauLevenshteinMatcher(const DamerauLevenshteinMatcher &) = default;
DamerauLevenshteinMatcher &DamerauLevenshteinMatcher::operator=(
    const DamerauLevenshteinMatcher &) = default;
DamerauLevenshteinMatcher::~DamerauLevenshteinMatcher() = default;

std::uint64_t DamerauLevenshteinMatcher::distance(const QString &text) const
{
    const QStringView pattern = mPrepared->pattern;
    const CommonEnds common(pattern, text);
    RowRange rows = rowsFor(pattern);
    rows.begin += static_cast<std::size_t>(common.front);
    rows.end -= static_cast<std::size_t>(common.back);
    return wholeDistance(common.cutFrom(text), rows, mPrepared->unitRows());
}

std::uint64_t DamerauLevenshteinMatcher::substringDistance(const QString &text) const
{
    return partDistance(text, rowsFor(mPrepared->pattern), mPrepared->unitRows());
}

} // namespace Vyn::OvraBase::StringUtils
