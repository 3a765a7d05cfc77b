// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileOperations_p.h"
#include "files/FileSystem_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/logStr.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QTextStream>
#include <QUuid>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kMissingFile{"FileUtils.cpp:136 Vyn::OvraBase::verifyAccessToFile()"};
constexpr LogPosition kNotOpened{"FileUtils.cpp:142 Vyn::OvraBase::verifyAccessToFile()"};
constexpr LogPosition kNotRead{"FileUtils.cpp:150 Vyn::OvraBase::verifyReading()"};
constexpr LogPosition kFileNotRemoved{
    "FileUtils.cpp:718 Vyn::OvraBase::FileUtils::removeFileIfItExists()"};
constexpr LogPosition kFolderNotRemoved{
    "FileUtils.cpp:731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists()"};
constexpr LogPosition kNotCopiedWithFolder{
    "FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()"};
constexpr LogPosition kNotCopiedWithBackup{
    "FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()"};

constexpr QDir::Filters kEverything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

/// Removes what is no folder.
bool removeEntry(const QFileInfo &entry)
{
    const QString path = entry.filePath();
    return QFile::remove(path) ||
           (isLink(entry) && QDir().rmdir(path)) || // how Windows removes a link to a folder
           os::removeReadOnly(path);
}

struct PlannedCopy {
    enum Kind { Folder, File, Impossible };
    Kind kind;
    QString from;
    QString to;
    /// Canonical paths of the folders that hold the links on the way here.
    QStringList linkedFrom = {};
};

bool isAtOrBelow(const QString &path, const QString &folder)
{
    return path == folder ||
           path.startsWith(folder.endsWith(u'/') ? folder : QString(folder + u'/'));
}

/// Returns how many entries a folder has, or -1 when it cannot be read to its end.
qsizetype countEntries(const QString &path)
{
    std::error_code error;
    qsizetype count = 0;
    std::filesystem::directory_iterator entry(os::nativePath(path), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        ++count;
    }
    return error ? -1 : count;
}

/// Lists what a folder holds now, every folder before its content.
class FolderCopyPlan {
public:
    FolderCopyPlan(const QString &source, const QString &destination)
        : mCopies{{PlannedCopy::Folder, source, destination}}
    {
        for (std::size_t i = 0; i < mCopies.size(); ++i) {
            if (mCopies[i].kind == PlannedCopy::Folder && !addContent(PlannedCopy(mCopies[i]))) {
                mCopies.push_back(mCopies[i]);
                mCopies.back().kind = PlannedCopy::Impossible;
            }
        }
    }

    const std::vector<PlannedCopy> &copies() const { return mCopies; }

private:
    /// Returns whether all of the content could be listed.
    bool addContent(const PlannedCopy &folder)
    {
        const QDir dir(folder.from);
        const QFileInfoList entries = dir.entryInfoList(kEverything, QDir::Unsorted);
        for (const QFileInfo &entry : entries) {
            addEntry(entry, folder);
        }
        // Qt tells neither that a folder cannot be read nor which names it cannot spell.
        return !QFileInfo(folder.from).isNativePath() ||
               countEntries(folder.from) == entries.size();
    }

    void addEntry(const QFileInfo &entry, const PlannedCopy &folder)
    {
        const QString name = QDir::separator() + entry.fileName();
        PlannedCopy copy{PlannedCopy::Impossible, folder.from + name, folder.to + name};
        if (entry.isFile() || entry.isShortcut()) {
            copy.kind = PlannedCopy::File;
        } else if (entry.isDir()) {
            copy.linkedFrom = folder.linkedFrom;
            copy.kind = isLink(entry) && !mayFollow(entry, folder, copy.linkedFrom)
                            ? PlannedCopy::Impossible
                            : PlannedCopy::Folder;
        }
        mCopies.push_back(copy);
    }

    /// Whether the content behind \a link, which stands in \a folder, comes in: not where that
    /// leads back, and not without end where folders behind links link to each other.
    bool mayFollow(const QFileInfo &link, const PlannedCopy &folder, QStringList &linkedFrom)
    {
        constexpr int kMostNested = 1000;
        const QString target = link.canonicalFilePath();
        const bool isNested = !linkedFrom.isEmpty();
        linkedFrom.append(QFileInfo(folder.from).canonicalFilePath());
        return std::none_of(linkedFrom.cbegin(), linkedFrom.cend(), [&](const QString &origin) {
            return isAtOrBelow(origin, target);
        }) && (!isNested || ++mNested[target] <= kMostNested);
    }

    std::vector<PlannedCopy> mCopies;
    QHash<QString, int> mNested; ///< how often a folder was met behind a second link
};

bool areSameEntry(const QFileInfo &a, const QFileInfo &b)
{
    std::error_code unknown;
    return a.fileName() == b.fileName() &&
           std::filesystem::equivalent(os::nativePath(a.path()), os::nativePath(b.path()), unknown);
}

/// Files that the system makes up, as in /proc, hold more than their size tells, or nothing that
/// can be read.
bool isReallyEmpty(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.peek(1).isEmpty() &&
           file.error() == QFile::NoError;
}

/// Makes \a copy, which must not exist, a copy of \a source. Returns why that failed, or a null
/// string; no part of a copy stays then.
QString copyFile(const QFileInfo &source, const QString &copy)
{
    const QString path = source.filePath();
    const bool isNative = source.isNativePath();
    if (isNative && os::copyFile(path, copy) && (source.size() > 0 || isReallyEmpty(path))) {
        return {};
    }
    QFile::remove(copy);
    QFile slow(path);
    if (slow.copy(copy) && (!isNative || QFileInfo(copy).size() > 0)) {
        return {};
    }
    QFile::remove(copy);
    return slow.error() == QFile::NoError ? QStringLiteral("the source cannot be read")
                                          : slow.errorString();
}

/// Whether \a backup is another name of the file \a path, and not one that leads to it.
bool keepsContentOf(const QString &path, const QString &backup)
{
    std::error_code unknown;
    return !isLink(QFileInfo(backup)) &&
           std::filesystem::equivalent(os::nativePath(path), os::nativePath(backup), unknown);
}

/// Whether \a path is a pipe: opening it to write may never end.
bool waitsForAReader(const QString &path)
{
    std::error_code unknown;
    return std::filesystem::is_fifo(os::nativePath(path), unknown);
}

/// Puts a copy of \a source in the place of \a destination, which is kept as \a backup. Returns why
/// that failed, or a null string.
QString replaceByCopy(const QString &source, const QString &destination, const QString &backup)
{
    if (!canBePath(source) || !canBePath(destination)) {
        return QStringLiteral("one of them is not a path");
    }
    const QFileInfo from(source);
    // Reading from a pipe may never begin, from a device never end.
    if (!from.isFile() && !from.isDir() && from.exists()) {
        return QStringLiteral("the source is not a file");
    }
    const QFileInfo before(destination);
    const bool isThere = standsThere(before);
    if (isThere && areSameEntry(from, before)) {
        return QStringLiteral("source and destination are the same file");
    }

    // The copy is whole before anything moves: dying on the way costs nobody's data.
    const QString fresh = before.dir().filePath(
        QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".tmp"));
    if (QString reason = copyFile(from, fresh); !reason.isNull()) {
        return reason.replace(fresh, destination);
    }
    QFile copy(fresh);
    if (isThere) {
        if (before.isDir() && !isLink(before)) {
            QFile::remove(backup); // a folder does not replace a file
        }
        if (keepsContentOf(destination, backup)) {
            removeEntry(before); // to rename it would change nothing
        } else if (const std::error_code error = os::renameOver(destination, backup)) {
            copy.remove();
            return QString::fromLocal8Bit(error.message().c_str());
        }
    }
    if (!copy.rename(destination)) {
        QString reason = copy.errorString();
        copy.remove();
        return reason;
    }
    return {};
}

} // namespace

void verifyAccessToFile(const QString &path, QFile &file, QIODevice::OpenMode mode)
{
    if (!FileUtils::isFile(path)) {
        fail<Exception::InvalidArgumentException>(
            kMissingFile, QStringLiteral("File <%1> does not exist").arg(path));
    }
    file.setFileName(path);
    if (!file.open(mode)) {
        fail<Exception::FileOpenException>(kNotOpened,
            QStringLiteral("Error opening file <%1> : %2").arg(path, file.errorString()), path);
    }
}

void verifyReading(const QFile &file)
{
    if (file.error() != QFile::NoError) {
        fail<Exception::FileReadingException>(kNotRead,
            QStringLiteral("Error reading file <%1> : %2").arg(file.fileName(), file.errorString()),
            file.fileName());
    }
}

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

bool standsThere(const QFileInfo &entry)
{
    return isLink(entry) || entry.exists();
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

bool FileUtils::copyRecursively(const QString &source, const QString &destination)
{
    if (!isFolder(source) || !canBePath(destination)) {
        return false;
    }
    bool allCopied = true;
    const FolderCopyPlan plan(source, QDir(source).absoluteFilePath(destination));
    for (const PlannedCopy &copy : plan.copies()) {
        if (copy.kind == PlannedCopy::Folder) {
            QDir().mkpath(copy.to); // without it, the copy of each file inside tells
        } else if (copy.kind == PlannedCopy::Impossible || !QFile::copy(copy.from, copy.to)) {
            logAt(kNotCopiedWithFolder, Support, Logger::Warning,
                QStringLiteral("Error while copying : %1 to : %2").arg(copy.from, copy.to));
            allCopied = false;
        }
    }
    return allCopied;
}

bool FileUtils::copyWithBackup(const QString &source, const QString &destination)
{
    const QString backup = destination + QStringLiteral(".bak");
    const QString reason = replaceByCopy(source, destination, backup);
    if (reason.isNull()) {
        return true;
    }
    logAt(kNotCopiedWithBackup, Debug, Logger::Warning,
        QStringLiteral("Failed to copy %1 to %2 because %3").arg(source, destination, reason));
    if (standsThere(QFileInfo(backup)) && !standsThere(QFileInfo(destination))) {
        QFile::rename(backup, destination);
    }
    return false;
}

std::vector<QString> FileUtils::folderParseFiles(
    const QString &folder, const QList<QString> &nameFilters, Recursion recursion)
{
    std::vector<QString> files;
    if (!isFolder(folder)) {
        return files;
    }
    QDirIterator entries(folder, nameFilters, QDir::Files,
        recursion == Recursion::Recursive ? QDirIterator::Subdirectories
                                          : QDirIterator::NoIteratorFlags);
    while (entries.hasNext()) {
        files.push_back(entries.next());
    }
    return files;
}

void FileUtils::hideFileOnWindows(const QString &path)
{
    if (canBePath(path)) {
        os::hideFile(path);
    }
}

QByteArray FileUtils::loadBinaryFile(const QString &path)
{
    QFile file;
    verifyAccessToFile(path, file, QIODevice::ReadOnly);
    QByteArray content = file.readAll();
    verifyReading(file);
    return content;
}

QString FileUtils::loadTextFileToQString(const QString &path)
{
    QFile file;
    verifyAccessToFile(path, file, QIODevice::ReadOnly | QIODevice::Text);
    QTextStream stream(&file);
    stream.setAutoDetectUnicode(true);
    QString text = stream.readAll();
    verifyReading(file);
    return text;
}

bool FileUtils::saveTextToFile(const QString &text, const QString &path)
{
    QFile file(path);
    if (!canBePath(path) || waitsForAReader(path) ||
        !file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        return false;
    }
    QTextStream stream(&file);
    stream << text;
    stream.flush();
    const bool written = stream.status() == QTextStream::Ok && file.error() == QFile::NoError;
    file.close();
    return written && file.error() == QFile::NoError;
}

bool FileUtils::makeFolder(const QString &path)
{
    const QFileInfo entry(path);
    return entry.isDir() || (!entry.isFile() && QDir().mkpath(QDir(path).absolutePath()));
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
    if (standsThere(entry) && !QFile::remove(path) && !(isLink(entry) && QDir().rmdir(path)) &&
        standsThere(QFileInfo(path))) {
        fail<Exception::FileDeletionException>(
            kFileNotRemoved, QStringLiteral("Could not remove: ") + logStr(path), path);
    }
}

void FileUtils::touch(const QString &path)
{
    if (canBePath(path) && !waitsForAReader(path)) {
        [[maybe_unused]] const bool touched =
            QFile(path).open(QIODevice::WriteOnly | QIODevice::Append);
    }
}

} // namespace Vyn::OvraBase
