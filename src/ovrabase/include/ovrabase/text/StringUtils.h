// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Edit distances, names of copies, XML element names, escapes, option parsing and character
/// classes.
///
/// The functions have no state, accept every input and are thread-safe. All take linear time,
/// except the edit distances.
namespace Vyn::OvraBase::StringUtils {

/// \name Edit distances
///
/// The restricted Damerau-Levenshtein distance, also called optimal string alignment distance. An
/// insertion, a deletion, a substitution and a transposition of two adjacent characters cost 1
/// each. No edit applies to a pair that was transposed, so that the distance of "ca" and "abc"
/// is 3.
///
/// Characters are UTF-16 code units, compared for equality: case matters, nothing is normalised,
/// and a character outside the Basic Multilingual Plane counts as two.
///
/// The time is in the order of n * ceil(m / 64), where m is the length of \a a or of the pattern,
/// and n is the length of \a b or of the text. damerauLevenshteinDistance() exchanges \a a and
/// \a b if that is faster. The 64 bits of a word hold 64 rows of the dynamic-programming table,
/// which are computed together (H. Hyyrö, "A bit-vector algorithm for computing Levenshtein and
/// Damerau edit distances", Nordic Journal of Computing 10, 2003).
///
/// A comparison needs no memory from the heap if both texts have at most 128 units. Otherwise, it
/// needs at most one byte per unit of the longer text. The only exception is std::bad_alloc.
/// Thread-safe.
/// @{

/// Returns the least number of edits that turn \a a into \a b. It is the same in the other
/// direction.
OVRABASE_EXPORT std::uint64_t damerauLevenshteinDistance(const QString &a, const QString &b);

/// Returns the least distance between \a a and any contiguous part of \a b. The part may be empty,
/// so that the result is at most the length of \a a.
OVRABASE_EXPORT std::uint64_t damerauLevenshteinSubstringDistance(
    const QString &a, const QString &b);

/// Computes the distances between one pattern and many texts. This is faster than the functions
/// above, because the lookup tables for the pattern are made only once.
///
/// A matcher needs about 1.5 KiB for every 64 units of its pattern. Copies share that memory.
/// Several threads may use a matcher at the same time.
class OVRABASE_EXPORT DamerauLevenshteinMatcher {
public:
    /// Makes the lookup tables for \a pattern.
    explicit DamerauLevenshteinMatcher(const QString &pattern);
    DamerauLevenshteinMatcher(const DamerauLevenshteinMatcher &other);
    DamerauLevenshteinMatcher &operator=(const DamerauLevenshteinMatcher &other);
    ~DamerauLevenshteinMatcher();

    /// Returns damerauLevenshteinDistance() of the pattern and \a text.
    std::uint64_t distance(const QString &text) const;

    /// Returns distance(text) if it is at most \a limit, and \a limit + 1 otherwise.
    ///
    /// Stops at once if the lengths differ by more than \a limit. With a pattern of up to 64 units,
    /// can stop before the end of \a text if the distance is greater than \a limit: normally after
    /// a few units of an unrelated text. With a pattern of more than 128 units, the time is in the
    /// order of n * (1 + limit / 64).
    std::uint64_t distance(const QString &text, std::uint64_t limit) const;

    /// Returns damerauLevenshteinSubstringDistance() of the pattern and \a text.
    std::uint64_t substringDistance(const QString &text) const;

    /// Returns substringDistance(text) if it is at most \a limit, and \a limit + 1 otherwise.
    ///
    /// Stops at once if \a text is shorter than the pattern by more than \a limit. Otherwise reads
    /// all of \a text, because a match can be at its end. With a pattern of more than 128 units,
    /// processes the pattern in pieces of 128 units at most, and stops after a piece if the pattern
    /// up to there has a distance greater than \a limit from every part of \a text.
    std::uint64_t substringDistance(const QString &text, std::uint64_t limit) const;

private:
    struct Prepared;
    std::shared_ptr<const Prepared> mPrepared;
};

/// @}

/// Returns a name for a copy of \a name: "Wall copy" for "Wall", "Wall copy 2" for "Wall copy", and
/// "Wall copy 3" for "Wall copy 2".
///
/// If "copy" has a translation (empty context), only that is recognised and appended. A number that
/// does not fit a signed 32-bit integer counts as 0. The greatest one that fits is increased, too:
/// "Wall copy 2147483647" gives "Wall copy 2147483648". A number is increased only if the name is a
/// single line; one line feed after the number is allowed, and removed. To a numbered name of
/// several lines, " copy" is appended. Other names keep their line feeds.
OVRABASE_EXPORT QString getCopyName(const QString &name);

/// Removes characters from \a text until it is a valid XML element name, and returns the result.
/// It may be empty, which is not a valid name.
///
/// Keeps ASCII letters, ASCII digits, '-', '_' and '.' only. Then removes digits, '-' and '.' at
/// the start, and the reserved prefix "xml" in any letter case, until the start has neither.
OVRABASE_EXPORT QString makeValidXMLTag(const QString &text);

/// Returns \a text with JSON escapes for backspace, tab, line feed, form feed, carriage return,
/// quotation mark and backslash.
///
/// All other bytes are unchanged, also the other control characters. The result has no quotation
/// marks around it.
OVRABASE_EXPORT std::string escapeJSON(const std::string &text);

/// Returns \a text in quotation marks, with C escapes for bell, backspace, tab, vertical tab, form
/// feed, line feed, carriage return, quotation mark and backslash. All other characters are
/// unchanged.
OVRABASE_EXPORT QString asStringLiteral(const QString &text);

/// Splits \a input, for example "free text --scale 2 --flip", into the free text before the first
/// "--" and the (option, value) pairs after it. The last pair comes first.
///
/// \a options are the accepted names, without "--". The name of an option ends at the first space.
/// Its value is the text after that space, up to the next "--". The character in front of each "--"
/// is dropped, whatever it is. The "--" of several hyphens in a row are found from their end.
///
/// Errors are pairs, too. For an option without a name, the pair is "Invalid syntax" and the text
/// from its "--" up to the next "--". For an option that is not accepted, the pair is "Invalid
/// option" and the name.
OVRABASE_EXPORT std::pair<std::string, std::vector<std::pair<std::string, std::string>>> parseInput(
    const std::string &input, const std::vector<std::string> &options);

/// Returns true if \a c is less than 0x80.
OVRABASE_EXPORT bool isAscii(const QChar &c);
/// Returns true if \a c is one of 0 to 9.
OVRABASE_EXPORT bool isAsciiDigit(const QChar &c);
/// Returns true if \a c is one of a to z or A to Z.
OVRABASE_EXPORT bool isAsciiLetter(const QChar &c);
/// Returns true if \a c is one of a to z, A to Z or 0 to 9.
OVRABASE_EXPORT bool isAsciiLetterOrDigit(const QChar &c);
/// Returns true if \a c is a printable ASCII character. A space is one.
OVRABASE_EXPORT bool isAsciiPrint(const QChar &c);

} // namespace Vyn::OvraBase::StringUtils
