// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/RemovalSystem_p.h"
#include "files/Removal_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/logStr.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kFileNotRemoved{
    "FileUtils.cpp:718 Vyn::OvraBase::FileUtils::removeFileIfItExists()"};
constexpr LogPosition kFolderNotRemoved{
    "FileUtils.cpp:731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists()"};

} // namespace

QString pathOfEntry(const QString &path)
{
    const QFileInfo entry(withoutTrailingSeparators(path));
    const bool isNamed = entry.fileName() != u'.' && entry.fileName() != QLatin1String("..");
    return isNamed ? entry.filePath() : entry.canonicalFilePath();
}

bool removeFolder(const QString &path)
{
    const QString entry = pathOfEntry(path);
    os::OpenFolder folder(entry, os::OpenFolder::LinkAtPath::Refused);
    const bool isRemovableLink = !folder.isOpen() && isLink(QFileInfo(entry));
    return isRemovableLink ? os::removeEntry(entry) : folder.remove();
}

void removeFolderThroughLink(const QString &path)
{
    os::OpenFolder(pathOfEntry(path), os::OpenFolder::LinkAtPath::Followed).remove();
}

void FileUtils::removeDirRecursiveIfItExists(const QString &path)
{
    if (isFolder(path) && !removeFolder(path) && isFolder(path)) {
        fail<Exception::FolderDeletionException>(kFolderNotRemoved,
            QStringLiteral("The directory or some of its content could not be removed : ") +
                logStr(path),
            path);
    }
}

void FileUtils::removeFileIfItExists(const QString &path)
{
    QFileInfo entry(path);
    if (!entryExists(entry) || QFile::remove(path)) {
        return;
    }
    if (isLink(entry)) {
        QDir().rmdir(path); // Windows has links that QFile::remove() leaves
    }
    entry.refresh();
    if (entryExists(entry)) {
        fail<Exception::FileDeletionException>(
            kFileNotRemoved, QStringLiteral("Could not remove: ") + logStr(path), path);
    }
}

} // namespace Vyn::OvraBase
