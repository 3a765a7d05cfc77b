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

// The table
//
// The table of a distance has a row 0 and a row for each unit (UTF-16 code unit) of the pattern,
// and a column 0 and a column for each unit of the text. A cell is the distance between the pattern
// up to its row and the text up to its column. For the pattern "cable" and the text "calbe":
//
//           c  a  l  b  e
//        0  1  2  3  4  5
//     c  1  0  1  2  3  4
//     a  2  1  0  1  2  3
//     b  3  2  1  1  1  2
//     l  4  3  2  1  1  2
//     e  5  4  3  2  2  1
//
// This is the table of the distance to the whole text. In the table of the least distance to any
// part of the text, row 0 is 0 in every column; the rules below are the same.
//
// Below, "above" is the cell above a cell, "left" the cell to its left, and "corner" the cell to
// the left of the one above. A cell is the least of
//     left + 1 (an insertion) and above + 1 (a deletion),
//     corner if the units of its row and its column match, and corner + 1 otherwise,
//     the cell two rows up and two columns to the left, + 1, if a swapped pair ends here.
//
// Neighbours in a row or a column differ by at most 1, and a cell is equal to its corner or greater
// by 1. So row 0 and two bits per row give a column: one for "above + 1" and one for "above - 1". A
// Band holds the bits of 64 rows, the top row in the lowest bit. So "<< 1" moves each bit to the
// row below. The top row then gets the bit of the last row of the band above, or of row 0, from a
// Border.
//
// The rules
//
// Each row of the new column follows from these rules; Band::advance() computes all 64 at once. A
// row is called same in a column if its cell there fulfils that rule; the other names are used in
// the same way. The names in brackets are those of the paper (H. Hyyrö 2003, see StringUtils.h).
//
//     same         (D0)   The cell equals its corner: the units match, or a swapped pair ends here
//                         (its condition is below), or left is corner - 1, or above is corner - 1.
//     rightMinus   (HN)   The cell is left - 1: it equals its corner, and left is corner + 1.
//     rightPlus    (HP)   The cell is left + 1: left is corner - 1, or left equals corner and the
//                         cell is corner + 1. The code has the inverse, rightNotPlus.
//     downPlus     (VP)   The cell is above + 1: above is corner - 1, or above equals corner
//                         and the cell is corner + 1.
//     downMinus    (VN)   The cell is above - 1: above is corner + 1, and the cell equals corner.
//
// "left is corner + 1" is downPlus of the column before, and "left is corner - 1" is its downMinus.
// "above is corner + 1" is rightPlus of the row above, and "above is corner - 1" is its rightMinus.
//
// A swapped pair ends in a row whose unit is that of the column before, below a row whose unit is
// that of this column. The cell two rows up and two columns to the left is the corner of the
// corner. If the row above was not same in the column before, that cell + 1 is the corner, and the
// swap makes the lower row same. Otherwise, that cell + 1 is corner + 1, and the swap changes
// nothing. In the code, the row above is in begins, and the lower row is in swapped.
//
// The carry
//
// "Above is corner - 1" holds if the row above is same, and was downPlus in the column before. So a
// same row that was downPlus makes the row below same. If that row was downPlus, too, it makes the
// next row same, and so on. One addition does this for all rows at once:
//     sum = (costless & downPlus) + downPlus
//
// A row is costless if its unit matches, or if it is the first row of the band and the band above
// ends in a rightMinus row. A carry starts in each costless row that was downPlus, runs through the
// downPlus rows below it, and stops in the first row that was not downPlus. Each row that a carry
// enters is same. Its bit in the sum differs from downPlus, or the row is costless. So same is
// (sum ^ downPlus) | costless | downMinus | swapped.
//
// The other two reasons to be same start no carry, because such a row was not downPlus. If left is
// corner - 1, the row was downMinus. If a swapped pair ends in the row, neither condition of
// downPlus held in the column before: the row matched that column and so was same, and the row
// above was not same and so not rightMinus.
//
// rightNotPlus is (same | downPlus) & ~downMinus, with the new same, and with downPlus and
// downMinus of the column before. The code has the terms of same instead: "(sum ^ downPlus) |
// downPlus" is "sum | downPlus", and "& ~downMinus" removes the term downMinus.
//
// The bands
//
// The last row of a pattern is the last row of its last band. The rows above its first row, in the
// first band, are idle: their cells equal row 0. DamerauLevenshteinMatcher::distance() makes the
// rows of a prefix that pattern and text have in common idle, too. It takes the distance from the
// last row above a common suffix.
//
// An example
//
// Band::advance() goes from column l to column b. The top row is written on the left, so that << 1
// moves the digits to the right. The idle rows are left out.
//
//     column l    downPlus       00001   e is 2, and l above it is 1
//                 downMinus      11000   c is 2, and row 0 above it is 3; a is 1, and c is 2
//                 same           11011   all but b, which is 1 and whose corner is 0
//                 matches        00010   row l
//     advance()   matchesNow     00100   row b
//                 begins         00100   row b matches now, and was not same
//                 swapped        00010   row l, below row b, matched the column before
//                 costless       00100   row b; row 0 is not rightMinus
//                 sum            00001   costless & downPlus is 0, so that nothing is carried
//                 rightNotPlus   00111   c and a are greater by 1 than in the column before
//                 same           11110   all but e, which is 2 and whose corner is 1
//                 rightMinus     00000   no cell is less than in the column before
//                 aboveNotPlus   00011   rightNotPlus, one row further down; row 0 is rightPlus
//     column b    downPlus       00001   the new column is 4 in row 0, then 3, 2, 1, 1, 2
//                 downMinus      11100
//
// From column 0 to column c, a carry runs. downPlus is 11111 and costless is 10000, so that the sum
// is 00000. So sum ^ downPlus and same are 11111: the cells 0, 1, 2, 3, 4 equal their corners.

namespace Vyn::OvraBase::StringUtils {
namespace {

using Word = std::uint64_t;

constexpr std::size_t kBandRows = 64;

std::size_t bandsFor(std::size_t rows)
{
    return (rows + kBandRows - 1) / kBandRows;
}

constexpr std::uint64_t kNoLimit = std::numeric_limits<std::uint64_t>::max();

/// Maps a key of one byte to a set of rows of one band.
class RowsByKey {
public:
    /// Maps every key to \a idle.
    void clear(Word idle)
    {
        // In parts, for which the compiler makes plain stores. For the whole array, it makes one
        // string instruction, which is slower.
        for (std::size_t part = 0; part < mEntries.size(); part += 64) {
            std::memset(&mEntries[part], 0, 64);
        }
        mRows[0] = idle;
    }

    /// Adds \a row to the rows of \a key. \a entry is the number of the call, from 1 to 64.
    void add(std::uint8_t key, Word row, std::size_t entry)
    {
        // A new entry in every call. To reuse the entry of a known key would need a branch that the
        // processor cannot predict.
        mRows[entry] = mRows[mEntries[key]] | row;
        mEntries[key] = static_cast<std::uint8_t>(entry);
    }

    Word of(std::uint8_t key) const { return mRows[mEntries[key]]; }
    Word idle() const { return mRows[0]; }

private:
    std::array<std::uint8_t, 256> mEntries; ///< key to entry; 0 if no row was added
    std::array<Word, kBandRows + 1> mRows;  ///< entry to rows; entry 0 has the idle rows
};

/// Maps a unit to the rows of one band that match it.
class UnitRows {
public:
    /// \a units are the units of the last rows of the band, at most 64. The rows above them are
    /// idle, and match every unit.
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
    // Units with the same two keys are equal. So the rows of a unit are the rows that both keys
    // have, and a lookup needs no search. The second key is not the high byte, because that is the
    // same for most letters of a script, and add() is slow for equal keys in succession: each call
    // then waits for the rows that the previous call stored.
    static std::uint8_t lowByte(char16_t unit) { return static_cast<std::uint8_t>(unit); }
    static std::uint8_t bothBytes(char16_t unit)
    {
        return static_cast<std::uint8_t>(lowByte(unit) ^ lowByte(unit >> 8));
    }

    RowsByKey mByLowByte;
    RowsByKey mByBothBytes; ///< not initialised if mIsLatin
    bool mIsLatin;          ///< no unit is greater than 0xFF
};

/// What the band below needs to know of the last row of a band in one column. Each field is 0 or 1.
struct Border {
    Word rightNotPlus; ///< the cell is not greater than the one to its left (not HP)
    Word rightMinus;   ///< the cell is less than the one to its left (HN)
    Word begins;       ///< the row may be the upper row of a swapped pair
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

/// Returns the cell of \a border minus the one to its left, modulo 2^64.
std::uint64_t step(Border border)
{
    return 1 - border.rightNotPlus - border.rightMinus;
}

/// 64 rows of one column, a bit per row. A default-initialised band is column 0 of 64 rows that are
/// not idle.
struct Band {
    Word downPlus = ~Word{0}; ///< the cell is greater than the one above (VP)
    Word downMinus = 0;       ///< the cell is less than the one above (VN)
    Word same = 0;            ///< the cell equals its corner, above and to the left (D0)
    Word matches = 0;         ///< the unit of the row is the unit of the column (PM)

    /// Goes to the next column. \a matchesNow are the rows that match its unit. \a above is the
    /// border of the band above in that column. Returns the border of this band.
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

    /// Subtracts from each cell of \a rows the cell above it. Returns the sum of the differences,
    /// modulo 2^64.
    std::uint64_t rise(Word rows) const
    {
        return static_cast<std::uint64_t>(std::popcount(downPlus & rows)) -
               static_cast<std::uint64_t>(std::popcount(downMinus & rows));
    }
};

/// One band, or two adjacent bands that advance together. The processor overlaps the operations of
/// the two (instruction-level parallelism), so that two take little more time than one.
template<std::size_t kCount>
class BandGroup {
public:
    /// \a idle are the idle rows of the first band. \a rows are the UnitRows of each band, which
    /// must outlive the group.
    template<class... Rows>
    explicit BandGroup(Word idle, const Rows &...rows)
        : mIdle(idle)
        , mRows{&rows...}
    {
        mBands[0].downPlus = ~idle;
    }

    /// Goes to the next column, whose unit is \a unit. \a above is the border of the band above.
    /// Returns the border of the last band.
    template<class Kind>
    Border advance(char16_t unit, Border above)
    {
        Border border = mBands[0].advance(Kind::matches(mRows[0]->of(unit), mIdle), above);
        for (std::size_t i = 1; i < kCount; ++i) {
            border = mBands[i].advance(mRows[i]->of(unit), border);
        }
        return border;
    }

    /// Returns the cell in the bottom row of \a lastRows minus the cell above the group, modulo
    /// 2^64. \a lastRows are the rows of the last band from its top down to any row.
    std::uint64_t rise(Word lastRows) const
    {
        std::uint64_t result = mBands[kCount - 1].rise(lastRows);
        for (std::size_t i = 0; i + 1 < kCount; ++i) {
            result += mBands[i].rise(~Word{0});
        }
        return result;
    }

    /// Returns true if the cell in \a row of the last band equals its corner.
    bool isSame(Word row) const { return (mBands[kCount - 1].same & row) != 0; }

private:
    Word mIdle;
    std::array<const UnitRows *, kCount> mRows;
    std::array<Band, kCount> mBands;
};

/// The rows of a table. They are counted from 0 at the top of band 0, so that number i is in band
/// i / 64. Idle rows are counted, but row 0 of the table is not.
struct RowRange {
    std::size_t begin; ///< the first row that is not idle
    std::size_t end;   ///< the row after the last one

    std::size_t size() const { return end - begin; }
    std::size_t firstBand() const { return begin / kBandRows; }
    std::size_t endBand() const { return bandsFor(end); }
    std::size_t bands() const { return endBand() - firstBand(); }
    /// Returns the rows of the first band that are idle.
    Word idle() const { return (Word{1} << begin % kBandRows) - 1; }
    /// Returns the rows of the last band that come before `end`.
    Word counted() const { return ~Word{0} >> (endBand() * kBandRows - end); }
};

/// A table to compute.
struct Comparison {
    RowRange rows;
    QStringView text;
    std::uint64_t limit; ///< the exact value of a greater distance is not needed

    std::size_t columns() const { return static_cast<std::size_t>(text.size()); }
};

std::uint64_t capped(std::uint64_t distance, std::uint64_t limit)
{
    return distance > limit ? limit + 1 : distance;
}

// The two kinds of distances, WholeText and AnyPart, differ in row 0 and in where the distance is
// found in the table.

/// The distance to the whole text. Row 0 counts the columns. The last cell is the distance.
class WholeText {
public:
    static constexpr bool kIsWhole = true;
    static constexpr Border kTop = {0, 0, 0}; ///< the border of row 0: greater in each column
    /// Returns the rows that match a unit. Idle rows match none, so that their cells grow by 1 in
    /// each column, as those of row 0 do.
    static Word matches(Word rows, Word idle) { return rows & ~idle; }

    /// \a base is the cell in the last column of the row above the last group of bands.
    WholeText(const Comparison &table, std::uint64_t base)
        : mBase(base)
        , mCounted(table.rows.counted())
    {
    }

    void addColumn(Border /*lastRow*/) {}

    template<class Group>
    std::uint64_t distance(const Group &lastColumn) const
    {
        return mBase + lastColumn.rise(mCounted);
    }

private:
    std::uint64_t mBase;
    Word mCounted;
};

/// The least distance to any part of the text. Row 0 is 0 in every column, because a part can begin
/// anywhere. The least cell of the last row is the distance, because a part can end anywhere.
class AnyPart {
public:
    static constexpr bool kIsWhole = false;
    static constexpr Border kTop = {1, 0, 0}; ///< the border of row 0: the same in each column
    /// Returns the rows that match a unit. Idle rows match all, so that their cells stay 0.
    static Word matches(Word rows, Word /*idle*/) { return rows; }

    AnyPart(const Comparison &table, std::uint64_t /*base*/)
        : mCell(table.rows.size())
        , mLeast(mCell)
    {
    }

    void addColumn(Border lastRow)
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
    std::uint64_t mCell;  ///< in the last row and the current column
    std::uint64_t mLeast; ///< in the last row so far
};

/// Advances \a group, the last bands of a table, over \a text, and returns the distance. \a above
/// returns the border of the row above the group in a column.
template<class Kind, class Group, class Above>
std::uint64_t finish(QStringView text, Group group, Above above, Kind kind)
{
    for (qsizetype column = 0; column < text.size(); ++column) {
        kind.addColumn(group.template advance<Kind>(text[column].unicode(), above(column)));
    }
    return kind.distance(group);
}

/// Returns the distance to the whole text, or limit + 1, for a table of one band.
///
/// Follows the diagonal that ends in the last cell. Each cell of a diagonal equals the one before
/// or is greater by 1, so that the loop can stop at the first cell that is greater than the limit.
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
    // The diagonal begins in row 0 or in column 0. There, the cell is the number of the column or
    // of the row; the other number is 0.
    std::uint64_t cell = firstColumn + firstRow;
    Word row = Word{1} << (table.rows.begin + firstRow) % kBandRows;
    for (std::size_t column = firstColumn; column < columns && cell <= table.limit; ++column) {
        band.advance<WholeText>(units[column], WholeText::kTop);
        cell += band.isSame(row) ? 0 : 1;
        row <<= 1;
    }
    return cell;
}

/// Returns the distance for a table of more than two bands. If the distance is greater than the
/// limit, returns a number that is greater than the limit.
///
/// Two bands at a time advance over the text. The borders of the lower one are stored for the next
/// two bands.
///
/// With a limit, the distance to the whole text needs only the cells near the diagonal: column and
/// row differ by at most the limit. All other cells are greater than the limit.
template<class Kind, class UnitRowsOf>
std::uint64_t computeManyBands(const Comparison &table, UnitRowsOf unitRows)
{
    const std::size_t columns = table.columns();
    const char16_t *const units = table.text.utf16();
    const bool isLimited = table.limit < std::max(columns, table.rows.size());
    // The borders of the last computed row, from unit `from` on. Those before it are not read any
    // more. From unit `end` on, they are still those of row 0, so that the cells there may be too
    // great, but never too small.
    std::vector<std::uint8_t> borders(columns, packed(Kind::kTop));

    std::size_t band = table.rows.firstBand();
    Word idle = table.rows.idle();
    std::size_t rows = 0; // the number of computed rows
    std::size_t from = 0; // the first unit of the text that the next bands need
    // In the last computed row, in the column before unit `from`. It is exact, or it is too great
    // and the exact cell is greater than the limit.
    std::uint64_t cell = 0;
    for (; table.rows.endBand() - band > 2; band += 2) {
        const std::size_t newRows = (band + 2) * kBandRows - table.rows.begin - rows;
        rows += newRows;
        std::size_t end = columns; // the unit after the last one that these bands need
        std::size_t next = 0;      // `from` of the next bands
        if (Kind::kIsWhole && isLimited) {
            end = std::min<std::size_t>(columns, rows + table.limit);
            next = rows > table.limit ? rows - table.limit - 1 : 0;
        }

        const UnitRows &upper = unitRows(band);
        const UnitRows &lower = unitRows(band + 1);
        BandGroup<2> pair(idle, upper, lower);
        for (std::size_t i = from; i < end; ++i) {
            borders[i] = packed(pair.advance<Kind>(units[i], unpacked(borders[i])));
        }
        idle = 0;
        cell += newRows;
        if (!isLimited) {
            continue;
        }

        for (; from < next; ++from) {
            cell += step(unpacked(borders[from]));
        }
        // No cell further down is less than the least cell of this row. A swapped pair can skip the
        // row, but it ends in a cell whose corner is in this row and is not greater.
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

    std::uint64_t base = cell;
    for (std::size_t i = from; Kind::kIsWhole && i < columns; ++i) {
        base += step(unpacked(borders[i]));
    }
    const Kind kind(table, base);
    const QStringView text = table.text.sliced(static_cast<qsizetype>(from));
    const auto above = [first = &borders[from]](qsizetype i) { return unpacked(first[i]); };
    const UnitRows &upper = unitRows(band);
    if (table.rows.endBand() - band == 1) {
        return finish(text, BandGroup<1>(0, upper), above, kind);
    }
    const UnitRows &lower = unitRows(band + 1);
    return finish(text, BandGroup<2>(0, upper, lower), above, kind);
}

/// Returns the distance for a table of more than one band. If the distance is greater than the
/// limit, returns a number that is greater than the limit. Not inlined: inlining would make
/// compute() slower for short patterns.
template<class Kind, class UnitRowsOf>
Q_NEVER_INLINE std::uint64_t computeBands(const Comparison &table, UnitRowsOf unitRows)
{
    if (table.rows.bands() > 2) {
        return computeManyBands<Kind>(table, unitRows);
    }
    const auto top = [](qsizetype) { return Kind::kTop; };
    const UnitRows &upper = unitRows(table.rows.firstBand());
    const UnitRows &lower = unitRows(table.rows.firstBand() + 1);
    const BandGroup<2> pair(table.rows.idle(), upper, lower);
    return finish(table.text, pair, top, Kind(table, table.columns()));
}

/// Returns the distance, or limit + 1 if it is greater than the limit. \a unitRows is a function
/// that returns the UnitRows of a band, by value or by reference.
template<class Kind, class UnitRowsOf>
std::uint64_t compute(const Comparison &table, UnitRowsOf unitRows)
{
    if (table.rows.size() == 0 || table.columns() == 0) {
        return capped(table.rows.size() + (Kind::kIsWhole ? table.columns() : 0), table.limit);
    }
    if (table.rows.bands() > 1) {
        return capped(computeBands<Kind>(table, unitRows), table.limit);
    }
    const UnitRows &rows = unitRows(table.rows.firstBand());
    if (Kind::kIsWhole && table.limit != kNoLimit) {
        return followDiagonal(table, rows);
    }
    const auto top = [](qsizetype) { return Kind::kTop; };
    const BandGroup<1> band(table.rows.idle(), rows);
    const Kind kind(table, table.columns());
    return capped(finish(table.text, band, top, kind), table.limit);
}

/// The common prefix and the common suffix of two texts. The distance of the texts is the same
/// without them.
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

    qsizetype front; ///< the size of the prefix
    qsizetype back;  ///< the size of the suffix of what follows the prefix
};

RowRange rowsFor(QStringView pattern)
{
    const auto size = static_cast<std::size_t>(pattern.size());
    const std::size_t end = bandsFor(size) * kBandRows;
    return {end - size, end};
}

/// Returns a function that makes the UnitRows of a band in each call. It stores none, because a
/// pattern that is used only once needs the UnitRows of only one or two bands at a time.
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
    // The distance is symmetric: the text that needs fewer steps as the pattern becomes the
    // pattern.
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
