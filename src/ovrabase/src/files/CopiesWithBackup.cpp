// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileCopy_p.h"
#include "files/FileError_p.h"
#include "files/FileSystem_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QUuid>

#include <filesystem>
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
    if (a.fileName().compare(b.fileName(), Qt::CaseInsensitive) != 0 ||
        !areEquivalent(a.path(), b.path())) {
        return false;
    }
    if (a.fileName() == b.fileName()) {
        return true;
    }
    // Two spellings of one name, unless they are names of one file in a folder that tells them
    // apart.
    std::error_code unknown;
    return !isLink(a) && !isLink(b) && areEquivalent(a.filePath(), b.filePath()) &&
           std::filesystem::hard_link_count(os::nativePath(a.filePath()), unknown) == 1;
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

QString freePathIn(const QDir &folder)
{
    return folder.filePath(
        QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".tmp"));
}

/// Copies with backup, made one after another and synced together.
class CopyBatch {
public:
    explicit CopyBatch(std::size_t size)
        : mResults(size)
    {
    }

    /// Makes the copy number \a index, which takes the place of its destination with commit().
    void add(std::size_t index, const QString &source, const QString &destination)
    {
        if (dependsOnPending(source, destination)) {
            commit();
        }
        PendingCopy copy{index, source, destination, {}, 0, false, false};
        if (const std::error_code error = prepare(copy)) {
            report(copy, error);
            return;
        }
        mPending.push_back(copy);
        const QString backup = backupOf(destination);
        mTouched << keyOf(destination) << keyOf(backup);
        if (copy.replacesPassage) {
            commit();
        }
    }

    /// Puts the pending copies in the places of their destinations.
    void commit()
    {
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
        std::size_t fileSystem;
        bool isNew;           ///< nothing is at the destination
        bool replacesPassage; ///< other paths may lead through the destination or the backup
    };

    /// Returns one text for all paths of an entry, links in its folder's path or not.
    QString keyOf(const QString &path)
    {
        const QFileInfo entry(path);
        QString &folder = mFolders[entry.path()];
        if (folder.isEmpty()) {
            folder = QFileInfo(entry.path()).canonicalFilePath();
        }
        return QString(folder + u'/' + entry.fileName()).toCaseFolded();
    }

    /// Tells whether the result would be another one if the pending copies were not made first.
    bool dependsOnPending(const QString &source, const QString &destination)
    {
        const QFileInfo from(source);
        const QString target = isLink(from) ? from.canonicalFilePath() : source;
        const bool leadsNowhere = isLink(from) && target.isEmpty(); // yet
        return !mPending.empty() &&
               (leadsNowhere || mTouched.contains(keyOf(target)) ||
                   mTouched.contains(keyOf(source)) || mTouched.contains(keyOf(destination)) ||
                   mTouched.contains(keyOf(backupOf(destination))));
    }

    std::error_code prepare(PendingCopy &copy)
    {
        if (!canBePath(copy.source) || !canBePath(copy.destination)) {
            return FileError::NotAPath;
        }
        const QFileInfo from(copy.source);
        // Reading from a pipe may never begin, from a device never end.
        if (!from.isFile() && !from.isDir() && from.exists()) {
            return FileError::SourceIsNoFile;
        }
        const QFileInfo before(copy.destination);
        copy.isNew = !entryExists(before);
        if (!copy.isNew && areSameEntry(from, before)) {
            return FileError::SameFile;
        }
        copy.replacesPassage =
            !copy.isNew && (isPassage(before) || isPassage(QFileInfo(backupOf(copy.destination))));
        copy.fresh = freePathIn(before.dir());
        copy.fileSystem = mFileSystems.add(before.path());
        return copyFile(copy.source, copy.fresh);
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
                    os::keepAsBackup(copy.destination, backup, freePathIn(before.dir()))) {
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
            finish([&](const PendingCopy &copy) { return errors[copy.fileSystem]; }, made);
        }
    }

    /// Does \a step for each pending copy. Those that fail are reported and give up what they
    /// \a made.
    template<class Step>
    void finish(Step step, QString PendingCopy::*made)
    {
        std::erase_if(mPending, [&](const PendingCopy &copy) {
            const std::error_code error = step(copy);
            if (error) {
                os::discardCopy(copy.*made);
                report(copy, error);
            }
            return bool(error);
        });
    }

    static void report(const PendingCopy &copy, const std::error_code &error)
    {
        // No literal in tr(): lupdate leaves out what Qt's own catalogues translate.
        static constexpr char kNotOpened[] = "Cannot open %1 for input";
        const QString reason = error == FileError::SourceNotOpened
                                   ? QFile::tr(kNotOpened).arg(copy.source)
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
    QSet<QString> mTouched;           ///< keys of the destinations and backups of the pending
    QHash<QString, QString> mFolders; ///< canonical paths of folders
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
