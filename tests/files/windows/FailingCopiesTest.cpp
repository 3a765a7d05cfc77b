// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <algorithm>
#include <fstream>

#include <qt_windows.h>

namespace Vyn::Test {
namespace {

using namespace testing;

int gCallsBeforeRefusal;
void *gReplaced; ///< the replaced function of the system

/// Returns true for the call that is to be refused. Sets the last error to \a reason.
bool isRefused(DWORD reason)
{
    ::SetLastError(reason);
    return --gCallsBeforeRefusal == -1;
}

/// Stands in for CopyFileW(). Refuses one of the calls for which no file \a to exists, as if the
/// disk were full, and then leaves a part of the copy.
BOOL WINAPI copyPart(const wchar_t *from, const wchar_t *to, BOOL failIfExists)
{
    if (::GetFileAttributesW(to) == INVALID_FILE_ATTRIBUTES && isRefused(ERROR_DISK_FULL)) {
        std::ofstream(std::filesystem::path(to)) << "par";
        ::SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }
    return ::CopyFileW(from, to, failIfExists);
}

template<DWORD Reason, class... Arguments>
BOOL WINAPI refuse(Arguments... arguments)
{
    const auto call = reinterpret_cast<BOOL(WINAPI *)(Arguments...)>(gReplaced);
    return isRefused(Reason) ? FALSE : call(arguments...);
}

/// Returns where the library keeps the address of the system's function \a name.
void **slotOf(const char *name)
{
    void *const address =
        reinterpret_cast<void *>(::GetProcAddress(::GetModuleHandleW(L"kernel32"), name));
    auto *const base = reinterpret_cast<char *>(::GetModuleHandleW(L"libovrabase.dll"));
    const auto *const dos = reinterpret_cast<IMAGE_DOS_HEADER *>(base);
    const auto *const headers = reinterpret_cast<IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
    const auto &table = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IAT];
    auto **const first = reinterpret_cast<void **>(base + table.VirtualAddress);
    auto **const end = first + table.Size / sizeof address;
    auto **const slot = std::find(first, end, address);
    return slot != end ? slot : throw std::invalid_argument(name);
}

/// Makes the library call \a function instead of the system's function \a name.
[[nodiscard]] Guard withReplaced(const char *name, void *function)
{
    void **const slot = slotOf(name);
    DWORD before = 0;
    ::VirtualProtect(slot, sizeof function, PAGE_READWRITE, &before);
    gReplaced = std::exchange(*slot, function);
    return Guard([slot] { *slot = gReplaced; });
}

using FailingCopies = FolderTest;

TEST_F(FailingCopies, LoseNoContentWhicheverCallIsRefused)
{
    const Rows<void *> rows{{"CopyFileW", reinterpret_cast<void *>(copyPart)},
        {"FlushFileBuffers", reinterpret_cast<void *>(refuse<ERROR_DISK_FULL, HANDLE>)},
        {"MoveFileExW",
            reinterpret_cast<void *>(
                refuse<ERROR_SHARING_VIOLATION, const wchar_t *, const wchar_t *, DWORD>)},
        {"CreateDirectoryW", reinterpret_cast<void *>(
                                 refuse<ERROR_DISK_FULL, const wchar_t *, SECURITY_ATTRIBUTES *>)}};
    for (const auto &[name, replacement] : rows) {
        SCOPED_TRACE(name);
        std::ptrdiff_t failures = 0;
        bool wasRefused = true;
        for (int call = 0; wasRefused; ++call) {
            SCOPED_TRACE("refused after " + std::to_string(call) + " calls");
            make("all/file=old, all/batch=old, all/file.bak=older, all/source/inner/new=new");
            ASSERT_TRUE(QFile::setPermissions(path("all/file.bak"), QFile::ReadOwner));
            const QString source = path("all/source/inner/new");

            std::vector<bool> answers;
            gCallsBeforeRefusal = call;
            {
                const auto replaced = withReplaced(name, replacement);
                answers = copyWithBackup({{source, path("all/batch")}, {source, path("all/new")}});
                answers.push_back(copyWithBackup(source, path("all/file")));
                answers.push_back(copyRecursively(path("all/source"), path("all/tree")));
            }
            wasRefused = gCallsBeforeRefusal < 0;
            // Each of the four new files is synced after it is copied, each of the two old ones
            // when it becomes the backup, and both files of the single copy once more in between.
            EXPECT_TRUE(wasRefused || call >= (QLatin1String(name) == "FlushFileBuffers" ? 8 : 1));
            failures += std::count(answers.begin(), answers.end(), false);
            mLog.take(); // a warning for each failure

            const auto contentOf = [&](const std::string &file) {
                const QString entry = path("all/" + file);
                return exists(entry) ? loadBinaryFile(entry).toStdString() : "";
            };
            EXPECT_EQ(contentOf("batch"), answers[0] ? "new" : "old");
            EXPECT_EQ(contentOf("new"), answers[1] ? "new" : "");
            EXPECT_EQ(contentOf("file"), answers[2] ? "new" : "old");
            const std::string backup = contentOf("file.bak");
            EXPECT_TRUE(answers[2] ? backup == "old" : backup == "older" || backup.empty());
            EXPECT_TRUE(backup != "older" || !QFileInfo(path("all/file.bak")).isWritable());
            EXPECT_EQ(contentOf("tree/inner/new"), answers[3] ? "new" : "");
            EXPECT_THAT(tree("all"), Not(AnyOf(HasSubstr(".tmp"), HasSubstr("=par"))));
            removeDirRecursiveIfItExists(path("all"));
        }
        EXPECT_GT(failures, 0);
    }
}

} // namespace
} // namespace Vyn::Test
