// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileSystem_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace Vyn::OvraBase {
namespace {

/// Above this size an ancestor is looked for in big steps.
constexpr qsizetype kLongPath = 1000;

/// Applies \a test to the path of a local \a url.
bool ofLocalFile(const QUrl &url, bool (*test)(const QString &))
{
    return url.isLocalFile() && test(url.toLocalFile());
}

} // namespace

bool FileUtils::exists(const QString &path)
{
    return QFileInfo::exists(path);
}

bool FileUtils::exists(const QUrl &url)
{
    return ofLocalFile(url, exists);
}

bool FileUtils::isFile(const QString &path)
{
    return QFileInfo(path).isFile();
}

bool FileUtils::isFile(const QUrl &url)
{
    return ofLocalFile(url, isFile);
}

bool FileUtils::isFolder(const QString &path)
{
    return QFileInfo(path).isDir();
}

bool FileUtils::isFolder(const QUrl &url)
{
    return ofLocalFile(url, isFolder);
}

bool FileUtils::isReadable(const QString &path)
{
    return QFileInfo(path).isReadable();
}

bool FileUtils::isReadable(const QUrl &url)
{
    return ofLocalFile(url, isReadable);
}

bool FileUtils::isWritable(const QString &path)
{
    if (path.isEmpty()) {
        return false;
    }
    QString current = path;
    for (;;) {
        const QFileInfo entry(current);
        if (entry.exists()) {
            return entry.isWritable();
        }
        if (entry.isRoot()) {
            return false;
        }
        QString parent = entry.absolutePath();
        if (parent.size() > kLongPath) {
            // What is below a missing folder is missing: go half of the way at once.
            const QString middle = parent.left(parent.lastIndexOf(u'/', parent.size() / 2));
            if (!middle.isEmpty() && !QFileInfo::exists(middle)) {
                parent = middle;
            }
        }
        // The first parent of a relative path may be longer; from there on each is shorter.
        if (parent.isEmpty() || (entry.isAbsolute() && parent.size() >= current.size())) {
            return false;
        }
        current = parent;
    }
}

bool FileUtils::isWritable(const QUrl &url)
{
    return ofLocalFile(url, isWritable);
}

bool FileUtils::isReadableAndWritable(const QString &path)
{
    const QFileInfo entry(path);
    return entry.isReadable() && entry.isWritable();
}

bool FileUtils::isReadableAndWritable(const QUrl &url)
{
    return ofLocalFile(url, isReadableAndWritable);
}

bool FileUtils::isNonEmptyFolder(const QString &path)
{
    return isFolder(path) && !QDir(path).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot);
}

bool FileUtils::isNonEmptyFolder(const QUrl &url)
{
    return ofLocalFile(url, isNonEmptyFolder);
}

bool FileUtils::isRelativeFilePath(const QUrl &url)
{
    return url.isRelative() || (url.scheme() == QLatin1String("file") &&
                                   QDir::isRelativePath(url.path(QUrl::FullyDecoded)));
}

bool FileUtils::isFileMoreRecentThan(const QString &a, const QString &b)
{
    const QFileInfo first(a);
    const QFileInfo second(b);
    return first.exists() && second.exists() && second.lastModified() < first.lastModified();
}

bool FileUtils::checkFileCanBeOpened(const QString &path)
{
    const os::NtfsPermissionLookup realRights;
    const QFileInfo entry(path);
    if (!entry.isFile()) {
        return false;
    }
    QFile file(path);
    return (entry.isWritable() && file.open(QIODevice::ReadWrite | QIODevice::Append)) ||
           file.open(QIODevice::ReadOnly);
}

} // namespace Vyn::OvraBase
