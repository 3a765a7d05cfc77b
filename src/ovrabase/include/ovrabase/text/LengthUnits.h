// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QList>
#include <QString>

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

} // namespace Vyn::OvraBase
