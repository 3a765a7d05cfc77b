// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/StringUtils.h>

#include <QRegularExpression>

namespace {

/// Returns the tag that regular expressions make in several passes. \a text must not have unpaired
/// surrogates.
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
    // Few letters, because random bytes almost never contain the word "xml".
    const QString letters = QStringLiteral("xXmMlL19-._a\u00E9 ");
    QString text;
    for (std::size_t i = 0; i < size; ++i) {
        text += letters[data[i] % letters.size()];
    }
    const QString tag = makeValidXMLTag(text);
    require(tag == expected(text));
    require(makeValidXMLTag(tag) == tag);

    // An unpaired surrogate is removed too. The regular expressions match nothing in such a text.
    require(makeValidXMLTag(QChar(0xD800) + text) == tag);
    return 0;
}
