// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <map>
#include <string>

/// \file
/// Helpers for code that does not use the string classes of Qt. Text is processed byte by byte. All
/// functions may be called from any thread.
namespace Vyn::OvraBase::StdUtils {

/// Returns \a value with six digits after the decimal point, without an exponent. The decimal point
/// is a point under every global locale.
OVRABASE_EXPORT std::string floatToString(float value);

/// Returns \a text with each "{{key}}" replaced by the value of its key, or by nothing if
/// \a substitutions does not contain the key.
///
/// A key is all of the text between the braces, spaces included. Values are not searched again.
/// Opening braces that are never closed stay as they are.
OVRABASE_EXPORT std::string substituteInString(
    const std::string &text, const std::map<std::string, std::string> &substitutions);

/// Makes each byte of \a text lower case by the rules of the C library's locale: ASCII letters in
/// the "C" locale.
OVRABASE_EXPORT void toLowerString(std::string &text);

/// Removes the bytes that occur in the zero-terminated \a characters from both ends of \a text.
/// Null means no bytes.
OVRABASE_EXPORT void trimString(std::string &text, const char *characters);

} // namespace Vyn::OvraBase::StdUtils
