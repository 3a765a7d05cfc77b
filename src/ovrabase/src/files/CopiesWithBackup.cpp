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
#include <QRandomGenerator>
#include <QSet>

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNotCopiedWithBackup{
    "FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()"};

constexpr QLatin1String kBackupEnd(".bak");

QString backupOf(const QString &path)
{
    return path + kBackupEnd;
}

bool areEquivalent(const QString &a, const QString &b)
{
    std::error_code unknown;
    return std::filesystem::equivalent(os::nativePath(a), os::nativePath(b), unknown);
}

/// Returns true if \a a and \a b are paths of the same entry, by the same name or by names that
/// differ in letter case. If an entry is a link, the link itself is compared, and not its target;
/// two paths of a link are only found to be the same if the names are equal.
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
    // The names are those of one file and differ only in letter case. They are either one entry, in
    // a folder that ignores case, or two hard links. If the file has one hard link, they are one
    // entry. Otherwise they are treated as two.
    std::error_code unknown;
    return std::filesystem::hard_link_count(os::nativePath(a.filePath()), unknown) == 1;
}

/// Returns true if \a backup is not a link and is the same file as \a path. Links in \a path are
/// followed.
bool keepsContentOf(const QString &path, const QString &backup)
{
    return !isLink(QFileInfo(backup)) && areEquivalent(path, backup);
}

/// Returns true for a link and for a folder, because both can be components of the paths of other
/// entries.
bool isPassage(const QFileInfo &entry)
{
    return isLink(entry) || entry.isDir();
}

/// A batch of copies with backup. The files are copied one by one, then synced together. On
/// Windows, each copy is synced when it is made.
class CopyBatch {
public:
    explicit CopyBatch(std::size_t size)
        : mResults(size)
    {
        mPending.reserve(size);
        mTouched.reserve(static_cast<qsizetype>(size));
    }

    /// Copies \a source to a temporary file, and reports a failure of that at once. commit() moves
    /// the file to \a destination and stores the result at \a index.
    void add(std::size_t index, const QString &source, const QString &destination)
    {
        PendingCopy copy{index, source, destination, {}, {}, {}, {}, false, false, {}};
        if (!canBePath(source) || !canBePath(destination)) {
            report(copy, FileError::NotAPath);
            return;
        }
        QFileInfo from(source);
        const QFileInfo to(destination);
        const QString key = keyOf(to, mDestination);
        if (dependsOnPending(from, key)) {
            commit();
            from.refresh();
        }
        copy.folder = to.path();
        copy.name = to.fileName();
        if (const std::error_code error = makeFresh(copy, from, to)) {
            report(copy, error);
            return;
        }
        mPending.push_back(copy);
        mTouched.insert(key);
        if (copy.replacesPassage) {
            commit();
        }
    }

    /// Moves the temporary files of the pending copies to their destinations.
    void commit()
    {
        // The new content must be on the disk before it gets the name of the old content. The old
        // content must be on the disk too: it may have been written a moment ago. (On Windows,
        // keepAsBackup() syncs it.)
        sync(&CopyBatch::syncContent, &PendingCopy::fresh);
        finish(&CopyBatch::replaceDestination, &PendingCopy::fresh);
        sync(&CopyBatch::syncNames, &PendingCopy::name);
        for (const PendingCopy &copy : mPending) {
            mResults[copy.index] = true;
        }
        mPending.clear();
        mTouched.clear();
        mDestination = {};
        mSource = {};
        mLastFolder.reset();
    }

    const std::vector<bool> &results() const { return mResults; }

private:
    struct PendingCopy {
        std::size_t index;
        QString source;
        QString destination;
        QString folder; ///< path of the folder that holds the destination
        QString name;   ///< file name of the destination
        QString fresh;  ///< file name of the temporary file, which is in the same folder
        /// Index in mFileSystems. On Linux, none if the folder does not exist.
        std::optional<std::size_t> fileSystem;
        bool isNew;            ///< true if nothing was at the destination
        bool replacesPassage;  ///< !isNew, and isPassage() for the destination or the backup
        std::error_code error; ///< error of the last step
    };
    struct Folder {
        QString path;
        QString canonical; ///< canonical path in folded case, with a "/" at the end
        std::optional<std::size_t> fileSystem; ///< index in mFileSystems; none until it is known
    };

    /// Returns a key that is equal for all paths of the same entry, except that a short name
    /// ("A~1.TXT") has a key of its own. Entries that differ only in letter case also get equal
    /// keys. The only effect is that commit() is called earlier than needed. \a last caches the
    /// folder of the previous call.
    static QString keyOf(const QFileInfo &entry, Folder &last)
    {
        const QString folder = entry.path();
        if (last.path != folder) {
            last = {folder, QFileInfo(folder).canonicalFilePath().toCaseFolded() + u'/', {}};
        }
        return last.canonical + entry.fileName().toCaseFolded();
    }

    /// Returns true if \a key is the key of a pending destination or of its backup.
    bool isTouched(const QString &key) const
    {
        return mTouched.contains(key) ||
               (key.endsWith(kBackupEnd) && mTouched.contains(key.chopped(kBackupEnd.size())));
    }

    /// Returns true if the pending copies must be committed before \a from is copied to the
    /// destination with the key \a to: a pending copy creates or replaces \a from, its target, the
    /// destination or the backup.
    bool dependsOnPending(const QFileInfo &from, const QString &to)
    {
        if (mPending.empty()) {
            return false;
        }
        if (isLink(from)) {
            const QString target = from.canonicalFilePath();
            const bool leadsNowhere = target.isEmpty(); // a pending copy may create the target
            if (leadsNowhere || isTouched(keyOf(QFileInfo(target), mSource))) {
                return true;
            }
        }
        return isTouched(keyOf(from, mSource)) || isTouched(to) || mTouched.contains(backupOf(to));
    }

    /// Copies \a from to a temporary file. Sets the members fresh, fileSystem, isNew and
    /// replacesPassage of \a copy.
    std::error_code makeFresh(PendingCopy &copy, const QFileInfo &from, const QFileInfo &to)
    {
        // Reading a pipe may block forever. A device may have no end.
        if (!from.isFile() && !from.isDir() && from.exists()) {
            return FileError::SourceIsNoFile;
        }
        copy.isNew = !entryExists(to);
        if (!copy.isNew && areSameEntry(from, to)) {
            return FileError::SameFile;
        }
        copy.replacesPassage =
            !copy.isNew && (isPassage(to) || isPassage(QFileInfo(backupOf(copy.destination))));
        if (!mDestination.fileSystem) {
            mDestination.fileSystem = mFileSystems.add(copy.folder);
        }
        copy.fileSystem = mDestination.fileSystem;
        copy.fresh = freeName();
        return copyFile(from, open(copy), copy.fresh);
    }

    /// Makes the entry at the destination, if there is one, the backup. An entry that leads to the
    /// backup is not kept. Then gives the name of the destination to the temporary file.
    std::error_code replaceDestination(const PendingCopy &copy)
    {
        const os::CopyFolder &folder = open(copy);
        if (copy.isNew && !folder.renameNew(copy.fresh, copy.name)) {
            return {};
        }
        const QFileInfo before(copy.destination);
        const QString backup = backupOf(copy.destination);
        if (!entryExists(before)) {
            return folder.renameNew(copy.fresh, copy.name);
        }
        if (copy.name.isEmpty()) { // the path ends in a separator
            return std::make_error_code(std::errc::invalid_argument);
        }
        if (!keepsContentOf(copy.destination, backup)) {
            if (before.isDir() && !isLink(before)) {
                QFile::remove(backup); // a folder cannot be renamed over a file
            }
            if (const std::error_code error =
                    folder.keepAsBackup(copy.name, backupOf(copy.name), freeName())) {
                return error;
            }
            if (!entryExists(QFileInfo(copy.destination))) {
                return folder.renameNew(copy.fresh, copy.name);
            }
        }
        return folder.renameOver(copy.fresh, copy.name);
    }

    std::error_code syncContent(const PendingCopy &copy)
    {
        const std::error_code error = open(copy).syncFile(copy.fresh);
        return error || !QFileInfo(copy.destination).isFile() ? error
                                                              : open(copy).syncFile(copy.name);
    }

    std::error_code syncNames(const PendingCopy &copy) { return open(copy).syncNames(); }

    /// Syncs a single pending copy with \a syncOne. Syncs the whole file systems for several
    /// copies, and for a single copy whose destination is a folder: syncOne() would not sync the
    /// content of that folder, which becomes the backup.
    ///
    /// Drops the copies that fail, see dropFailed(). \a made is the member with the name of the new
    /// file: `fresh` before the temporary file is moved, and `name` afterwards.
    void sync(
        std::error_code (CopyBatch::*syncOne)(const PendingCopy &), QString PendingCopy::*made)
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

    /// Calls \a step for each pending copy. Drops those that fail, see dropFailed().
    void finish(std::error_code (CopyBatch::*step)(const PendingCopy &), QString PendingCopy::*made)
    {
        for (PendingCopy &copy : mPending) {
            copy.error = (this->*step)(copy);
        }
        dropFailed(made);
    }

    /// Removes the copies that have an error from mPending, and reports them. Deletes the new file
    /// of each; the member \a made is its name.
    void dropFailed(QString PendingCopy::*made)
    {
        std::erase_if(mPending, [&](const PendingCopy &copy) {
            if (copy.error) {
                open(copy).discardCopy(copy.*made);
                report(copy, copy.error);
            }
            return bool(copy.error);
        });
    }

    const os::CopyFolder &open(const PendingCopy &copy)
    {
        return copyFolder(copy.folder, mLastFolder);
    }

    /// Returns a random name for a temporary file, which no entry has.
    QString freeName() { return mRandom + QString::number(++mNames) + QStringLiteral(".tmp"); }

    /// Logs the failure of \a copy. Renames the backup back if the destination is missing.
    static void report(const PendingCopy &copy, const std::error_code &error)
    {
        // The argument of tr() is not a literal, so that lupdate does not extract the text: Qt's
        // own catalogues translate it.
        static constexpr char kCannotOpen[] = "Cannot open %1 for input";
        const QString reason = error == FileError::SourceNotOpened
                                   ? QFile::tr(kCannotOpen).arg(copy.source)
                                   : reasonOf(error);
        logAt(kNotCopiedWithBackup, Debug, Logger::Warning,
            QStringLiteral("Failed to copy %1 to %2 because %3")
                .arg(copy.source, copy.destination, reason));
        if (!entryExists(QFileInfo(copy.destination))) {
            QFile::rename(backupOf(copy.destination), copy.destination);
        }
    }

    std::vector<bool> mResults;
    std::vector<PendingCopy> mPending;
    QSet<QString> mTouched; ///< keys of the pending destinations
    Folder mSource;         ///< folder of the last source or of its target, for keyOf()
    Folder mDestination;    ///< folder of the last destination, for keyOf() and makeFresh()
    std::optional<os::CopyFolder> mLastFolder; ///< the last result of open()
    os::SyncedFileSystems mFileSystems;
    // The names of freeName() are short, because Linux allocates memory for each name of 40 bytes
    // and more.
    QString mRandom = QString::number(QRandomGenerator::system()->generate64(), 36) + u'-';
    int mNames = 0;
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
