// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/logging/logStr.h>

#include <QDateTime>
#include <QRegularExpression>
#include <QUrl>
#include <QVariant>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

QString textFrom(FuzzedDataProvider &provider)
{
    return QString::fromStdString(provider.ConsumeRandomLengthString(64));
}

/// Returns a variant of a random type, with at most \a depth nested levels.
QVariant variantFrom(FuzzedDataProvider &provider, int depth)
{
    switch (provider.ConsumeIntegralInRange(0, 12)) {
    case 0:
        return textFrom(provider);
    case 1:
        return QByteArray::fromStdString(provider.ConsumeRandomLengthString(64));
    case 2:
        return provider.ConsumeFloatingPoint<double>();
    case 3:
        return provider.ConsumeIntegral<qlonglong>();
    case 4:
        return QUrl(textFrom(provider));
    case 5:
        return QRegularExpression(textFrom(provider));
    case 6:
        return QDateTime::fromMSecsSinceEpoch(provider.ConsumeIntegral<qint64>());
    case 7:
        return QStringList{textFrom(provider), textFrom(provider)};
    case 8:
        return QVariant(QMetaType(provider.ConsumeIntegralInRange(0, 70)));
    case 9:
        return depth == 0 ? QVariant()
                          : QVariantMap{{textFrom(provider), variantFrom(provider, depth - 1)}};
    case 10:
        return depth == 0 ? QVariant()
                          : QVariantHash{{textFrom(provider), variantFrom(provider, depth - 1)}};
    case 11:
        return QVariant::fromValue(depth == 0 ? QVariant() : variantFrom(provider, depth - 1));
    default: {
        QVariantList list;
        for (int i = depth == 0 ? 0 : provider.ConsumeIntegralInRange(0, 3); i > 0; --i) {
            list.append(variantFrom(provider, depth - 1));
        }
        return list;
    }
    }
}

} // namespace

/// Checks the beginning and the end of what logStr() returns for a variant and for a text, and that
/// the result for the text is not shorter than the text in quotation marks.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    const QString shown = Vyn::logStr(variantFrom(provider, 40));
    require(shown.startsWith(u"QVariant("));
    require(shown.endsWith(u')'));

    const QString text = textFrom(provider);
    const QString literal = Vyn::logStr(text);
    require(literal.size() >= text.size() + 2);
    require(literal.startsWith(u'"') && literal.endsWith(u'"'));
    return 0;
}
