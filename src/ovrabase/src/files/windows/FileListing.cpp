// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileListing_p.h"
#include "files/FileSystem_p.h"

#include <QString>

#include <qt_windows.h>

namespace Vyn::OvraBase::os {

struct FileListing::Handle {
    WIN32_FIND_DATAW entry{};
    HANDLE search = INVALID_HANDLE_VALUE;
    bool isRead = false; ///< next() has returned `entry`
};

FileListing::FileListing(const QString &folder)
    : mHandle(new Handle)
{
    mHandle->search =
        ::FindFirstFileExW(nativePath(folder + QLatin1String("/*")).c_str(), FindExInfoBasic,
            &mHandle->entry, FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH);
}

FileListing::~FileListing()
{
    if (mHandle->search != INVALID_HANDLE_VALUE) {
        ::FindClose(mHandle->search);
    }
}

bool FileListing::next(Name &name)
{
    if (mHandle->search == INVALID_HANDLE_VALUE ||
        (mHandle->isRead && !::FindNextFileW(mHandle->search, &mHandle->entry))) {
        return false;
    }
    mHandle->isRead = true;
    constexpr DWORD kFolderOrLink = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;
    name = (mHandle->entry.dwFileAttributes & kFolderOrLink) == 0 ? mHandle->entry.cFileName : L"";
    return true;
}

} // namespace Vyn::OvraBase::os
