// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <optional>
#include <system_error>
#include <vector>

class QFileInfo;

/// \file
/// The steps of copies. A std::error_code is empty on success.
namespace Vyn::OvraBase {

namespace os {

/// A folder in which copies are made. The system looks up its path once, where it can.
class CopyFolder {
public:
    explicit CopyFolder(const QString &path);
    ~CopyFolder();
    CopyFolder(const CopyFolder &) = delete;
    CopyFolder &operator=(const CopyFolder &) = delete;

    const QString &path() const { return mPath; }
    QString path(const QString &name) const;

    /// Does what Vyn::OvraBase::copyFile() does for files of the system. The copy has the
    /// permissions of \a from without the set-uid, set-gid and sticky bits, where the file system
    /// lets them be set.
    std::error_code copyFile(const QString &from, const QString &name) const;

    /// Removes the copy \a name, even if it is read-only. Ignores failures.
    void discardCopy(const QString &name) const;

    /// Waits until the content of the file \a name is on the disk.
    std::error_code syncFile(const QString &name) const;

    /// Waits until the names in the folder are on the disk.
    std::error_code syncNames() const;

    /// Renames \a from to \a to, which must not exist.
    std::error_code renameNew(const QString &from, const QString &to) const;

    /// Renames \a from to \a to in one step, over a file that exists. On failure nothing has
    /// changed.
    std::error_code renameOver(const QString &from, const QString &to) const;

    /// Gives the entry \a name the second name \a backup, in place of what has it. Renames the
    /// entry where it cannot have two names: a folder, on Windows, and on file systems without hard
    /// links. No entry may have the name \a spare.
    std::error_code keepAsBackup(
        const QString &name, const QString &backup, const QString &spare) const;

private:
    QString mPath;
    int mDescriptor = -1;   ///< -1 if the folder cannot be opened, and on Windows
    std::error_code mError; ///< why it cannot be opened
};

/// File systems that are synced as a whole, which costs less than one sync for each file. Windows
/// can sync files only. There, the other functions of this header sync what they write.
class SyncedFileSystems {
public:
    SyncedFileSystems() = default;
    ~SyncedFileSystems();
    SyncedFileSystems(const SyncedFileSystems &) = delete;
    SyncedFileSystems &operator=(const SyncedFileSystems &) = delete;

    /// Adds the file system of the folder \a path. To be called before anything is written there:
    /// sync() reports only write errors that happen after this call. Returns the index of the file
    /// system in the result of sync(), nothing if the folder does not exist.
    std::optional<std::size_t> add(const QString &path);

    /// Waits until everything that was written is on the disk. Returns a code for each file system.
    std::vector<std::error_code> sync() const;

private:
    struct FileSystem {
        unsigned long long id;
        int descriptor; ///< -1 if the folder cannot be opened
    };
    std::vector<FileSystem> mFileSystems;
};

/// Makes the folder \a to, which must not exist, with the permissions of the folder \a from and all
/// rights for its owner.
std::error_code makeFolderLike(const QString &from, const QString &to);

/// Takes from the owner of the folder \a to the rights that the owner of \a from does not have. To
/// be called when the folder is filled.
void finishFolderLike(const QString &from, const QString &to);

/// Appends the names in the folder \a path, without "." and "..", to \a names. On failure, not all
/// names are there.
std::error_code listFolder(const QString &path, QStringList &names);

} // namespace os

/// Returns the open folder \a path: \a last if that is the one, else a new one, kept in \a last.
const os::CopyFolder &copyFolder(const QString &path, std::optional<os::CopyFolder> &last);

/// Makes \a name, which must not exist in \a folder, a copy of the file or Qt resource \a from. On
/// failure nothing new is there. The copy need not be synced yet.
std::error_code copyFile(const QFileInfo &from, const os::CopyFolder &folder, const QString &name);

} // namespace Vyn::OvraBase
