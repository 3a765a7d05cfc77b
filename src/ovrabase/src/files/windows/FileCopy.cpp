// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileCopy_p.h"
#include "files/FileSystem_p.h"

#include <QDir>

#include <filesystem>

#include <qt_windows.h>

namespace Vyn::OvraBase::os {
namespace {

std::error_code errorFrom(DWORD code)
{
    return {static_cast<int>(code), std::system_category()};
}

/// Makes the file \a path writable while an object of this class exists. Windows does not replace,
/// delete or sync a read-only file.
class WithoutReadOnly {
public:
    explicit WithoutReadOnly(const std::filesystem::path &path)
        : mPath(path)
        , mAttributes(::GetFileAttributesW(path.c_str()))
    {
        if (isReadOnly()) {
            ::SetFileAttributesW(mPath.c_str(), mAttributes & ~DWORD{FILE_ATTRIBUTE_READONLY});
        }
    }
    ~WithoutReadOnly()
    {
        if (isReadOnly()) {
            ::SetFileAttributesW(mPath.c_str(), mAttributes);
        }
    }
    WithoutReadOnly(const WithoutReadOnly &) = delete;
    WithoutReadOnly &operator=(const WithoutReadOnly &) = delete;

    /// Prevents the destructor from making the file read-only again. To be called if the file has
    /// been replaced or will be deleted.
    void release() { mAttributes = INVALID_FILE_ATTRIBUTES; }

private:
    bool isReadOnly() const
    {
        return mAttributes != INVALID_FILE_ATTRIBUTES &&
               (mAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    }

    std::filesystem::path mPath;
    DWORD mAttributes;
};

std::error_code rename(const QString &from, const QString &to, DWORD flags)
{
    const bool isRenamed = ::MoveFileExW(nativePath(from).c_str(), nativePath(to).c_str(),
                               flags | MOVEFILE_WRITE_THROUGH) != 0;
    return errorFrom(isRenamed ? ERROR_SUCCESS : ::GetLastError());
}

std::error_code sync(const std::filesystem::path &path)
{
    const WithoutReadOnly writable(path);
    const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE,
        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return errorFrom(::GetLastError());
    }
    const DWORD code = ::FlushFileBuffers(file) ? ERROR_SUCCESS : ::GetLastError();
    ::CloseHandle(file);
    return errorFrom(code);
}

} // namespace

CopyFolder::CopyFolder(const QString &path)
    : mPath(path)
{
}

CopyFolder::~CopyFolder() {}

std::error_code CopyFolder::copyFile(const QString &from, const QString &name) const
{
    const std::filesystem::path copy = nativePath(path(name));
    const bool wasFree = ::GetFileAttributesW(copy.c_str()) == INVALID_FILE_ATTRIBUTES;
    const bool isCopied = ::CopyFileW(nativePath(from).c_str(), copy.c_str(), TRUE) != 0;
    const std::error_code error = isCopied ? sync(copy) : errorFrom(::GetLastError());
    if (error && wasFree && error.value() != ERROR_FILE_EXISTS) {
        discardCopy(name);
    }
    return error;
}

void CopyFolder::discardCopy(const QString &name) const
{
    const std::filesystem::path copy = nativePath(path(name));
    WithoutReadOnly(copy).release();
    ::DeleteFileW(copy.c_str());
}

std::error_code CopyFolder::syncFile(const QString &name) const
{
    const std::error_code error = sync(nativePath(path(name)));
    // Assumes that this user has written nothing to a file that cannot be opened for writing.
    const bool mayNotWrite =
        error.value() == ERROR_ACCESS_DENIED || error.value() == ERROR_SHARING_VIOLATION;
    return mayNotWrite ? std::error_code() : error;
}

std::error_code CopyFolder::syncNames() const
{
    return {}; // with MOVEFILE_WRITE_THROUGH, each rename waits for the disk
}

std::error_code CopyFolder::renameNew(const QString &from, const QString &to) const
{
    return rename(path(from), path(to), 0);
}

std::error_code CopyFolder::renameOver(const QString &from, const QString &to) const
{
    WithoutReadOnly replaceable(nativePath(path(to)));
    const std::error_code error = rename(path(from), path(to), MOVEFILE_REPLACE_EXISTING);
    if (!error) {
        replaceable.release();
    }
    return error;
}

std::error_code CopyFolder::keepAsBackup(
    const QString &name, const QString &backup, const QString & /*spare*/) const
{
    // The old content may not be on the disk yet: SyncedFileSystems syncs nothing here.
    if (const std::error_code error = syncFile(name)) {
        return error;
    }
    // Renames the file and makes no hard link. If another program has the file open, it may be
    // impossible to rename or replace it, but possible to link it: the link would replace the older
    // backup, and then the copy would fail.
    return renameOver(name, backup);
}

SyncedFileSystems::~SyncedFileSystems() {}

std::optional<std::size_t> SyncedFileSystems::add(const QString & /*path*/)
{
    if (mFileSystems.empty()) {
        mFileSystems.push_back({0, -1});
    }
    return 0;
}

std::vector<std::error_code> SyncedFileSystems::sync() const
{
    return std::vector<std::error_code>(mFileSystems.size());
}

std::error_code makeFolderLike(const QString & /*from*/, const QString &to)
{
    const bool isMade = ::CreateDirectoryW(nativePath(to).c_str(), nullptr) != 0;
    return errorFrom(isMade ? ERROR_SUCCESS : ::GetLastError());
}

void finishFolderLike(const QString & /*from*/, const QString & /*to*/) {}

// For a path of 256 or more characters, MinGW's std::filesystem::directory_iterator lists the
// current folder.
std::error_code listFolder(const QString &path, QStringList &names)
{
    const std::filesystem::path pattern =
        nativePath(QDir(path).absoluteFilePath(QStringLiteral("*")));
    WIN32_FIND_DATAW entry;
    const HANDLE search = ::FindFirstFileW(pattern.c_str(), &entry);
    DWORD code = search == INVALID_HANDLE_VALUE ? ::GetLastError() : ERROR_SUCCESS;
    while (code == ERROR_SUCCESS) {
        const QString name = QString::fromWCharArray(entry.cFileName);
        if (name != u"." && name != u"..") {
            names.append(name);
        }
        code = ::FindNextFileW(search, &entry) ? ERROR_SUCCESS : ::GetLastError();
    }
    if (search != INVALID_HANDLE_VALUE) {
        ::FindClose(search);
    }
    // The root folder of a drive has no "." and "..". If it is empty, no name is found.
    return code == ERROR_NO_MORE_FILES || code == ERROR_FILE_NOT_FOUND ? std::error_code()
                                                                       : errorFrom(code);
}

} // namespace Vyn::OvraBase::os
