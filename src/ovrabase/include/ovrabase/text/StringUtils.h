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
/// Edit distances, names of copies, XML tags, escapes, command lines and character classes.
///
/// The functions have no state, report no failure and may be called from any thread. All but the
/// edit distances take linear time for every input.
namespace Vyn::OvraBase::StringUtils {

/// \name Edit distances
///
/// The restricted Damerau-Levenshtein distance, also called optimal string alignment: each
/// insertion, deletion, substitution and transposition of two adjacent characters costs 1, and a
/// transposed pair is not edited again, so the distance of "ca" and "abc" is 3. Characters are
/// UTF-16 code units compared exactly: case counts, nothing is normalised, and a character outside
/// the Basic Multilingual Plane is two units.
///
/// For lengths m and n the time is in the order of n * ceil(m / 64): 64 rows of the table are
/// computed at once, with the bit vectors of H. Hyyrö, "A bit-vector algorithm for computing
/// Levenshtein and Damerau edit distances", Nordic Journal of Computing 10 (2003). Nothing is
/// allocated for texts of up to 128 units, and for longer ones at most a byte per unit of one text;
/// the only failure is std::bad_alloc. Thread-safe.
/// @{

/// Returns the number of edits between \a a and \a b; the order of the two does not matter.
OVRABASE_EXPORT std::uint64_t damerauLevenshteinDistance(const QString &a, const QString &b);

/// Returns the least number of edits between \a a and any contiguous part of \a b. The part may be
/// empty, so the result is at most the length of \a a.
OVRABASE_EXPORT std::uint64_t damerauLevenshteinSubstringDistance(
    const QString &a, const QString &b);

/// Compares one pattern with many texts. It prepares the pattern once and so is faster than the
/// free functions.
///
/// A matcher takes about 1.5 KiB for every 64 units of its pattern; copies share it. Several
/// threads may use one matcher at the same time.
class OVRABASE_EXPORT DamerauLevenshteinMatcher {
public:
    /// Prepares \a pattern.
    explicit DamerauLevenshteinMatcher(const QString &pattern);
    DamerauLevenshteinMatcher(const DamerauLevenshteinMatcher &other);
    DamerauLevenshteinMatcher &operator=(const DamerauLevenshteinMatcher &other);
    ~DamerauLevenshteinMatcher();

    /// Returns what damerauLevenshteinDistance() returns for the pattern and \a text.
    std::uint64_t distance(const QString &text) const;

    /// Returns distance(text) if that is at most \a limit, and \a limit + 1 if it is more.
    ///
    /// Stops as soon as the distance is known to be more than the limit: at once when the lengths
    /// differ by more, and mostly after a few units for unrelated texts. For long texts the time is
    /// in the order of n * (1 + limit / 64).
    std::uint64_t distance(const QString &text, std::uint64_t limit) const;

    /// Returns what damerauLevenshteinSubstringDistance() returns for the pattern and \a text.
    std::uint64_t substringDistance(const QString &text) const;

    /// Returns substringDistance(text) if that is at most \a limit, and \a limit + 1 if it is more.
    ///
    /// Stops at once when \a text is too short, and for patterns of more than 128 units as soon as
    /// a part of the pattern is nowhere near. A match may be at the end of \a text, so that there
    /// is little to save otherwise.
    std::uint64_t substringDistance(const QString &text, std::uint64_t limit) const;

private:
    struct Prepared;
    std::shared_ptr<const Prepared> mPrepared;
};

/// @}

/// Returns the name of the next copy of \a name: "Wall" gives "Wall copy", that "Wall copy 2", that
/// "Wall copy 3".
///
/// The word "copy" is translated (source text "copy", empty context). A number is counted on in 64
/// bits; one that does not fit a signed 32-bit integer counts as 0. Only a name of one line is
/// counted on; a line feed at its very end is dropped then.
OVRABASE_EXPORT QString getCopyName(const QString &name);

/// Returns \a text without the characters that make it an invalid XML element name.
///
/// Only ASCII letters, digits, '-', '_' and '.' stay. Then digits, '-' and '.' at the start and the
/// reserved prefix "xml", in any case, are removed until neither is left. The result may be empty.
OVRABASE_EXPORT QString makeValidXMLTag(const QString &text);

/// Returns \a text with the JSON escapes of backspace, tab, line feed, form feed, carriage return,
/// quotation mark and backslash.
///
/// Every other byte stays as it is, other control bytes too. No quotes are added.
OVRABASE_EXPORT std::string escapeJSON(const std::string &text);

/// Returns \a text between quotation marks, with the escapes of bell, backspace, tab, vertical tab,
/// form feed, line feed, carriage return, quotation mark and backslash.
///
/// Every other character stays as it is.
OVRABASE_EXPORT QString asStringLiteral(const QString &text);

/// Splits the line \a input, such as "free text --scale 2 --flip", into the free text and its
/// (option, value) pairs, the rightmost first.
///
/// \a options are the accepted names, without the "--". An option ends at its first space; its
/// value is the rest up to the next option, less the one character in front of that. Two pairs
/// stand for errors: ("Invalid syntax", the text from "--" on) for an option without a name, and
/// ("Invalid option", the name) for one that is not accepted.
OVRABASE_EXPORT std::pair<std::string, std::vector<std::pair<std::string, std::string>>> parseInput(
    const std::string &input, const std::vector<std::string> &options);

/// Tells whether \a c is below 0x80.
OVRABASE_EXPORT bool isAscii(const QChar &c);
/// Tells whether \a c is one of 0 to 9.
OVRABASE_EXPORT bool isAsciiDigit(const QChar &c);
/// Tells whether \a c is one of a to z or A to Z.
OVRABASE_EXPORT bool isAsciiLetter(const QChar &c);
/// Tells whether \a c is one of a to z, A to Z or 0 to 9.
OVRABASE_EXPORT bool isAsciiLetterOrDigit(const QChar &c);
/// Tells whether \a c is an ASCII character that shows, or a space.
OVRABASE_EXPORT bool isAsciiPrint(const QChar &c);

} // namespace Vyn::OvraBase::StringUtils
