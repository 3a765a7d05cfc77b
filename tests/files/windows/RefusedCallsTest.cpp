// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <algorithm>
#include <fstream>

#include <qt_windows.h>

namespace Vyn::Test {
namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

int gCallsBeforeRefusal;

bool isRefused(DWORD reason)
{
    const bool isRefused = --gCallsBeforeRefusal == -1;
    if (isRefused) {
        ::SetLastError(reason);
    }
    return isRefused;
}

/// The disk is full when a part is copied, which stays there.
BOOL WINAPI copyPart(const wchar_t *from, const wchar_t *to, BOOL failIfExists)
{
    if (::GetFileAttributesW(to) == INVALID_FILE_ATTRIBUTES && isRefused(ERROR_DISK_FULL)) {
        std::ofstream(std::filesystem::path(to)) << "par";
        ::SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }
    return ::CopyFileW(from, to, failIfExists);
}

BOOL WINAPI flush(HANDLE file)
{
    return isRefused(ERROR_DISK_FULL) ? FALSE : ::FlushFileBuffers(file);
}

BOOL WINAPI move(const wchar_t *from, const wchar_t *to, DWORD flags)
{
    return isRefused(ERROR_SHARING_VIOLATION) ? FALSE : ::MoveFileExW(from, to, flags);
}

BOOL WINAPI createFolder(const wchar_t *path, SECURITY_ATTRIBUTES *attributes)
{
    return isRefused(ERROR_DISK_FULL) ? FALSE : ::CreateDirectoryW(path, attributes);
}

/// While it exists, the library calls another function in the place of one of the system.
class Replacement {
public:
    Replacement(const char *name, void *function)
        : mSlot(slotOf(name))
        , mOriginal(exchange(function))
    {
    }
    ~Replacement() { exchange(mOriginal); }
    Q_DISABLE_COPY_MOVE(Replacement)

private:
    /// Returns where the library keeps the address of the function.
    static void **slotOf(const char *name)
    {
        const FARPROC address = ::GetProcAddress(::GetModuleHandleW(L"kernel32"), name);
        auto *const base = reinterpret_cast<char *>(::GetModuleHandleW(L"libovrabase.dll"));
        const auto *const dos = reinterpret_cast<IMAGE_DOS_HEADER *>(base);
        const auto *const headers = reinterpret_cast<IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
        const auto &directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        const auto *module =
            reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR *>(base + directory.VirtualAddress);
        for (; module->Name != 0; ++module) {
            auto **slot = reinterpret_cast<void **>(base + module->FirstThunk);
            for (; *slot; ++slot) {
                if (*slot == reinterpret_cast<void *>(address)) {
                    return slot;
                }
            }
        }
        throw std::invalid_argument(name);
    }

    void *exchange(void *function)
    {
        DWORD before = 0;
        ::VirtualProtect(mSlot, sizeof function, PAGE_READWRITE, &before);
        void *const old = std::exchange(*mSlot, function);
        ::VirtualProtect(mSlot, sizeof function, before, &before);
        return old;
    }

    void **mSlot;
    void *mOriginal;
};

using RefusedCalls = FolderTest;

TEST_F(RefusedCalls, LoseNoContentWhicheverOneIsRefused)
{
    const struct {
        const char *name;
        void *replacement;
    } rows[] = {{"CopyFileW", reinterpret_cast<void *>(copyPart)},
        {"FlushFileBuffers", reinterpret_cast<void *>(flush)},
        {"MoveFileExW", reinterpret_cast<void *>(move)},
        {"CreateDirectoryW", reinterpret_cast<void *>(createFolder)}};
    forEach(rows, [&](const auto &row) {
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
                const Replacement replacement(row.name, row.replacement);
                answers =
                    copyWithBackup({{source, path("all/batch")}, {source, path("all/fresh")}});
                answers.push_back(copyWithBackup(source, path("all/file")));
                answers.push_back(copyRecursively(path("all/source"), path("all/tree")));
            }
            wasRefused = gCallsBeforeRefusal < 0;
            failures += std::count(answers.begin(), answers.end(), false);

            const auto contentOf = [&](const std::string &name) {
                const QString file = path("all/" + name);
                return exists(file) ? loadBinaryFile(file).toStdString() : "";
            };
            EXPECT_EQ(contentOf("batch"), answers[0] ? "new" : "old");
            EXPECT_EQ(contentOf("fresh"), answers[1] ? "new" : "");
            EXPECT_EQ(contentOf("file"), answers[2] ? "new" : "old");
            const std::string backup = contentOf("file.bak");
            EXPECT_THAT(backup, AnyOf(answers[2] ? "old" : "older", ""));
            EXPECT_TRUE(backup != "older" || !QFileInfo(path("all/file.bak")).isWritable());
            EXPECT_EQ(contentOf("tree/inner/new"), answers[3] ? "new" : "");
            EXPECT_THAT(tree("all"), Not(AnyOf(HasSubstr(".tmp"), HasSubstr("=par"))));
            removeDirRecursiveIfItExists(path("all"));
        }
        EXPECT_GT(failures, 0);
    });
}

} // namespace
} // namespace Vyn::Test
