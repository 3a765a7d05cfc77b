// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>
#include <optional>
#include <system_error>
#include <vector>

/// \file
/// What copies are made of. Each function returns an empty code on success.
namespace Vyn::OvraBase {

/// Makes \a to, where nothing is yet, a copy of the file or Qt resource \a from. On failure nothing
/// new is at \a to. The copy need not be synced yet.
std::error_code copyFile(const QString &from, const QString &to);

namespace os {

/// Does what Vyn::OvraBase::copyFile() does for files of the system. The copy has the permissions
/// of \a from without the set-uid, set-gid and sticky bits, where the file system lets them be set.
std::error_code copyFile(const QString &from, const QString &to);

/// Removes the copy \a path, even if it is read-only. Ignores failures.
void discardCopy(const QString &path);

/// Waits until the content of the file \a path is on the disk.
std::error_code syncFile(const QString &path);

/// Waits until the names in the folder \a path are on the disk.
std::error_code syncFolder(const QString &path);

/// File systems that are synced as a whole, which costs less than one sync for each file. Windows
/// can sync files only: there, the other functions of this header sync what they write.
class SyncedFileSystems {
public:
    SyncedFileSystems() = default;
    ~SyncedFileSystems();
    SyncedFileSystems(const SyncedFileSystems &) = delete;
    SyncedFileSystems &operator=(const SyncedFileSystems &) = delete;

    /// Adds the file system of the folder \a path, before anything is written to it: only then is
    /// every write error told. Returns its index for sync(), none if there is no such folder.
    std::optional<std::size_t> add(const QString &path);

    /// Waits until all that was written is on the disk. Returns a code for each file system.
    std::vector<std::error_code> sync() const;

private:
    struct FileSystem {
        unsigned long long id;
        int descriptor; ///< -1 if the folder cannot be opened
    };
    std::vector<FileSystem> mFileSystems;
};

/// Renames \a from to \a to, which must not exist. Both are in one folder.
std::error_code renameNew(const QString &from, const QString &to);

/// Renames \a from to \a to in one step, over a file that is there. Without success nothing has
/// changed. Both are in one folder.
std::error_code renameOver(const QString &from, const QString &to);

/// Keeps the entry \a path under the name \a backup too, in place of what is there. Renames it
/// where it cannot have two names: a folder, on Windows, and on file systems without hard links.
/// The name \a spare must be free. All are in one folder.
std::error_code keepAsBackup(const QString &path, const QString &backup, const QString &spare);

/// Makes the folder \a to, where nothing is yet, not more open than the folder \a from; only its
/// owner has all rights.
std::error_code makeFolderLike(const QString &from, const QString &to);

/// Takes from the folder \a to, which is filled, what \a from does not allow its owner.
void finishFolderLike(const QString &from, const QString &to);

/// Appends the names in the folder \a path, without "." and "..", to \a names. On failure, not all
/// names are there.
std::error_code listFolder(const QString &path, QStringList &names);

} // namespace os
} // namespace Vyn::OvraBase
