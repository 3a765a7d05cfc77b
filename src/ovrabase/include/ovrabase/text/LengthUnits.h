// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QList>
#include <QLocale>
#include <QString>

#include <optional>

/// \file
/// Lengths that users see and type: 38 units, each with a name, one to four abbreviations and its
/// size in metres.
///
/// Names and abbreviations are compared exactly, case included. All functions may be called from
/// any thread.
namespace Vyn::OvraBase {

/// Returns the names of all units, in the order in which users see them.
OVRABASE_EXPORT QList<QString> availableLengthUnits();

/// Returns the abbreviations of the unit that is named \a unitName; none for an unknown name, and
/// an abbreviation is not a name.
OVRABASE_EXPORT QList<QString> abbrevations(const QString &unitName);

/// Returns \a meters in \a unit, a name or an abbreviation; 0 for an unknown unit.
OVRABASE_EXPORT double fromMeter(double meters, const QString &unit);

/// Returns the first length in \a value, such as "12.5 cm", in metres.
///
/// A length is a number in digits with a point, perhaps a sign and an exponent, then perhaps a unit
/// that is made of letters, after spaces or not. Text around it is ignored. An unknown or missing
/// unit counts as \a defaultUnit (a name or an abbreviation), metres when that is unknown too.
/// Without a number, and with one that a double cannot hold, the length is 0.
OVRABASE_EXPORT double stringToMeter(const QString &value, const QString &defaultUnit);

/// Returns the length that \a text is, such as "12.5 cm" or "3 ft 6 in", in metres, and nothing for
/// a text that is not a length. Meant for input fields; stringToMeter() picks a length out of a
/// text.
///
/// The text is one or more terms, which are added. A term is a number and a unit: any name or
/// abbreviation, the signs and the names of several words included. The last term may lack its
/// unit, which is then \a defaultUnit, a name or an abbreviation: "5' 7" is 5 feet and 7 of the
/// default unit. White space between the parts is optional, except that a number without a unit
/// does not follow a letter: "12 m2" is nothing.
///
/// Numbers are those that QLocale::toDouble() of \a locale accepts, group separators and exponents
/// included. Any white space separates groups in a locale that uses a space for that. So
/// "1 234,5 m" is one number in French, and "12,5 cm" is nothing in the "C" locale. A sign is
/// allowed in front of the first number only; it holds for the sum: "-3 ft 6 in" is -42 inches.
///
/// The answer is also nothing for an empty text, for a number without a unit when \a defaultUnit is
/// unknown, for a number or a sum that a double cannot hold, and for "inf" and "nan". Takes linear
/// time.
OVRABASE_EXPORT std::optional<double> parseLength(
    const QString &text, const QString &defaultUnit, const QLocale &locale = QLocale::c());

} // namespace Vyn::OvraBase
