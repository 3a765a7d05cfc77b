// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/LengthUnits.h>

#include <QRegularExpression>

#include <cmath>
#include <fuzzer/FuzzedDataProvider.h>

using namespace Vyn::OvraBase;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    const QLocale locale(QLatin1String(
        provider.PickValueInArray({"C", "de_DE", "fr_FR", "sv_SE", "ar_EG", "hi_IN", "de_CH"})));
    const QString unit = QString::fromStdString(provider.ConsumeRandomLengthString(8));
    const QString text = QString::fromStdString(provider.ConsumeRemainingBytesAsString());

    const std::optional<double> length = parseLength(text, unit, locale);
    if (!length) {
        return 0;
    }
    require(std::isfinite(*length));
    // A term of 0 metres must not change the sum. It may follow only a term with a unit.
    if (text.trimmed().back().isLetter()) {
        require(parseLength(text + QStringLiteral(" 0 m"), unit, locale) == length);
    }
    // In the "C" locale, stringToMeter() must give the same length for one number, without a unit
    // or with a unit of ASCII letters.
    static const QRegularExpression plain(
        QStringLiteral(R"(^\s*[-+]?[\d.]+(e[-+]?\d+)?\s*[a-zA-Z]*\s*$)"));
    if (locale == QLocale::c() && plain.match(text).hasMatch()) {
        require(*length == stringToMeter(text, unit));
    }
    return 0;
}
