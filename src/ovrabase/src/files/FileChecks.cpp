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

/// Returns the result of \a test for the path of \a url, or false if \a url is not a local file.
bool ofLocalFile(const QUrl &url, bool (*test)(const QString &))
{
    return url.isLocalFile() && test(url.toLocalFile());
}

/// Returns the size of the root of the absolute path \a path: of "/", of "C:/", or of
/// "//server/share" if a "/" follows it. Returns -1 if \a path is only "//server" or
/// "//server/share".
qsizetype sizeOfRoot(const QString &path)
{
    if (path.startsWith(QLatin1String("//"))) {
        const qsizetype endOfServer = path.indexOf(u'/', 2);
        return endOfServer < 0 ? -1 : path.indexOf(u'/', endOfServer + 1);
    }
    return path.indexOf(u'/') + 1;
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
    const QFileInfo entry(path);
    if (path.isEmpty() || entry.exists()) {
        return entry.isWritable();
    }
    const QString absolute = QDir::cleanPath(entry.absoluteFilePath());
    QFileInfo nearest(absolute);
    if (nearest.exists()) { // for example, that of "missing/.."
        return nearest.isWritable();
    }
    // Begins at the root, and ends at the first missing ancestor. From the other end, a long path
    // with many missing ancestors would take quadratic time.
    for (qsizetype end = sizeOfRoot(absolute); end > 0; end = absolute.indexOf(u'/', end + 1)) {
        const QFileInfo ancestor(absolute.left(end));
        if (!ancestor.exists()) {
            break;
        }
        nearest = ancestor;
    }
    return nearest.isWritable();
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
    const os::NtfsPermissionLookup accessRights;
    const QFileInfo entry(path);
    if (!entry.isFile()) {
        return false;
    }
    QFile file(path);
    // ExistingOnly: if another program removes the file here, open() must not create it.
    return (entry.isWritable() &&
               file.open(QIODevice::ReadWrite | QIODevice::Append | QIODevice::ExistingOnly)) ||
           file.open(QIODevice::ReadOnly);
}

} // namespace Vyn::OvraBase
