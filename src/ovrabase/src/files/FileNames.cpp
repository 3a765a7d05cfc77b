// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QStringView>

#include <algorithm>
#include <array>

namespace Vyn::OvraBase {
namespace {

/// COM0 and LPT0 are no devices, but refused like those.
constexpr std::array<QStringView, 24> kReservedNames{u"CON", u"PRN", u"AUX", u"NUL", u"COM0",
    u"COM1", u"COM2", u"COM3", u"COM4", u"COM5", u"COM6", u"COM7", u"COM8", u"COM9", u"LPT0",
    u"LPT1", u"LPT2", u"LPT3", u"LPT4", u"LPT5", u"LPT6", u"LPT7", u"LPT8", u"LPT9"};

constexpr qsizetype kNumberDigits = 3;

bool isForbidden(QChar c)
{
    return c < u' ' || QStringView(u"\"<>|:*?\\/").contains(c);
}

QStringView upToFirstNul(QStringView name)
{
    const qsizetype end = name.indexOf(QChar::Null);
    return end < 0 ? name : name.first(end);
}

/// Windows looks for its devices by what stands before the extension.
bool hasReservedStem(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    const QString stem = (dot < 0 ? name : name.first(dot)).toString().toUpper();
    return std::find(kReservedNames.begin(), kReservedNames.end(), stem) != kReservedNames.end();
}

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Tells whether \a name ends in "_" and exactly three digits.
bool endsWithNumber(QStringView name)
{
    if (name.size() <= kNumberDigits) {
        return false;
    }
    const QStringView tail = name.last(kNumberDigits + 1);
    return tail.front() == u'_' && std::all_of(tail.begin() + 1, tail.end(), isDigit);
}

} // namespace

bool FileUtils::isValidFileName(const QString &name)
{
    const QStringView visible = upToFirstNul(name);
    return std::none_of(visible.begin(), visible.end(), isForbidden) && !hasReservedStem(name);
}

QString FileUtils::ensureValidFileName(const QString &name)
{
    if (name.isEmpty()) {
        return tr("file");
    }
    QString valid = upToFirstNul(name).toString();
    std::replace_if(valid.begin(), valid.end(), isForbidden, QChar(u'x'));
    if (hasReservedStem(valid)) {
        valid.prepend(u'_');
    }
    return valid;
}

QString FileUtils::getUniqueFileName(
    const QString &folder, const QString &baseName, const QString &extension)
{
    QString stem = baseName;
    qint64 number = 1;
    if (endsWithNumber(baseName)) {
        number = QStringView(baseName).last(kNumberDigits).toInt() + 1;
        stem.chop(kNumberDigits + 1);
    }

    const QDir dir(folder);
    const QString end = u'.' + extension;
    QString candidate = dir.filePath(stem + end);
    for (; isFile(candidate); ++number) {
        const QString digits = QString::number(number).rightJustified(kNumberDigits, u'0');
        candidate = dir.filePath(stem + u'_' + digits + end);
    }
    return candidate;
}

} // namespace Vyn::OvraBase
