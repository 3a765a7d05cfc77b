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

/// Other programs may open an entry that is open here, but while it is open with DELETE, only with
/// FILE_SHARE_DELETE. The system decides whether an entry that they have open can be removed.
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr DWORD kRemoval = DELETE | SYNCHRONIZE | FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;
constexpr DWORD kListing = SYNCHRONIZE | FILE_READ_ATTRIBUTES | FILE_LIST_DIRECTORY;

struct CloseHandle {
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandle>;

/// Opens \a path. With FILE_FLAG_OPEN_REPARSE_POINT in \a flags, opens a link and not its target.
/// Returns null on failure.
Handle openPath(const QString &path, DWORD access, DWORD flags)
{
    const HANDLE handle = ::CreateFileW(nativePath(path).c_str(), access, kShareAll, nullptr,
        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

/// Opens the entry \a name in \a folder. Opens a link and not its target. Returns null on failure.
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
    return Handle(result == 0 ? handle : nullptr);
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

/// Removes the open entry \a entry. It may exist until all its handles are closed. Returns false on
/// failure.
bool removeOpened(HANDLE entry)
{
    // First with the POSIX semantics of Windows 10: the name disappears when this handle is closed,
    // even if other programs have the entry open, so that the folder that contains the entry can be
    // removed. Not every file system can do this. Headers may declare
    // FileDispositionInfoEx (21) and its flags for newer versions of Windows only.
    constexpr auto kDispositionInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(21);
    DWORD deletePosixIgnoreReadOnly = 0x01 | 0x02 | 0x10;
    if (::SetFileInformationByHandle(entry, kDispositionInfoEx, &deletePosixIgnoreReadOnly,
            sizeof(deletePosixIgnoreReadOnly))) {
        return true;
    }
    const bool wasReadOnly = setReadOnly(entry, false);
    FILE_DISPOSITION_INFO disposition{TRUE};
    if (::SetFileInformationByHandle(
            entry, FileDispositionInfo, &disposition, sizeof(disposition))) {
        return true;
    }
    if (wasReadOnly) {
        setReadOnly(entry, true);
    }
    return false;
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

    /// Returns the next entry. After the last one, or if the folder cannot be read further, returns
    /// an entry with an empty name.
    Entry next()
    {
        if (mOffset == kNoMore && !readMore()) {
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
    bool readMore()
    {
        if (!mListing) {
            mListing = std::make_unique<Listing>();
        }
        if (!::GetFileInformationByHandleEx(mFolder, FileIdBothDirectoryInfo, mListing->data(),
                static_cast<DWORD>(mListing->size()))) {
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

/// Removes all that can be removed of the content of the folder \a top.
void removeContent(HANDLE top)
{
    std::vector<Level> levels;
    levels.emplace_back(top);
    for (;;) {
        const auto [name, mayBeFolder] = levels.back().next();
        if (name.empty()) {
            if (levels.size() == 1) {
                return;
            }
            removeOpened(levels.back().folder());
            levels.pop_back();
        } else if (name != L"." && name != L"..") {
            Handle entry = openEntry(
                levels.back().folder(), name, mayBeFolder ? kRemoval | kListing : kRemoval);
            if (!entry && mayBeFolder) {
                // Another program has the folder open and does not allow to remove it. Its content
                // can be removed.
                entry = openEntry(levels.back().folder(), name, kListing);
            }
            if (entry && mayBeFolder && isFolder(entry.get())) {
                levels.emplace_back(std::move(entry));
            } else if (entry) {
                removeOpened(entry.get());
            }
        }
    }
}

} // namespace

bool removeEntry(const QString &path)
{
    const Handle entry = openPath(path, kRemoval, FILE_FLAG_OPEN_REPARSE_POINT);
    return entry && removeOpened(entry.get());
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
    if (mHandles->folder && !isFolder(mHandles->folder.get())) {
        mHandles->folder.reset();
    }
}

OpenFolder::~OpenFolder() = default;

bool OpenFolder::isOpen() const
{
    return mHandles->folder != nullptr;
}

void OpenFolder::removeFile(const QString &name)
{
    if (const Handle entry = openEntry(mHandles->folder.get(), name.toStdWString(), kRemoval)) {
        removeOpened(entry.get());
    }
}

bool OpenFolder::remove()
{
    if (!mHandles->folder) {
        return false;
    }
    removeContent(mHandles->folder.get());
    if (mHandles->isThroughLink) {
        return false;
    }
    // The right to delete the folder is asked for only now. While a handle with that right is open,
    // programs that do not allow FILE_SHARE_DELETE cannot open the folder.
    const HANDLE removable = ::ReOpenFile(mHandles->folder.get(), kRemoval, kShareAll,
        FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT);
    mHandles->folder.reset(removable == INVALID_HANDLE_VALUE ? nullptr : removable);
    const bool isRemoved = mHandles->folder && removeOpened(mHandles->folder.get());
    mHandles->folder.reset(); // the folder exists at least until this handle is closed
    return isRemoved;
}

} // namespace Vyn::OvraBase::os
