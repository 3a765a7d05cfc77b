// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <QCoreApplication>
#include <QStringView>

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace Vyn::OvraBase::StringUtils {
namespace {

// Callers recognise errors by these texts.
constexpr std::string_view kInvalidSyntax = "Invalid syntax";
constexpr std::string_view kInvalidOption = "Invalid option";

/// The parts of a name of the form "base copy digits". Both are null for a name of another form.
struct NumberedCopy {
    QStringView base;
    QStringView digits;
};

/// Splits \a name as the expression "^(.*) copy (\d+)$" does, with \a copyWord in place of "copy".
/// QRegularExpression is not used: it reports no match for names with unpaired surrogates or with
/// many millions of digits.
NumberedCopy splitCopyName(QStringView name, QStringView copyWord)
{
    if (name.endsWith(u'\n')) {
        name.chop(1); // "$" also matches before a line feed at the end
    }
    const auto digits = std::find_if_not(name.rbegin(), name.rend(), isAsciiDigit).base();
    const QStringView number(digits, name.end());
    QStringView base(name.begin(), digits);
    for (const QStringView part : {QStringView(u" "), copyWord, QStringView(u" ")}) {
        if (!base.endsWith(part)) {
            return {};
        }
        base.chop(part.size());
    }
    if (number.isEmpty() || base.contains(u'\n')) { // "." does not match a line feed
        return {};
    }
    return {base, number};
}

bool isXmlNameCharacter(QChar c)
{
    return isAsciiLetterOrDigit(c) || c == u'-' || c == u'_' || c == u'.';
}

bool isXmlNameStart(QChar c)
{
    return isAsciiLetter(c) || c == u'_';
}

} // namespace

QString getCopyName(const QString &name)
{
    const QString copyWord = QCoreApplication::translate("", "copy");
    const auto [base, digits] = splitCopyName(name, copyWord);
    if (!digits.isNull()) {
        const QString next = QString::number(qint64{digits.toInt()} + 1);
        return QStringLiteral("%1 %2 %3").arg(base, copyWord, next);
    }
    if (name.endsWith(u' ' + copyWord)) {
        return name + QStringLiteral(" 2");
    }
    return name + u' ' + copyWord;
}

QString makeValidXMLTag(const QString &text)
{
    QString kept;
    kept.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept), isXmlNameCharacter);

    QStringView name = kept;
    for (qsizetype before = -1; before != name.size();) {
        before = name.size();
        name = QStringView(std::find_if(name.begin(), name.end(), isXmlNameStart), name.end());
        if (name.startsWith(u"xml", Qt::CaseInsensitive)) {
            name = name.sliced(3);
        }
    }
    return name.toString();
}

std::pair<std::string, std::vector<std::pair<std::string, std::string>>> parseInput(
    const std::string &input, const std::vector<std::string> &options)
{
    const std::unordered_set<std::string_view> accepted(options.begin(), options.end());
    std::string_view rest = input;
    std::vector<std::pair<std::string, std::string>> pairs;

    for (auto position = rest.rfind("--"); position != rest.npos; position = rest.rfind("--")) {
        const std::string_view segment = rest.substr(position);
        const auto space = std::min(segment.find(' '), segment.size());
        const std::string_view name = segment.substr(2, space - 2);
        if (name.empty()) {
            pairs.emplace_back(kInvalidSyntax, segment);
        } else if (!accepted.contains(name)) {
            pairs.emplace_back(kInvalidOption, name);
        } else {
            pairs.emplace_back(name, segment.substr(std::min(space + 1, segment.size())));
        }
        // Any character in front of "--" counts as the separator.
        rest = rest.substr(0, position == 0 ? 0 : position - 1);
    }
    return {std::string(rest), std::move(pairs)};
}

bool isAscii(const QChar &c)
{
    return c.unicode() <= 0x7F;
}

bool isAsciiDigit(const QChar &c)
{
    return c >= u'0' && c <= u'9';
}

bool isAsciiLetter(const QChar &c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isAsciiLetterOrDigit(const QChar &c)
{
    return isAsciiLetter(c) || isAsciiDigit(c);
}

bool isAsciiPrint(const QChar &c)
{
    return c >= u' ' && c <= u'~';
}

} // namespace Vyn::OvraBase::StringUtils
