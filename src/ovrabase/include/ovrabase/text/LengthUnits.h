// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QList>
#include <QLocale>
#include <QString>

#include <optional>

/// \file
/// Conversion of lengths between metres and 38 units, for display and input. A unit has a name and
/// one to four abbreviations.
///
/// Names and abbreviations are case-sensitive. All functions are thread-safe.
namespace Vyn::OvraBase {

/// Returns the names of all units, in the order for display.
OVRABASE_EXPORT QList<QString> availableLengthUnits();

/// Returns the abbreviations of the unit with the name \a unitName. Returns an empty list for an
/// unknown name; an abbreviation is not a name.
OVRABASE_EXPORT QList<QString> abbrevations(const QString &unitName);

/// Converts \a meters to \a unit, a name or an abbreviation. Returns 0 for an unknown unit.
OVRABASE_EXPORT double fromMeter(double meters, const QString &unit);

/// Finds the first length in \a value, for example "12.5 cm", and returns it in metres.
///
/// A length is a number, optional ASCII white space and an optional unit. The number has ASCII
/// digits with an optional decimal point, an optional sign and an optional exponent. The unit
/// consists of letters, combining marks and "*". So signs such as ' are not units here, and a unit
/// contains no space: "2 Nautical mile" is 2 of the default unit. Text before and after the length
/// is ignored. If the unit is missing or unknown, \a defaultUnit (a name or an abbreviation) takes
/// its place. If \a defaultUnit is unknown, too, the number is in metres.
///
/// The number begins at the first digit or point of \a value, or at a sign directly before it.
/// Returns 0 if there is none, or if the number is malformed ("1.2.3", or the lone point in
/// "approx. 5 cm") or too large or too small for a double. The result is infinite if only the
/// length in metres is too large.
OVRABASE_EXPORT double stringToMeter(const QString &value, const QString &defaultUnit);

/// Parses the whole of \a text as a length, for example "12.5 cm" or "3 ft 6 in", and returns it in
/// metres. Returns nothing if \a text is not a length. Meant for input fields; stringToMeter()
/// finds a length within other text. Takes linear time.
///
/// The text consists of one or more terms, whose lengths are added. A term is a number and a unit.
/// The unit is any name or abbreviation; it may contain spaces, and signs such as ' and ". In the
/// last term, the unit may be missing. \a defaultUnit, a name or an abbreviation, then takes its
/// place: "5 ft 7" is 5 feet and 7 of the default unit. White space between numbers and units is
/// optional. But a number without a unit must not follow a letter directly, without a space.
/// So "12 m2" is not a length.
///
/// A number has the form that QLocale::toDouble() of \a locale accepts, with optional group
/// separators and an optional exponent. In a locale whose group separator is a space, any white
/// space counts as a group separator. So "1 234,5" is one number in a French locale. In the "C"
/// locale, "," separates groups: "12,5 cm" is not a length. Only the first number may have a sign,
/// which applies to the sum: "-3 ft 6 in" is -42 inches.
///
/// Returns nothing also for an empty text, for "inf" and "nan", for a number that is too large or
/// too small for a double, for a sum that is too large, and for a number without a unit if
/// \a defaultUnit is unknown.
OVRABASE_EXPORT std::optional<double> parseLength(
    const QString &text, const QString &defaultUnit, const QLocale &locale = QLocale::c());

} // namespace Vyn::OvraBase
