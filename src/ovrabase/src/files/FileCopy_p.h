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
/// Helper functions from which the copy functions are built. A std::error_code is empty on success.
namespace Vyn::OvraBase {

namespace os {

/// A folder in which copies are made. On Linux the folder is opened once, and all calls are
/// relative to that descriptor. On Windows each call uses the full path.
class CopyFolder {
public:
    explicit CopyFolder(const QString &path);
    ~CopyFolder();
    CopyFolder(const CopyFolder &) = delete;
    CopyFolder &operator=(const CopyFolder &) = delete;

    const QString &path() const { return mPath; }
    QString path(const QString &name) const;

    /// Does what Vyn::OvraBase::copyFile() does, for a file that is not a Qt resource. On Linux,
    /// the copy has the permissions of \a from without the set-uid, set-gid and sticky bits, if the
    /// file system allows to set them. On Windows, it has the attributes of \a from.
    std::error_code copyFile(const QString &from, const QString &name) const;

    /// Removes the copy \a name, even if it is read-only. Ignores failures.
    void discardCopy(const QString &name) const;

    /// Waits until the content of the file \a name is on the disk. On Windows, a file that this
    /// user may not write, or that another program does not share, is not synced. That is no
    /// failure.
    std::error_code syncFile(const QString &name) const;

    /// Waits until the names in the folder are on the disk. If the file system cannot sync folders,
    /// succeeds without that. Does nothing on Windows, where each rename waits.
    std::error_code syncNames() const;

    /// Renames the entry \a from of this folder to the name \a to. Fails if \a to exists. On a file
    /// system with neither RENAME_NOREPLACE nor hard links, a \a to that another program makes
    /// during the call may be replaced.
    std::error_code renameNew(const QString &from, const QString &to) const;

    /// Renames the entry \a from of this folder to the name \a to in one step. An existing file
    /// \a to is replaced, but not by a folder. On failure nothing has changed.
    std::error_code renameOver(const QString &from, const QString &to) const;

    /// Makes \a backup a hard link to the entry \a name. Renames the entry instead on Windows, and
    /// if no hard link to it can be made (for example, if it is a folder). An existing file or link
    /// \a backup is replaced, but not by a folder. \a spare is a free name, used for the link until
    /// it replaces \a backup.
    std::error_code keepAsBackup(
        const QString &name, const QString &backup, const QString &spare) const;

private:
    QString mPath;
    int mDescriptor = -1;   ///< -1 if the folder cannot be opened, and on Windows
    std::error_code mError; ///< why it cannot be opened
};

/// File systems that are synced as a whole, which costs less than one sync for each file. Windows
/// allows that to administrators only. There, sync() does nothing, and each copy and each rename of
/// a CopyFolder waits for the disk.
class SyncedFileSystems {
public:
    SyncedFileSystems() = default;
    ~SyncedFileSystems();
    SyncedFileSystems(const SyncedFileSystems &) = delete;
    SyncedFileSystems &operator=(const SyncedFileSystems &) = delete;

    /// Adds the file system of the folder \a path. To be called before anything is written there:
    /// sync() reports only write errors that happen after this call. Returns the index of the file
    /// system in the result of sync(), or nothing if the folder does not exist. On Windows, always
    /// returns 0.
    std::optional<std::size_t> add(const QString &path);

    /// Waits until everything that was written is on the disk. Returns a code for each file system.
    std::vector<std::error_code> sync() const;

private:
    struct FileSystem {
        unsigned long long id;
        int descriptor; ///< -1 if the folder cannot be opened, and on Windows
    };
    std::vector<FileSystem> mFileSystems;
};

/// Makes the folder \a to. Fails if \a to exists. The owner has all permissions. Group and others
/// have at most those of the folder \a from (all if it is a Qt resource): the umask is applied, and
/// if \a from is sticky, they may not write. On Windows, \a to has default permissions.
std::error_code makeFolderLike(const QString &from, const QString &to);

/// The folder \a to loses the set-gid bit and the permissions that \a from does not have.
/// To be called after the last entry is made in \a to. Does nothing on Windows.
void finishFolderLike(const QString &from, const QString &to);

/// Appends the names in the folder \a path, without "." and "..", to \a names. On failure, names
/// may be missing.
std::error_code listFolder(const QString &path, QStringList &names);

} // namespace os

/// Returns the CopyFolder for \a path. Reuses \a last if it has that path, otherwise replaces
/// \a last.
const os::CopyFolder &copyFolder(const QString &path, std::optional<os::CopyFolder> &last);

/// Copies the file or Qt resource \a from to the new file \a name in \a folder. Fails if \a name
/// exists. On failure no new file is left. The copy may not be on the disk yet.
std::error_code copyFile(const QFileInfo &from, const os::CopyFolder &folder, const QString &name);

} // namespace Vyn::OvraBase
