// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/StringUtils.h>

#include <QRegularExpression>

namespace {

/// By expressions, pass by pass, which serves for text without unpaired surrogates.
QString expected(QString text)
{
    static const QRegularExpression illegal(QStringLiteral("[^a-zA-Z0-9-_.]"));
    static const QRegularExpression badStart(QStringLiteral("^[^a-zA-Z_]+"));
    static const QRegularExpression reserved(QStringLiteral("^([xX][mM][lL])"));
    text.remove(illegal);
    for (QString before; before != text;) {
        before = text;
        text.remove(badStart);
        text.remove(reserved);
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using Vyn::OvraBase::StringUtils::makeValidXMLTag;
    // Letters that matter: in raw bytes the word "xml" is not found.
    const QString letters = QStringLiteral("xXmMlL19-._a\u00E9 ");
    QString text;
    for (std::size_t i = 0; i < size; ++i) {
        text += letters[data[i] % letters.size()];
    }
    const QString tag = makeValidXMLTag(text);
    require(tag == expected(text));
    require(makeValidXMLTag(tag) == tag);

    // What is no character goes as well, where the expressions match nothing at all.
    require(makeValidXMLTag(QChar(0xD800) + text) == tag);
    return 0;
}
