// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/StringUtils.h>

#include <QRegularExpression>

#include <cstdint>

namespace {

/// Returns the name of the copy, computed with the regular expression that defines it.
QString expected(const QString &name)
{
    static const QRegularExpression numbered(QStringLiteral("^(.*) copy (\\d+)$"));
    if (const QRegularExpressionMatch match = numbered.match(name); match.hasMatch()) {
        return match.captured(1) + QStringLiteral(" copy ") +
               QString::number(qint64{match.captured(2).toInt()} + 1);
    }
    return name + (name.endsWith(QStringLiteral(" copy")) ? QStringLiteral(" 2")
                                                          : QStringLiteral(" copy"));
}

} // namespace

/// The input is a name in UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString name =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    require(Vyn::OvraBase::StringUtils::getCopyName(name) == expected(name));
    return 0;
}
