// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <QStringView>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

// The table has a row for each unit of the pattern and a column for each unit of the text, after a
// row 0 and a column 0. A cell is the distance between the pattern up to its row and the text up to
// its column. For "cable" and "calbe":
//
//           c  a  l  b  e
//        0  1  2  3  4  5
//     c  1  0  1  2  3  4
//     a  2  1  0  1  2  3
//     b  3  2  1  1  1  2
//     l  4  3  2  1  1  2
//     e  5  4  3  2  2  1
//
// Neighbours in a row or a column differ by at most 1. Along a diagonal, down and to the right, a
// cell stays the same or grows by 1. So 64 rows of a column, a band, fit into the bits of a few
// words, and a few operations lead to the next column (H. Hyyrö 2003; the names used there stand in
// brackets below). The lowest bit is the top row. Band::advance() goes from column l to column b
// like this, the top row on the left:
//
//     before      downPlus       00001   e is 2, l above it is 1
//                 downMinus      11000   c is 2 below the 3 of row 0, a is 1 below 2
//                 same           11011   b is 1, the cell above and to the left of it is 0
//                 matches        00010   the column's unit is l
//     on the way  matchesNow     00100   the column's unit is b
//                 begins         00100   row b and the next one may be a swapped pair
//                 swapped        00010   they are: row l matched the column before
//                 costless       00100   equal to the cell above and to the left: the units match
//                 sum            00001   costless & downPlus is 0, so that nothing is carried
//                 rightNotPlus   00111   c and a grew by 1 in this column, the others did not
//                 rightMinus     00000   no cell is less than the one to its left
//                 aboveNotPlus   00011   rightNotPlus of the row above; row 0 grew
//     after       same           11110   e is 2, the cell above and to the left of it is 1
//                 downPlus       00001   the column is 4 in row 0, then 3, 2, 1, 1, 2
//                 downMinus      11100
//
// The carry: where a cell equals the one above and to the left, and the cells of the column before
// rise from row to row, each further cell equals the one above and to the left too. The addition
// passes that on through all set bits of downPlus at once.
//
// A pattern fills its bands from the last row upwards. Rows left over at the top of the first band
// are idle: they repeat row 0.

namespace Vyn::OvraBase::StringUtils {
namespace {

using Word = std::uint64_t;

constexpr std::size_t kBandRows = 64;

std::size_t bandsFor(std::size_t rows)
{
    return (rows + kBandRows - 1) / kBandRows;
}

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

/// The rows of one band, found by keys of one byte.
class RowsByKey {
public:
    /// Removes all keys. Every key has the rows \a idle.
    void clear(Word idle)
    {
        // In parts that become plain stores: clearing it all at once is one slow instruction.
        for (std::size_t part = 0; part < mEntries.size(); part += 64) {
            std::memset(&mEntries[part], 0, 64);
        }
        mRows[0] = idle;
    }

    /// Adds \a row to \a key. \a entry is 1 for the first call, then 2, up to 64.
    void add(std::uint8_t key, Word row, std::size_t entry)
    {
        // A new entry for every row: a branch on whether the key is known would be unpredictable.
        mRows[entry] = mRows[mEntries[key]] | row;
        mEntries[key] = static_cast<std::uint8_t>(entry);
    }

    Word of(std::uint8_t key) const { return mRows[mEntries[key]]; }
    Word idle() const { return mRows[0]; }

private:
    std::array<std::uint8_t, 256> mEntries; ///< of each key; 0 for a key without rows
    std::array<Word, kBandRows + 1> mRows;  ///< of each entry
};

/// Finds the rows of one band whose unit is a given one.
class UnitRows {
public:
    /// The last rows of the band are \a units, at most 64. The idle rows match every unit.
    explicit UnitRows(QStringView units)
    {
        const char16_t *const unit = units.utf16();
        const auto size = static_cast<std::size_t>(units.size());
        const Word first = Word{1} << (kBandRows - size) % kBandRows;
        mByLowByte.clear(first - 1);
        unsigned all = 0;
        for (std::size_t i = 0; i < size; ++i) {
            mByLowByte.add(lowByte(unit[i]), first << i, i + 1);
            all |= unit[i];
        }
        mIsLatin = all <= 0xFF;
        if (!mIsLatin) {
            mByBothBytes.clear(first - 1);
            for (std::size_t i = 0; i < size; ++i) {
                mByBothBytes.add(bothBytes(unit[i]), first << i, i + 1);
            }
        }
    }

    Word of(char16_t unit) const
    {
        if (!mIsLatin) {
            return mByLowByte.of(lowByte(unit)) & mByBothBytes.of(bothBytes(unit));
        }
        return unit <= 0xFF ? mByLowByte.of(lowByte(unit)) : mByLowByte.idle();
    }

private:
    // Units with the same two keys are equal, so the rows that both keys have are exactly those of
    // the unit: a lookup needs neither a loop nor a branch. Either key alone tells most letters of
    // a script apart; the high byte would not, and equal keys in a row make the constructor slow.
    static std::uint8_t lowByte(char16_t unit) { return static_cast<std::uint8_t>(unit); }
    static std::uint8_t bothBytes(char16_t unit)
    {
        return static_cast<std::uint8_t>(lowByte(unit) ^ lowByte(unit >> 8));
    }

    RowsByKey mByLowByte;
    RowsByKey mByBothBytes; ///< not set when mIsLatin
    bool mIsLatin;          ///< no unit is greater than 0xFF
};

/// How the last row of a band goes on in one column, a bit each: what the next band has to know.
struct Border {
    Word rightNotPlus; ///< the cell is not greater than the one to its left (not HP)
    Word rightMinus;   ///< the cell is less than the one to its left (HN)
    Word begins;       ///< the row and the next one may be a swapped pair
};

std::uint8_t packed(Border border)
{
    return static_cast<std::uint8_t>(
        border.rightNotPlus | border.rightMinus << 1 | border.begins << 2);
}

Border unpacked(std::uint8_t bits)
{
    return {bits & Word{1}, Word{bits} >> 1 & 1, Word{bits} >> 2};
}

/// Returns the difference between a cell and the one to its left, modulo 2^64.
std::uint64_t step(Border border)
{
    return 1 - border.rightNotPlus - border.rightMinus;
}

/// 64 rows of one column. The default is column 0.
struct Band {
    Word downPlus = ~Word{0}; ///< the cell is greater than the one above (VP)
    Word downMinus = 0;       ///< the cell is less than the one above (VN)
    Word same = 0;            ///< the cell equals the one above and to the left (D0)
    Word matches = 0;         ///< the row's unit is the column's (PM)

    /// Goes to the next column, whose unit is that of the rows \a matchesNow. \a above is the
    /// border of the band above in that column; the answer is the border of this one.
    Border advance(Word matchesNow, Border above)
    {
        const Word begins = ~same & matchesNow;
        const Word swapped = ((begins << 1) + above.begins) & matches;
        const Word costless = matchesNow | above.rightMinus;
        const Word sum = (costless & downPlus) + downPlus;
        const Word rightNotPlus = (sum | ((downPlus | costless) | swapped)) & ~downMinus;
        same = (sum ^ downPlus) | ((costless | downMinus) | swapped);
        const Word rightMinus = same & downPlus;
        const Word aboveNotPlus = (rightNotPlus << 1) + above.rightNotPlus;
        downPlus = ((rightMinus << 1) + above.rightMinus) | (~same & aboveNotPlus);
        downMinus = same & ~aboveNotPlus;
        matches = matchesNow;
        return {rightNotPlus >> 63, rightMinus >> 63, begins >> 63};
    }

    /// Returns the difference between the lowest of the rows \a counted and the row above the
    /// highest of them.
    std::uint64_t rise(Word counted) const
    {
        return static_cast<std::uint64_t>(std::popcount(downPlus & counted)) -
               static_cast<std::uint64_t>(std::popcount(downMinus & counted));
    }
};

/// One band, or two that go over the text together: their operations overlap (instruction-level
/// parallelism), so that two take little more time than one.
template<std::size_t kCount>
class BandGroup {
public:
    /// \a idle are the idle rows of the first band; \a rows are the UnitRows of each.
    template<class... Rows>
    explicit BandGroup(Word idle, const Rows &...rows)
        : mIdle(idle)
        , mRows{&rows...}
    {
        mBands[0].downPlus = ~idle;
    }

    /// Goes to the next column, whose unit is \a unit, and returns the border of the last band.
    template<class Form>
    Border advance(char16_t unit, Border above)
    {
        Border border = mBands[0].advance(Form::matches(mRows[0]->of(unit), mIdle), above);
        for (std::size_t i = 1; i < kCount; ++i) {
            border = mBands[i].advance(mRows[i]->of(unit), border);
        }
        return border;
    }

    /// Returns the difference between the lowest of the last band's rows \a counted and the row
    /// above the group.
    std::uint64_t rise(Word counted) const
    {
        std::uint64_t result = mBands[kCount - 1].rise(counted);
        for (std::size_t i = 0; i + 1 < kCount; ++i) {
            result += mBands[i].rise(~Word{0});
        }
        return result;
    }

    /// Returns true if, in \a row of the last band, the cell equals the one above and to the left.
    bool isSame(Word row) const { return (mBands[kCount - 1].same & row) != 0; }

private:
    Word mIdle;
    std::array<const UnitRows *, kCount> mRows;
    std::array<Band, kCount> mBands;
};

/// Rows of a table, counted from the first row of the pattern's first band, idle rows included.
struct RowRange {
    std::size_t begin;
    std::size_t end;

    std::size_t size() const { return end - begin; }
    std::size_t firstBand() const { return begin / kBandRows; }
    std::size_t endBand() const { return bandsFor(end); }
    std::size_t bands() const { return endBand() - firstBand(); }
    /// The rows of the first band that are not among these.
    Word idle() const { return (Word{1} << begin % kBandRows) - 1; }
    /// The rows of the last band that are among these.
    Word counted() const { return ~Word{0} >> (endBand() * kBandRows - end); }
};

/// The rows and columns of a table, and the greatest distance that the caller wants to know.
struct Comparison {
    RowRange rows;
    QStringView text;
    std::uint64_t limit;

    std::size_t columns() const { return static_cast<std::size_t>(text.size()); }
};

std::uint64_t capped(std::uint64_t distance, std::uint64_t limit)
{
    return distance > limit ? limit + 1 : distance;
}

/// The distance to the whole text: row 0 counts the columns, the last cell is the distance.
class WholeText {
public:
    static constexpr bool kIsWhole = true;
    static constexpr Border kTop = {0, 0, 0};
    static Word matches(Word rows, Word idle) { return rows & ~idle; }

    /// \a corner is the cell in the last column above the last group of bands.
    WholeText(const Comparison &table, std::uint64_t corner)
        : mCorner(corner)
        , mCounted(table.rows.counted())
    {
    }

    void add(Border /*lastRow*/) {}

    template<class Group>
    std::uint64_t distance(const Group &lastColumn) const
    {
        return mCorner + lastColumn.rise(mCounted);
    }

private:
    std::uint64_t mCorner;
    Word mCounted;
};

/// The distance to any part of the text: row 0 is zero, the least cell of the last row is the
/// distance.
class AnyPart {
public:
    static constexpr bool kIsWhole = false;
    static constexpr Border kTop = {1, 0, 0};
    static Word matches(Word rows, Word /*idle*/) { return rows; }

    AnyPart(const Comparison &table, std::uint64_t /*corner*/)
        : mCell(table.rows.size())
        , mLeast(mCell)
    {
    }

    void add(Border lastRow)
    {
        mCell = mCell + 1 - lastRow.rightNotPlus - lastRow.rightMinus;
        mLeast = std::min(mLeast, mCell);
    }

    template<class Group>
    std::uint64_t distance(const Group & /*lastColumn*/) const
    {
        return mLeast;
    }

private:
    std::uint64_t mCell;
    std::uint64_t mLeast;
};

/// Moves \a group, the last one of a table, over \a text, and returns the distance. \a above
/// returns the border above a column.
template<class Form, class Group, class Above>
std::uint64_t finish(QStringView text, Group group, Above above, Form form)
{
    for (qsizetype column = 0; column < text.size(); ++column) {
        form.add(group.template advance<Form>(text[column].unicode(), above(column)));
    }
    return form.distance(group);
}

/// Returns the distance to the whole text, or limit + 1, for a pattern of one band.
///
/// The diagonal that ends in the last cell never falls. So its cells are counted up, until one is
/// greater than the limit.
std::uint64_t followDiagonal(const Comparison &table, const UnitRows &unitRows)
{
    const std::size_t rows = table.rows.size();
    const std::size_t columns = table.columns();
    const std::size_t firstColumn = columns > rows ? columns - rows : 0;
    const std::size_t firstRow = rows > columns ? rows - columns : 0;
    const char16_t *const units = table.text.utf16();
    BandGroup<1> band(table.rows.idle(), unitRows);
    for (std::size_t column = 0; column < firstColumn; ++column) {
        band.advance<WholeText>(units[column], WholeText::kTop);
    }
    std::uint64_t cell = firstColumn + firstRow;
    Word row = Word{1} << (table.rows.begin + firstRow) % kBandRows;
    for (std::size_t column = firstColumn; column < columns && cell <= table.limit; ++column) {
        band.advance<WholeText>(units[column], WholeText::kTop);
        cell += band.isSame(row) ? 0 : 1;
        row <<= 1;
    }
    return cell;
}

/// Returns the distance, or more than the limit, for a pattern of more than two bands.
///
/// Two bands go over the text together; the borders of the lower one are kept for the next two.
/// With a limit, the distance to the whole text needs only the cells next to the diagonal of the
/// table: a path to the last cell that leaves them costs more.
template<class Form, class UnitRowsOf>
std::uint64_t computeManyBands(const Comparison &table, UnitRowsOf unitRows)
{
    const std::size_t columns = table.columns();
    const char16_t *const units = table.text.utf16();
    const bool isLimited = table.limit < std::max(columns, table.rows.size());
    std::vector<std::uint8_t> borders(columns, packed(Form::kTop));

    std::size_t band = table.rows.firstBand();
    Word idle = table.rows.idle();
    std::size_t rows = 0;   // that are computed
    std::size_t from = 0;   // the first column that the next bands need
    std::uint64_t cell = 0; // in the last computed row, one column before `from`
    for (; table.rows.endBand() - band > 2; band += 2) {
        const std::size_t newRows = (band + 2) * kBandRows - table.rows.begin - rows;
        rows += newRows;
        std::size_t end = columns;
        std::size_t next = 0;
        if (Form::kIsWhole && isLimited) {
            end = std::min<std::size_t>(columns, rows + table.limit);
            next = rows > table.limit ? rows - table.limit - 1 : 0;
        }

        const UnitRows &upper = unitRows(band);
        const UnitRows &lower = unitRows(band + 1);
        BandGroup<2> pair(idle, upper, lower);
        for (std::size_t i = from; i < end; ++i) {
            borders[i] = packed(pair.advance<Form>(units[i], unpacked(borders[i])));
        }
        idle = 0;
        cell += newRows;
        if (!isLimited) {
            continue;
        }

        for (; from < next; ++from) {
            cell += step(unpacked(borders[from]));
        }
        // No path gets from one row to a lower one for less than the least cell of the upper one.
        std::uint64_t least = cell;
        std::uint64_t last = cell;
        for (std::size_t i = from; i < end; ++i) {
            last += step(unpacked(borders[i]));
            least = std::min(least, last);
        }
        if (least > table.limit) {
            return least;
        }
    }

    std::uint64_t corner = cell;
    for (std::size_t i = from; Form::kIsWhole && i < columns; ++i) {
        corner += step(unpacked(borders[i]));
    }
    const Form form(table, corner);
    const QStringView text = table.text.sliced(static_cast<qsizetype>(from));
    const auto above = [first = &borders[from]](qsizetype i) { return unpacked(first[i]); };
    const UnitRows &upper = unitRows(band);
    if (table.rows.endBand() - band == 1) {
        return finish(text, BandGroup<1>(0, upper), above, form);
    }
    const UnitRows &lower = unitRows(band + 1);
    return finish(text, BandGroup<2>(0, upper, lower), above, form);
}

/// Does so for a pattern of more than one band. Not inlined, which would slow short patterns down.
template<class Form, class UnitRowsOf>
Q_NEVER_INLINE std::uint64_t computeBands(const Comparison &table, UnitRowsOf unitRows)
{
    if (table.rows.bands() > 2) {
        return computeManyBands<Form>(table, unitRows);
    }
    const auto top = [](qsizetype) { return Form::kTop; };
    const UnitRows &upper = unitRows(table.rows.firstBand());
    const UnitRows &lower = unitRows(table.rows.firstBand() + 1);
    const BandGroup<2> pair(table.rows.idle(), upper, lower);
    return finish(table.text, pair, top, Form(table, table.columns()));
}

/// Returns the distance, or limit + 1. \a unitRows returns the UnitRows of a band, or a reference
/// to them.
template<class Form, class UnitRowsOf>
std::uint64_t compute(const Comparison &table, UnitRowsOf unitRows)
{
    if (table.rows.size() == 0 || table.columns() == 0) {
        return capped(table.rows.size() + (Form::kIsWhole ? table.columns() : 0), table.limit);
    }
    if (table.rows.bands() > 1) {
        return capped(computeBands<Form>(table, unitRows), table.limit);
    }
    const UnitRows &rows = unitRows(table.rows.firstBand());
    if (Form::kIsWhole && table.limit != kNoLimit) {
        return followDiagonal(table, rows);
    }
    const auto top = [](qsizetype) { return Form::kTop; };
    const BandGroup<1> band(table.rows.idle(), rows);
    const Form form(table, table.columns());
    return capped(finish(table.text, band, top, form), table.limit);
}

/// The numbers of units that two texts have in common at their ends. These units do not add to the
/// distance.
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

RowRange rowsFor(QStringView pattern)
{
    const auto size = static_cast<std::size_t>(pattern.size());
    const std::size_t end = bandsFor(size) * kBandRows;
    return {end - size, end};
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
    return compute<WholeText>({rowsFor(pattern), text, kNoLimit}, unitRowsOf(pattern));
}

std::uint64_t damerauLevenshteinSubstringDistance(const QString &a, const QString &b)
{
    return compute<AnyPart>({rowsFor(a), b, kNoLimit}, unitRowsOf(a));
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
    return distance(text, kNoLimit);
}

std::uint64_t DamerauLevenshteinMatcher::distance(const QString &text, std::uint64_t limit) const
{
    const QStringView pattern = mPrepared->pattern;
    const auto gap = static_cast<std::uint64_t>(std::abs(pattern.size() - text.size()));
    if (gap > limit) {
        return limit + 1;
    }
    const CommonEnds common(pattern, text);
    RowRange rows = rowsFor(pattern);
    rows.begin += static_cast<std::size_t>(common.front);
    rows.end -= static_cast<std::size_t>(common.back);
    return compute<WholeText>({rows, common.cutFrom(text), limit}, mPrepared->unitRows());
}

std::uint64_t DamerauLevenshteinMatcher::substringDistance(const QString &text) const
{
    return substringDistance(text, kNoLimit);
}

std::uint64_t DamerauLevenshteinMatcher::substringDistance(
    const QString &text, std::uint64_t limit) const
{
    const QStringView pattern = mPrepared->pattern;
    if (pattern.size() > text.size() &&
        static_cast<std::uint64_t>(pattern.size() - text.size()) > limit) {
        return limit + 1;
    }
    return compute<AnyPart>({rowsFor(pattern), text, limit}, mPrepared->unitRows());
}

} // namespace Vyn::OvraBase::StringUtils
