// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileCopy_p.h"
#include "files/FileError_p.h"
#include "files/FileSystem_p.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Vyn::OvraBase::os {
namespace {

/// Without set-uid, set-gid and sticky.
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

std::error_code lastError()
{
    return {errno, std::system_category()};
}

std::error_code errorOf(int result)
{
    return result == 0 ? std::error_code() : lastError();
}

class Descriptor {
public:
    Descriptor(const QString &path, int flags)
        : Descriptor(AT_FDCWD, path, flags)
    {
    }
    Descriptor(int folder, const QString &name, int flags, mode_t mode = 0)
        : mDescriptor(
              ::openat(folder, QFile::encodeName(name).constData(), flags | O_CLOEXEC, mode))
    {
    }
    ~Descriptor()
    {
        if (isOpen()) {
            ::close(mDescriptor);
        }
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    bool isOpen() const { return mDescriptor >= 0; }
    int get() const { return mDescriptor; }

    /// Leaves the descriptor to the caller.
    int release() { return std::exchange(mDescriptor, -1); }

private:
    int mDescriptor;
};

std::error_code writeAll(int file, const char *data, ssize_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(file, data, static_cast<std::size_t>(size));
        if (written < 0 && errno != EINTR) {
            return lastError();
        }
        data += std::max<ssize_t>(written, 0);
        size -= std::max<ssize_t>(written, 0);
    }
    return {};
}

/// Copies the bytes from the current offset of \a from to its end, and writes them at the current
/// offset of \a to. \a size is the size that the system has given for \a from.
std::error_code copyContent(int from, int to, off_t size)
{
    // copy_file_range() shares the blocks where the file system can. It fails for many pairs of
    // files, and can return 0 for files of /proc and /sys. It is not called if the size is 0, which
    // most files of /proc have. In these cases, the loop with read() and write() copies the rest,
    // and reports the error if there is one.
    constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
    off_t copied = 0;
    while (copied < size) {
        const ssize_t count = ::copy_file_range(from, nullptr, to, nullptr, kMostAtOnce, 0);
        if (count <= 0) {
            break;
        }
        copied += count;
    }
    if (size > 0 && copied >= size) {
        return {};
    }

    constexpr std::size_t kBufferSize = std::size_t{64} << 10;
    const auto buffer = std::make_unique_for_overwrite<char[]>(kBufferSize);
    for (;;) {
        const ssize_t count = ::read(from, buffer.get(), kBufferSize);
        if (count == 0) {
            return {};
        }
        if (count < 0 && errno != EINTR) {
            return lastError();
        }
        if (const std::error_code error = writeAll(to, buffer.get(), count)) {
            return error;
        }
    }
}

/// Returns the permissions for a copy of the folder \a path. A Qt resource has no permissions; for
/// it, the function returns all.
mode_t permissionsOfFolder(const QString &path)
{
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return kPermissions;
    }
    // The copy has no sticky bit. So group and others could remove entries of other users if they
    // could write to it.
    const mode_t lost = (status.st_mode & S_ISVTX) != 0 ? S_IWGRP | S_IWOTH : 0;
    return status.st_mode & kPermissions & ~lost;
}

/// The flags to open a file or folder that is synced. With O_NONBLOCK, open() does not wait for a
/// writer if the entry is a pipe.
constexpr int kToSync = O_RDONLY | O_NONBLOCK;

std::error_code syncOpened(const Descriptor &entry)
{
    if (!entry.isOpen() && errno == EACCES) {
        ::sync(); // an entry that may not be read can only be synced with everything else
        return {};
    }
    return entry.isOpen() ? errorOf(::fsync(entry.get())) : lastError();
}

} // namespace

CopyFolder::CopyFolder(const QString &path)
    : mPath(path)
{
    // O_PATH, because the names in a folder can be changed without the right to list them.
    Descriptor folder(path, O_PATH | O_DIRECTORY);
    mError = folder.isOpen() ? std::error_code() : lastError();
    mDescriptor = folder.release();
}

CopyFolder::~CopyFolder()
{
    if (mDescriptor >= 0) {
        ::close(mDescriptor);
    }
}

// Neither the standard library nor Qt is suitable: std::filesystem::copy_file() of GCC 12 misses
// the error of the last write. QFile::copy() copies the file from its beginning again after an
// error, and syncs each file.
std::error_code CopyFolder::copyFile(const QString &from, const QString &name) const
{
    const Descriptor source(from, O_RDONLY | O_NONBLOCK); // it may have become a pipe
    struct stat status {};
    if (!source.isOpen() || ::fstat(source.get(), &status) != 0) {
        return lastError();
    }
    if (!S_ISREG(status.st_mode)) {
        return S_ISDIR(status.st_mode) ? std::make_error_code(std::errc::is_a_directory)
                                       : FileError::SourceIsNoFile;
    }
    if (mError) {
        return mError;
    }
    const mode_t permissions = status.st_mode & kPermissions;
    Descriptor copy(mDescriptor, name, O_WRONLY | O_CREAT | O_EXCL, permissions);
    if (!copy.isOpen()) {
        return lastError();
    }
    std::error_code error = copyContent(source.get(), copy.get(), status.st_size);
    // openat() has applied the process's umask. On a mount whose files all belong to another user,
    // fchmod() is refused, and the copy keeps the permissions that it has.
    if (::fstat(copy.get(), &status) != 0 || (status.st_mode & ~mode_t{S_IFMT}) != permissions) {
        static_cast<void>(::fchmod(copy.get(), permissions));
    }
    // Starts to write without waiting, so that the disk works while the next file is copied. Small
    // files cost less if the sync at the end writes them all. That sync waits and reports the
    // errors.
    if (constexpr off_t kLeast = off_t{64} << 10; status.st_size >= kLeast) {
        static_cast<void>(::sync_file_range(copy.get(), 0, 0, SYNC_FILE_RANGE_WRITE));
    }
    if (::close(copy.release()) != 0 && !error) {
        error = lastError();
    }
    if (error) {
        discardCopy(name);
    }
    return error;
}

void CopyFolder::discardCopy(const QString &name) const
{
    ::unlinkat(mDescriptor, QFile::encodeName(name).constData(), 0);
}

std::error_code CopyFolder::syncFile(const QString &name) const
{
    return syncOpened(Descriptor(mDescriptor, name, kToSync));
}

std::error_code CopyFolder::syncNames() const
{
    const std::error_code error =
        syncOpened(Descriptor(mDescriptor, QStringLiteral("."), kToSync | O_DIRECTORY));
    // Some network file systems sync files only.
    return error == std::errc::invalid_argument ? std::error_code() : error;
}

std::error_code CopyFolder::renameNew(const QString &from, const QString &to) const
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray destination = QFile::encodeName(to);
    const std::error_code error = errorOf(::renameat2(
        mDescriptor, source.constData(), mDescriptor, destination.constData(), RENAME_NOREPLACE));
    if (error != std::errc::invalid_argument && error != std::errc::function_not_supported) {
        return error;
    }
    // This file system has no RENAME_NOREPLACE. linkat() does not replace an existing file either.
    // The file has two names for a moment.
    if (::linkat(mDescriptor, source.constData(), mDescriptor, destination.constData(), 0) == 0) {
        ::unlinkat(mDescriptor, source.constData(), 0);
        return {};
    }
    return errno == EEXIST ? lastError() : renameOver(from, to);
}

std::error_code CopyFolder::renameOver(const QString &from, const QString &to) const
{
    return errorOf(::renameat(mDescriptor, QFile::encodeName(from).constData(), mDescriptor,
        QFile::encodeName(to).constData()));
}

std::error_code CopyFolder::keepAsBackup(
    const QString &name, const QString &backup, const QString &spare) const
{
    const QByteArray second = QFile::encodeName(spare);
    if (::linkat(mDescriptor, QFile::encodeName(name).constData(), mDescriptor, second.constData(),
            0) != 0) {
        return renameOver(name, backup);
    }
    const std::error_code error = renameOver(spare, backup);
    if (error) {
        ::unlinkat(mDescriptor, second.constData(), 0);
    }
    return error;
}

SyncedFileSystems::~SyncedFileSystems()
{
    for (const FileSystem &fileSystem : mFileSystems) {
        if (fileSystem.descriptor >= 0) {
            ::close(fileSystem.descriptor);
        }
    }
}

std::optional<std::size_t> SyncedFileSystems::add(const QString &path)
{
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    const auto known = std::find_if(mFileSystems.cbegin(), mFileSystems.cend(),
        [&](const FileSystem &fileSystem) { return fileSystem.id == status.st_dev; });
    if (known != mFileSystems.cend()) {
        return static_cast<std::size_t>(known - mFileSystems.cbegin());
    }
    mFileSystems.push_back({status.st_dev, Descriptor(path, kToSync | O_DIRECTORY).release()});
    return mFileSystems.size() - 1;
}

std::vector<std::error_code> SyncedFileSystems::sync() const
{
    std::vector<std::error_code> errors;
    for (const FileSystem &fileSystem : mFileSystems) {
        if (fileSystem.descriptor < 0) {
            ::sync();
        }
        errors.push_back(fileSystem.descriptor < 0 ? std::error_code()
                                                   : errorOf(::syncfs(fileSystem.descriptor)));
    }
    return errors;
}

std::error_code makeFolderLike(const QString &from, const QString &to)
{
    return errorOf(::mkdir(QFile::encodeName(to).constData(), permissionsOfFolder(from) | S_IRWXU));
}

void finishFolderLike(const QString &from, const QString &to)
{
    const QByteArray path = QFile::encodeName(to);
    struct stat status {};
    ::stat(path.constData(), &status);
    const mode_t permissions = status.st_mode & permissionsOfFolder(from);
    // A folder can also have a set-gid bit, which it inherits from its parent folder.
    if (permissions != (status.st_mode & ~mode_t{S_IFMT})) {
        ::chmod(path.constData(), permissions);
    }
}

std::error_code listFolder(const QString &path, QStringList &names)
{
    namespace fs = std::filesystem;
    bool allReadable = true;
    std::error_code error;
    fs::directory_iterator entry(nativePath(path), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const QByteArray bytes = QByteArray::fromStdString(entry->path().filename().string());
        names.append(QFile::decodeName(bytes));
        if (QFile::encodeName(names.constLast()) != bytes) {
            names.removeLast();
            allReadable = false;
        }
    }
    return error || allReadable ? error : FileError::NameUnreadable;
}

} // namespace Vyn::OvraBase::os
