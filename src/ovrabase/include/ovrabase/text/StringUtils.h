// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <cstdint>
#include <memory>

/// \file
/// Algorithms over texts.
namespace Vyn::OvraBase::StringUtils {

/// \name Edit distances
///
/// The restricted Damerau-Levenshtein distance, also called optimal string alignment: each
/// insertion, deletion, substitution and transposition of two adjacent characters costs 1, and a
/// transposed pair is not edited again: from "ca" to "abc" it is 3 steps. Characters are UTF-16
/// code units compared exactly: case counts, nothing is normalised, and a character outside the
/// Basic Multilingual Plane is two units.
///
/// For lengths m and n the time is in the order of n * ceil(m / 64): 64 rows of the table are
/// computed at once, with the bit vectors of H. Hyyrö, "A bit-vector algorithm for computing
/// Levenshtein and Damerau edit distances", Nordic Journal of Computing 10 (2003). Nothing is
/// allocated for texts of up to 64 units, never more than a byte per unit for longer ones; the
/// only failure is std::bad_alloc. Thread-safe.
/// @{

/// Returns the number of edits between \a a and \a b; the order of the two does not matter.
OVRABASE_EXPORT std::uint64_t damerauLevenshteinDistance(const QString &a, const QString &b);

/// Returns the number of edits between \a a and that contiguous part of \a b which is nearest to
/// it. The part may be empty, so the result is at most the length of \a a.
OVRABASE_EXPORT std::uint64_t damerauLevenshteinSubstringDistance(
    const QString &a, const QString &b);

/// Compares one pattern with many texts, faster than the free functions: it prepares the pattern
/// once.
///
/// A matcher takes about 1 KiB for every 64 units of its pattern, and copies share it. One matcher
/// may serve several threads at the same time.
class OVRABASE_EXPORT DamerauLevenshteinMatcher {
public:
    explicit DamerauLevenshteinMatcher(const QString &pattern);
    DamerauLevenshteinMatcher(const DamerauLevenshteinMatcher &other);
    DamerauLevenshteinMatcher &operator=(const DamerauLevenshteinMatcher &other);
    ~DamerauLevenshteinMatcher();

    /// Returns what damerauLevenshteinDistance() returns for the pattern and \a text.
    std::uint64_t distance(const QString &text) const;

    /// Returns what damerauLevenshteinSubstringDistance() returns for the pattern and \a text.
    std::uint64_t substringDistance(const QString &text) const;

private:
    struct Prepared;
    std::shared_ptr<const Prepared> mPrepared;
};

/// @}

} // namespace Vyn::OvraBase::StringUtils
