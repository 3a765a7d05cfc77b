// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder_p.h"

#include <QFile>
#include <QStringList>

#include <sys/stat.h>
#include <unistd.h>

namespace Vyn::OvraBase::os {
namespace {

/// Makes each folder of the relative path \a name in \a base. Returns false if one of them exists
/// and is a link, belongs to another user, or is a folder that others may write to.
bool makePrivate(const QString &base, const QString &name)
{
    QString path = base;
    for (const QString &component : name.split(u'/')) {
        path += u'/' + component;
        const QByteArray native = QFile::encodeName(path);
        ::mkdir(native.constData(), S_IRWXU);
        struct stat entry {};
        if (::lstat(native.constData(), &entry) != 0) {
            return true; // the folder cannot be made, so that the caller fails to use it
        }
        const bool isFolder = S_ISDIR(entry.st_mode);
        if (S_ISLNK(entry.st_mode) || entry.st_uid != ::geteuid() ||
            (isFolder && (entry.st_mode & (S_IWGRP | S_IWOTH)) != 0)) {
            return false;
        }
        if (isFolder) {
            ::chmod(native.constData(), S_IRWXU); // an existing folder may give others read access
        }
    }
    return true;
}

} // namespace

PrivateFolder makePrivateFolder(const QString &base, const QString &name)
{
    if (makePrivate(base, name)) {
        return {base + u'/' + name, true};
    }
    const QString another = name + u'-' + QString::number(::geteuid());
    return {base + u'/' + another, makePrivate(base, another)};
}

} // namespace Vyn::OvraBase::os
