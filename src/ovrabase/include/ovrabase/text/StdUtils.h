// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <map>
#include <string>

/// \file
/// Functions on std::string, for code that does not use Qt. They process text byte by byte. All are
/// thread-safe.
namespace Vyn::OvraBase::StdUtils {

/// Returns \a value with six digits after the decimal point, and without an exponent. The decimal
/// point is "." whatever the global locale is.
OVRABASE_EXPORT std::string floatToString(float value);

/// Returns \a text with each "{{key}}" replaced by the value of the key in \a substitutions. An
/// unknown key is replaced by an empty text.
///
/// A key is the whole text between the braces, with its spaces. Keys within values are not
/// replaced.
/// "{{" without "}}" after it stays unchanged.
OVRABASE_EXPORT std::string substituteInString(
    const std::string &text, const std::map<std::string, std::string> &substitutions);

/// Converts each byte of \a text to lower case with std::tolower(). In the "C" locale, this changes
/// ASCII letters only.
OVRABASE_EXPORT void toLowerString(std::string &text);

/// Removes all bytes that occur in \a characters from both ends of \a text. \a characters is
/// zero-terminated. Null counts as an empty set.
OVRABASE_EXPORT void trimString(std::string &text, const char *characters);

} // namespace Vyn::OvraBase::StdUtils
