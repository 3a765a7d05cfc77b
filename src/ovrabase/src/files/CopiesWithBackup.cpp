// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileCopy_p.h"
#include "files/FileError_p.h"
#include "files/FileSystem_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QUuid>

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNotCopiedWithBackup{
    "FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()"};

QString backupOf(const QString &path)
{
    return path + QStringLiteral(".bak");
}

bool areEquivalent(const QString &a, const QString &b)
{
    std::error_code unknown;
    return std::filesystem::equivalent(os::nativePath(a), os::nativePath(b), unknown);
}

bool areSameEntry(const QFileInfo &a, const QFileInfo &b)
{
    const QString name = a.fileName();
    const QString other = b.fileName();
    if (name.compare(other, Qt::CaseInsensitive) != 0) {
        return false;
    }
    if (!areEquivalent(a.path(), b.path())) {
        return false;
    }
    if (name == other) {
        return true;
    }
    if (isLink(a) || isLink(b)) {
        return false;
    }
    if (!areEquivalent(a.filePath(), b.filePath())) {
        return false;
    }
    // Two spellings of one name, unless they are names of one file in a folder that tells them
    // apart.
    std::error_code unknown;
    return std::filesystem::hard_link_count(os::nativePath(a.filePath()), unknown) == 1;
}

/// Tells whether \a backup is another name of the file \a path, and not a link that leads to it.
bool keepsContentOf(const QString &path, const QString &backup)
{
    return !isLink(QFileInfo(backup)) && areEquivalent(path, backup);
}

/// Tells whether other paths lead through \a entry, or would if it were replaced.
bool isPassage(const QFileInfo &entry)
{
    return isLink(entry) || entry.isDir();
}

QString freePathIn(const QString &folder)
{
    return (folder.endsWith(u'/') ? folder : QString(folder + u'/')) +
           QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".tmp");
}

/// Copies with backup, made one after another and synced together.
class CopyBatch {
public:
    explicit CopyBatch(std::size_t size)
        : mResults(size)
    {
    }

    /// Plans the copy number \a index, which commit() makes.
    void add(std::size_t index, const QString &source, const QString &destination)
    {
        PendingCopy copy{index, source, destination, {}, {}, false, false, {}};
        if (!canBePath(source) || !canBePath(destination)) {
            report(copy, FileError::NotAPath);
            return;
        }
        QFileInfo from(source);
        const QFileInfo before(destination);
        if (dependsOnPending(from, before)) {
            commit();
            from.refresh();
        }
        if (const std::error_code error = prepare(copy, from, before)) {
            report(copy, error);
            return;
        }
        mPending.push_back(copy);
        const QString key = keyOf(before);
        mTouched << key << backupOf(key);
        if (copy.replacesPassage) {
            commit();
        }
    }

    /// Makes the pending copies and puts them in the places of their destinations.
    void commit()
    {
        finish([](const PendingCopy &copy) { return copyFile(copy.source, copy.fresh); },
            &PendingCopy::fresh);
        // The new content must be on the disk before it gets the old name; the old content, too,
        // which may have been written just before.
        sync(syncContent, &PendingCopy::fresh);
        finish(replaceDestination, &PendingCopy::fresh);
        sync(syncNames, &PendingCopy::destination);
        for (const PendingCopy &copy : mPending) {
            mResults[copy.index] = true;
        }
        mPending.clear();
        mTouched.clear();
        mFolders.clear();
    }

    const std::vector<bool> &results() const { return mResults; }

private:
    struct PendingCopy {
        std::size_t index;
        QString source;
        QString destination;
        QString fresh; ///< the copy, beside the destination until it takes its place
        std::optional<std::size_t> fileSystem; ///< none if its folder is not there
        bool isNew;                            ///< nothing is at the destination
        bool replacesPassage;  ///< other paths may lead through the destination or the backup
        std::error_code error; ///< of the last step
    };
    struct Folder {
        QString key;                           ///< empty until it is known
        std::optional<std::size_t> fileSystem; ///< none until it is known
    };

    /// Returns one text for all paths of an entry, links in its folder's path or not.
    QString keyOf(const QFileInfo &entry)
    {
        const QString path = entry.path();
        QString &folder = mFolders[path].key;
        if (folder.isEmpty()) {
            folder = QFileInfo(path).canonicalFilePath().toCaseFolded() + u'/';
        }
        return folder + entry.fileName().toCaseFolded();
    }

    /// Tells whether the result would be another one if the pending copies were not made first.
    bool dependsOnPending(const QFileInfo &from, const QFileInfo &before)
    {
        if (mPending.empty()) {
            return false;
        }
        if (isLink(from)) {
            const QString target = from.canonicalFilePath();
            const bool leadsNowhere = target.isEmpty(); // yet
            if (leadsNowhere || mTouched.contains(keyOf(QFileInfo(target)))) {
                return true;
            }
        }
        const QString key = keyOf(before);
        return mTouched.contains(keyOf(from)) || mTouched.contains(key) ||
               mTouched.contains(backupOf(key));
    }

    std::error_code prepare(PendingCopy &copy, const QFileInfo &from, const QFileInfo &before)
    {
        // Reading from a pipe may never begin, from a device never end.
        if (!from.isFile() && !from.isDir() && from.exists()) {
            return FileError::SourceIsNoFile;
        }
        copy.isNew = !entryExists(before);
        if (!copy.isNew && areSameEntry(from, before)) {
            return FileError::SameFile;
        }
        copy.replacesPassage =
            !copy.isNew && (isPassage(before) || isPassage(QFileInfo(backupOf(copy.destination))));
        const QString folder = before.path();
        copy.fresh = freePathIn(folder);
        std::optional<std::size_t> &fileSystem = mFolders[folder].fileSystem;
        if (!fileSystem) {
            fileSystem = mFileSystems.add(folder);
        }
        copy.fileSystem = fileSystem;
        return {};
    }

    static std::error_code replaceDestination(const PendingCopy &copy)
    {
        if (copy.isNew && !os::renameNew(copy.fresh, copy.destination)) {
            return {};
        }
        const QFileInfo before(copy.destination);
        const QString backup = backupOf(copy.destination);
        if (!entryExists(before)) {
            return os::renameNew(copy.fresh, copy.destination);
        }
        if (!keepsContentOf(copy.destination, backup)) {
            if (before.isDir() && !isLink(before)) {
                QFile::remove(backup); // a folder does not replace a file
            }
            if (const std::error_code error =
                    os::keepAsBackup(copy.destination, backup, freePathIn(before.path()))) {
                return error;
            }
            if (!entryExists(QFileInfo(copy.destination))) {
                return os::renameNew(copy.fresh, copy.destination);
            }
        }
        return os::renameOver(copy.fresh, copy.destination);
    }

    static std::error_code syncContent(const PendingCopy &copy)
    {
        const std::error_code error = os::syncFile(copy.fresh);
        return error || !QFileInfo(copy.destination).isFile() ? error
                                                              : os::syncFile(copy.destination);
    }

    static std::error_code syncNames(const PendingCopy &copy)
    {
        return os::syncFolder(QFileInfo(copy.destination).path());
    }

    /// Syncs one pending copy with \a syncOne, and more than one together.
    void sync(std::error_code (*syncOne)(const PendingCopy &), QString PendingCopy::*made)
    {
        if (mPending.size() == 1 && !QFileInfo(mPending.front().destination).isDir()) {
            finish(syncOne, made);
        } else if (!mPending.empty()) {
            const std::vector<std::error_code> errors = mFileSystems.sync();
            const std::error_code unsynced = std::make_error_code(std::errc::io_error);
            for (PendingCopy &copy : mPending) {
                copy.error = copy.fileSystem ? errors[*copy.fileSystem] : unsynced;
            }
            dropFailed(made);
        }
    }

    /// Does \a step for each pending copy, and drops those that fail.
    template<class Step>
    void finish(Step step, QString PendingCopy::*made)
    {
        for (PendingCopy &copy : mPending) {
            copy.error = step(copy);
        }
        dropFailed(made);
    }

    /// Reports the pending copies that failed, which give up what they \a made.
    void dropFailed(QString PendingCopy::*made)
    {
        std::erase_if(mPending, [&](const PendingCopy &copy) {
            if (copy.error) {
                os::discardCopy(copy.*made);
                report(copy, copy.error);
            }
            return bool(copy.error);
        });
    }

    static void report(const PendingCopy &copy, const std::error_code &error)
    {
        // No literal in tr(): lupdate leaves out what Qt's own catalogues translate.
        static constexpr char kCannotOpen[] = "Cannot open %1 for input";
        const QString reason = error == FileError::SourceNotOpened
                                   ? QFile::tr(kCannotOpen).arg(copy.source)
                                   : reasonOf(error);
        logAt(kNotCopiedWithBackup, Debug, Logger::Warning,
            QStringLiteral("Failed to copy %1 to %2 because %3")
                .arg(copy.source, copy.destination, reason));
        const QString backup = backupOf(copy.destination);
        if (entryExists(QFileInfo(backup)) && !entryExists(QFileInfo(copy.destination))) {
            QFile::rename(backup, copy.destination);
        }
    }

    std::vector<bool> mResults;
    std::vector<PendingCopy> mPending;
    QSet<QString> mTouched;          ///< keys of the destinations and backups of the pending
    QHash<QString, Folder> mFolders; ///< by path
    os::SyncedFileSystems mFileSystems;
};

} // namespace

std::vector<bool> FileUtils::copyWithBackup(const std::vector<std::pair<QString, QString>> &copies)
{
    CopyBatch batch(copies.size());
    for (std::size_t i = 0; i < copies.size(); ++i) {
        batch.add(i, copies[i].first, copies[i].second);
    }
    batch.commit();
    return batch.results();
}

bool FileUtils::copyWithBackup(const QString &source, const QString &destination)
{
    return copyWithBackup(std::vector{std::pair{source, destination}}).front();
}

} // namespace Vyn::OvraBase
