// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"

#include <QDir>
#include <QFileInfo>

namespace Vyn::OvraBase {

bool canBePath(const QString &path)
{
    return !path.isEmpty() && !path.contains(QChar::Null);
}

QString withoutTrailingSeparators(const QString &path)
{
    QString entry = QDir::fromNativeSeparators(path);
    while ((entry.endsWith(u'/') || entry.endsWith(QLatin1String("/."))) &&
           !QFileInfo(entry).isRoot()) {
        entry.chop(1);
    }
    return entry;
}

bool isLink(const QFileInfo &entry)
{
    return entry.isSymLink() || entry.isJunction();
}

bool entryExists(const QFileInfo &entry)
{
    return isLink(entry) || entry.exists();
}

} // namespace Vyn::OvraBase
