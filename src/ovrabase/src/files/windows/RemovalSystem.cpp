// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileSystem_p.h"
#include "files/RemovalSystem_p.h"

#include <QString>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
#include <winternl.h>

#include <qt_windows.h>

namespace Vyn::OvraBase::os {
namespace {

/// Other programs may do everything with an entry that is open here. The system decides whether an
/// entry can be removed that they have open.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kRemoval = DELETE | SYNCHRONIZE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;
constexpr DWORD kListing = SYNCHRONIZE | FILE_READ_ATTRIBUTES | FILE_LIST_DIRECTORY;

struct CloseHandle {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandle>;

std::error_code errorWith(DWORD code)
{
    return {static_cast<int>(code), std::system_category()};
}

/// Opens \a path. With FILE_FLAG_OPEN_REPARSE_POINT in \a flags, opens a link and not its target.
/// On failure, returns null and sets the last error.
Handle openPath(const QString &path, DWORD access, DWORD flags)
{
    const HANDLE handle = ::CreateFileW(nativePath(path).c_str(), access, kShareAll, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// Opens the entry \a name in \a folder. Opens a link and not its target. On failure, returns null
/// and sets the last error.
Handle openEntry(HANDLE folder, std::wstring name, DWORD access)
{
    const auto size = static_cast<USHORT>(name.size() * sizeof(wchar_t));
    UNICODE_STRING text{size, size, name.data()};
    OBJECT_ATTRIBUTES attributes{};
    InitializeObjectAttributes(&attributes, &text, 0, folder, nullptr);
    IO_STATUS_BLOCK status{};
    HANDLE handle = nullptr;
    const NTSTATUS result =
        ::NtCreateFile(&handle, access, &attributes, &status, nullptr, 0, kShareAll, FILE_OPEN,
            FILE_OPEN_REPARSE_POINT | FILE_OPEN_FOR_BACKUP_INTENT | FILE_SYNCHRONOUS_IO_NONALERT,
            nullptr, 0);
    if (result != 0) {
        ::SetLastError(::RtlNtStatusToDosError(result));
        return nullptr;
    }
    return Handle(handle);
}

/// Returns true if \a entry is a folder, and false if it is a link to one.
bool isFolder(HANDLE entry)
{
    FILE_ATTRIBUTE_TAG_INFO info{};
    return ::GetFileInformationByHandleEx(entry, FileAttributeTagInfo, &info, sizeof(info)) &&
           (info.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 &&
           ((info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 ||
               !IsReparseTagNameSurrogate(info.ReparseTag));
}

/// Sets or clears the attribute "read-only". Returns true if that changed it.
bool setReadOnly(HANDLE entry, bool isReadOnly)
{
    FILE_BASIC_INFO info{};
    if (!::GetFileInformationByHandleEx(entry, FileBasicInfo, &info, sizeof(info)) ||
        ((info.FileAttributes & FILE_ATTRIBUTE_READONLY) != 0) == isReadOnly) {
        return false;
    }
    info.FileAttributes ^= FILE_ATTRIBUTE_READONLY;
    if (info.FileAttributes == 0) {
        info.FileAttributes = FILE_ATTRIBUTE_NORMAL; // 0 means that the attributes do not change
    }
    return ::SetFileInformationByHandle(entry, FileBasicInfo, &info, sizeof(info)) != 0;
}

/// Removes the open entry \a entry. It may exist until all its handles are closed.
std::error_code removeOpened(HANDLE entry)
{
    // First with the POSIX semantics of Windows 10: the name disappears at once, even if other
    // programs have the entry open, so that its folder can be removed. Not every file system can do
    // this. The headers of MinGW lack the names of these constants.
    constexpr auto kDispositionInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
    DWORD deletePosixIgnoreReadOnly = 0x01 | 0x02 | 0x10;
    if (::SetFileInformationByHandle(entry, kDispositionInfoEx, &deletePosixIgnoreReadOnly,
            sizeof(deletePosixIgnoreReadOnly))) {
        return {};
    }
    const bool wasReadOnly = setReadOnly(entry, false);
    FILE_DISPOSITION_INFO disposition{TRUE};
    if (::SetFileInformationByHandle(
            entry, FileDispositionInfo, &disposition, sizeof(disposition))) {
        return {};
    }
    const DWORD reason = ::GetLastError();
    if (wasReadOnly) {
        setReadOnly(entry, true);
    }
    return errorWith(reason);
}

/// A folder whose content is being removed, and a piece of its listing.
class Level {
public:
    explicit Level(HANDLE folder)
        : mFolder(folder)
    {
    }
    explicit Level(Handle folder)
        : mOwned(std::move(folder))
        , mFolder(mOwned.get())
    {
    }

    HANDLE folder() const { return mFolder; }

    struct Entry {
        std::wstring name;
        bool mayBeFolder = false;
    };

    /// Returns the next entry. After the last one, returns an entry with an empty name, and sets
    /// \a error if the folder cannot be read to its end.
    Entry next(std::error_code &error)
    {
        if (mOffset == kNoMore && !readMore(error)) {
            return {};
        }
        const std::byte *const data = mListing->data() + mOffset;
        const auto *info = reinterpret_cast<const FILE_ID_BOTH_DIR_INFO *>(data);
        mOffset = info->NextEntryOffset == 0 ? kNoMore : mOffset + info->NextEntryOffset;
        return {std::wstring(info->FileName, info->FileNameLength / sizeof(wchar_t)),
            (info->FileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0};
    }

private:
    static constexpr std::size_t kNoMore = ~std::size_t{0};
    struct alignas(FILE_ID_BOTH_DIR_INFO) Listing : std::array<std::byte, 16 * 1024> {};

    /// Reads the next piece of the listing. Returns false at its end and on an error.
    bool readMore(std::error_code &error)
    {
        if (!mListing) {
            mListing = std::make_unique<Listing>();
        }
        if (!::GetFileInformationByHandleEx(mFolder, FileIdBothDirectoryInfo, mListing->data(),
                static_cast<DWORD>(mListing->size()))) {
            const DWORD reason = ::GetLastError();
            error = errorWith(reason == ERROR_NO_MORE_FILES ? ERROR_SUCCESS : reason);
            return false;
        }
        mOffset = 0;
        return true;
    }

    Handle mOwned;  ///< null if the caller owns the handle
    HANDLE mFolder; ///< mOwned or the handle of the caller
    std::unique_ptr<Listing> mListing;
    std::size_t mOffset = kNoMore; ///< of the next entry in mListing
};

/// Removes the content of the folder \a top. Returns the first error.
std::error_code removeContent(HANDLE top)
{
    std::error_code first;
    const auto note = [&](std::error_code error) { first = first ? first : error; };
    std::vector<Level> levels;
    levels.emplace_back(top);
    for (;;) {
        std::error_code error;
        const auto [name, mayBeFolder] = levels.back().next(error);
        note(error);
        if (name.empty()) {
            if (levels.size() == 1) {
                return first;
            }
            note(removeOpened(levels.back().folder()));
            levels.pop_back();
        } else if (name != L"." && name != L"..") {
            Handle entry = openEntry(
                levels.back().folder(), name, mayBeFolder ? kRemoval | kListing : kRemoval);
            if (!entry) {
                const DWORD reason = ::GetLastError();
                note(errorWith(reason == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : reason));
            } else if (mayBeFolder && isFolder(entry.get())) {
                levels.emplace_back(std::move(entry));
            } else {
                note(removeOpened(entry.get()));
            }
        }
    }
}

} // namespace

std::error_code removeEntry(const QString &path)
{
    const Handle entry = openPath(path, kRemoval, FILE_FLAG_OPEN_REPARSE_POINT);
    return entry ? removeOpened(entry.get()) : errorWith(::GetLastError());
}

struct OpenFolder::Handles {
    Handle folder;
    bool isThroughLink = false; ///< the folder was opened through a link at the path
};

OpenFolder::OpenFolder(const QString &path, LinkAtPath link)
    : mHandles(std::make_unique<Handles>())
{
    mHandles->folder = openPath(path, kListing, FILE_FLAG_OPEN_REPARSE_POINT);
    if (mHandles->folder && !isFolder(mHandles->folder.get()) && link == LinkAtPath::Followed) {
        mHandles->folder = openPath(path, kListing, 0);
        mHandles->isThroughLink = true;
    }
    if (!mHandles->folder) {
        mError = errorWith(::GetLastError());
    } else if (!isFolder(mHandles->folder.get())) {
        mError = errorWith(ERROR_DIRECTORY);
    }
}

OpenFolder::~OpenFolder() = default;

std::error_code OpenFolder::removeFile(const QString &name)
{
    const Handle entry = openEntry(mHandles->folder.get(), name.toStdWString(), kRemoval);
    return entry ? removeOpened(entry.get()) : errorWith(::GetLastError());
}

std::error_code OpenFolder::remove()
{
    std::error_code error = removeContent(mHandles->folder.get());
    if (mHandles->isThroughLink) {
        return error;
    }
    // The right to delete the folder is asked for only now. While a handle with that right is open,
    // programs that do not allow FILE_SHARE_DELETE cannot open the folder.
    const HANDLE removable = ::ReOpenFile(mHandles->folder.get(), kRemoval, kShareAll,
        FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    mHandles->folder.reset(removable == INVALID_HANDLE_VALUE ? nullptr : removable);
    const std::error_code ofFolder =
        mHandles->folder ? removeOpened(mHandles->folder.get()) : errorWith(::GetLastError());
    mHandles->folder.reset();
    return error ? error : ofFolder;
}

} // namespace Vyn::OvraBase::os
