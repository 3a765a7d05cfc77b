// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileSystem_p.h"
#include "files/Removal_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/logStr.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kFileNotRemoved{
    "FileUtils.cpp:718 Vyn::OvraBase::FileUtils::removeFileIfItExists()"};
constexpr LogPosition kFolderNotRemoved{
    "FileUtils.cpp:731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists()"};

constexpr QDir::Filters kEverything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

} // namespace

bool removeEntry(const QFileInfo &entry)
{
    const QString path = entry.filePath();
    return QFile::remove(path) ||
           (isLink(entry) && QDir().rmdir(path)) || // how Windows removes a link to a folder
           os::removeReadOnly(path);
}

// QDir::removeRecursively() empties what a junction leads to, and what "link/" leads to.
bool removeFolder(const QString &path)
{
    const QFileInfo top(withoutTrailingSeparators(path));
    if (isLink(top)) {
        return removeEntry(top);
    }
    const QString folderPath = top.canonicalFilePath(); // "." cannot be removed by that name
    if (folderPath.isEmpty()) {
        return false; // nothing is there, and an empty path would be the current folder
    }
    bool allGone = true;
    std::vector<QString> folders{folderPath};
    for (std::size_t i = 0; i < folders.size(); ++i) {
        const QFileInfoList entries = QDir(folders[i]).entryInfoList(kEverything, QDir::Unsorted);
        for (const QFileInfo &entry : entries) {
            if (entry.isDir() && !isLink(entry)) {
                folders.push_back(entry.filePath());
            } else {
                allGone = removeEntry(entry) && allGone;
            }
        }
    }
    // Every folder was found after the one that holds it.
    std::reverse(folders.begin(), folders.end());
    for (const QString &folder : folders) {
        allGone = QDir().rmdir(folder) && allGone;
    }
    return allGone;
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
    const QFileInfo entry(path);
    if (entryExists(entry) && !QFile::remove(path) && !(isLink(entry) && QDir().rmdir(path)) &&
        entryExists(QFileInfo(path))) {
        fail<Exception::FileDeletionException>(
            kFileNotRemoved, QStringLiteral("Could not remove: ") + logStr(path), path);
    }
}

} // namespace Vyn::OvraBase
