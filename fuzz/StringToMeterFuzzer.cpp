// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/LengthUnits.h>

#include <QHash>
#include <QRegularExpression>

#include <cmath>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

using namespace Vyn::OvraBase;

QHash<QString, double> factors()
{
    QHash<QString, double> all;
    for (const QString &name : availableLengthUnits()) {
        for (const QString &spelling : abbrevations(name) + QList<QString>{name}) {
            all[spelling] = stringToMeter(QStringLiteral("1"), name);
        }
    }
    return all;
}

/// Returns the metres of the length that a regular expression finds in \a value. \a value must
/// have no unpaired surrogates: in a text with them, the expression finds no match.
double expected(const QString &value, const QString &defaultUnit)
{
    static const QHash<QString, double> all = factors();
    static const QRegularExpression length(
        QStringLiteral(R"(([+-]?[\d.]+(?:[eE][-+]?\d+)?)\s*([\pL\pM*]+)?)"));
    const QRegularExpressionMatch match = length.match(value);
    const double converted = match.captured(1).toDouble();
    const double number = std::isinf(converted) ? 0 : converted;
    return number * all.value(match.captured(2), all.value(defaultUnit, 1));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    const QString unit = QString::fromStdString(provider.ConsumeRandomLengthString(8));
    const QString value = QString::fromStdString(provider.ConsumeRemainingBytesAsString());
    require(stringToMeter(value, unit) == expected(value, unit));
    return 0;
}
