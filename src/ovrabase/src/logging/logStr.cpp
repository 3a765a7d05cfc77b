// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/logStr.h>
#include <ovrabase/text/StringUtils.h>

#include <QBitArray>
#include <QByteArray>
#include <QDateTime>
#include <QLocale>
#include <QModelIndex>
#include <QRegularExpression>
#include <QUrl>
#include <QUuid>

#include <utility>

namespace Vyn {
namespace {

QString characterLiteral(const QString &character)
{
    QString literal = OvraBase::StringUtils::asStringLiteral(character);
    literal.front() = u'\'';
    literal.back() = u'\'';
    return literal;
}

QString nullString()
{
    return QStringLiteral("<null string>");
}

} // namespace

QString logStr(const QString &value)
{
    return OvraBase::StringUtils::asStringLiteral(value);
}

QString logStr(QStringView value)
{
    return logStr(value.toString());
}

QString logStr(QLatin1String value)
{
    return logStr(QString(value));
}

QString logStr(std::string_view value)
{
    return logStr(QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size())));
}

QString logStr(const std::filesystem::path &value)
{
    return logStr(value.native());
}

QString logStr(const std::string &value)
{
    return logStr(QString::fromStdString(value));
}

QString logStr(const std::u16string &value)
{
    return logStr(QString::fromStdU16String(value));
}

QString logStr(const std::u32string &value)
{
    return logStr(QString::fromStdU32String(value));
}

QString logStr(const std::wstring &value)
{
    return logStr(QString::fromStdWString(value));
}

QString logStr(const char *value)
{
    return value ? logStr(QString::fromUtf8(value)) : nullString();
}

QString logStr(const unsigned char *value)
{
    return logStr(reinterpret_cast<const char *>(value));
}

QString logStr(const char16_t *value)
{
    return value ? logStr(QString::fromUtf16(value)) : nullString();
}

QString logStr(const char32_t *value)
{
    return value ? logStr(QString::fromUcs4(value)) : nullString();
}

QString logStr(const wchar_t *value)
{
    return value ? logStr(QString::fromWCharArray(value)) : nullString();
}

QString logStr(char value)
{
    return characterLiteral(QString::fromUtf8(&value, 1));
}

QString logStr(unsigned char value)
{
    return logStr(static_cast<char>(value));
}

QString logStr(QChar value)
{
    return characterLiteral(value);
}

QString logStr(char16_t value)
{
    return logStr(QChar(value));
}

QString logStr(char32_t value)
{
    // QString::fromUcs4() is not used: it would remove a byte order mark.
    const bool isValid = value <= QChar::LastValidCodePoint;
    const auto units = QChar::fromUcs4(isValid ? value : char32_t{QChar::ReplacementCharacter});
    return characterLiteral(QStringView(units).toString());
}

QString logStr(wchar_t value)
{
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        return logStr(static_cast<char16_t>(value));
    } else {
        return logStr(static_cast<char32_t>(value));
    }
}

QString logStr(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString logStr(float value)
{
    return QString::number(static_cast<double>(value), 'g', 8);
}

QString logStr(double value)
{
    return QString::number(value, 'g', 6);
}

QString logStr(const QByteArray &value)
{
    return QString::fromLatin1(value.toPercentEncoding());
}

QString logStr(const QBitArray &value)
{
    QString bits(u'[');
    for (qsizetype i = 0; i < value.size(); ++i) {
        bits += value.testBit(i) ? u'1' : u'0';
    }
    return bits += u']';
}

QString logStr(const QDate &value)
{
    return value.toString(QStringLiteral("yyyy-MM-dd"));
}

QString logStr(const QTime &value)
{
    return value.toString(QStringLiteral("hh:mm:ss.zzz"));
}

QString logStr(const QDateTime &value)
{
    return value.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
}

QString logStr(const QLocale &value)
{
    return value.name();
}

QString logStr(const QUrl &value)
{
    return value.toString();
}

QString logStr(const QUuid &value)
{
    return value.toString();
}

QString logStr(const QRegularExpression &value)
{
    using Option = QRegularExpression::PatternOption;
    static constexpr std::pair<Option, QChar> kLetters[] = {
        {Option::CaseInsensitiveOption, u'i'},
        {Option::DotMatchesEverythingOption, u's'},
        {Option::MultilineOption, u'm'},
        {Option::ExtendedPatternSyntaxOption, u'x'},
        {Option::InvertedGreedinessOption, u'U'},
        {Option::DontCaptureOption, u'n'},
        {Option::UseUnicodePropertiesOption, u'u'},
    };
    QString text = u'/' + value.pattern() + u'/';
    for (const auto &[option, letter] : kLetters) {
        if (value.patternOptions().testFlag(option)) {
            text += letter;
        }
    }
    return text;
}

QString logStr(const QModelIndex &value)
{
    if (!value.isValid()) {
        return QStringLiteral("()");
    }
    int depth = 0;
    for (QModelIndex ancestor = value.parent(); ancestor.isValid(); ancestor = ancestor.parent()) {
        ++depth;
    }
    if (depth == 0) {
        return QStringLiteral("(%1, %2)").arg(value.row()).arg(value.column());
    }
    return QStringLiteral("(%1, %2, depth=%3)").arg(value.row()).arg(value.column()).arg(depth);
}

QString logStr(const QPersistentModelIndex &value)
{
    return logStr(QModelIndex(value));
}

} // namespace Vyn
