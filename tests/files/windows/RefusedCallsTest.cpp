// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <cstring>
#include <fstream>

#include <qt_windows.h>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

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

BOOL WINAPI makeFolder(const wchar_t *path, SECURITY_ATTRIBUTES *attributes)
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
    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

private:
    /// Returns where the library keeps the address of the function.
    static void **slotOf(const char *name)
    {
        auto *const base = reinterpret_cast<char *>(::GetModuleHandleW(L"libovrabase.dll"));
        const auto *const dos = reinterpret_cast<IMAGE_DOS_HEADER *>(base);
        const auto *const headers = reinterpret_cast<IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
        const auto &directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        const auto *module =
            reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR *>(base + directory.VirtualAddress);
        for (; module->Name != 0; ++module) {
            const auto *import =
                reinterpret_cast<IMAGE_THUNK_DATA *>(base + module->OriginalFirstThunk);
            auto *address = reinterpret_cast<IMAGE_THUNK_DATA *>(base + module->FirstThunk);
            for (; import->u1.AddressOfData != 0; ++import, ++address) {
                const auto *const byName =
                    reinterpret_cast<IMAGE_IMPORT_BY_NAME *>(base + import->u1.AddressOfData);
                if (!IMAGE_SNAP_BY_ORDINAL(import->u1.Ordinal) &&
                    std::strcmp(byName->Name, name) == 0) {
                    return reinterpret_cast<void **>(&address->u1.Function);
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

struct Call {
    const char *name;
    void *replacement;
    friend void PrintTo(const Call &call, std::ostream *out) { *out << call.name; }
};

class RefusedCalls : public Test::FolderTest, public testing::WithParamInterface<Call> {};

TEST_P(RefusedCalls, LoseNoContentWhicheverOneIsRefused)
{
    int refusals = 0;
    bool wasRefused = true;
    for (int call = 0; wasRefused; ++call) {
        SCOPED_TRACE("refused after " + std::to_string(call) + " calls");
        for (const char *name : {"all/file", "all/batch"}) {
            write(name, "old");
        }
        write("all/file.bak", "older");
        ASSERT_TRUE(QFile::setPermissions(path("all/file.bak"), QFile::ReadOwner));
        write("all/source/inner/new", "new");
        const QString source = path("all/source/inner/new");

        std::vector<bool> answers;
        gCallsBeforeRefusal = call;
        {
            const Replacement replacement(GetParam().name, GetParam().replacement);
            answers = FileUtils::copyWithBackup(
                {{source, path("all/batch")}, {source, path("all/fresh")}});
            answers.push_back(FileUtils::copyWithBackup(source, path("all/file")));
            answers.push_back(FileUtils::copyRecursively(path("all/source"), path("all/tree")));
        }
        wasRefused = gCallsBeforeRefusal < 0;
        refusals += int(std::count(answers.begin(), answers.end(), false));

        auto left = tree("all");
        const auto contentOf = [&](const char *name) { return left[name]; };
        EXPECT_EQ(contentOf("batch"), answers[0] ? "new" : "old");
        EXPECT_EQ(contentOf("fresh"), answers[1] ? "new" : "");
        EXPECT_EQ(contentOf("file"), answers[2] ? "new" : "old");
        EXPECT_THAT(contentOf("file.bak"), testing::AnyOf(answers[2] ? "old" : "older", ""));
        EXPECT_EQ(contentOf("tree/inner/new"), answers[3] ? "new" : "");
        for (const auto &[name, content] : left) {
            EXPECT_FALSE(name.ends_with(".tmp")) << name;
            EXPECT_NE(content, "par") << name;
        }
        EXPECT_TRUE(left["file.bak"] != "older" || !QFileInfo(path("all/file.bak")).isWritable());
        FileUtils::removeDirRecursiveIfItExists(path("all"));
    }
    EXPECT_GT(refusals, 0);
}
INSTANTIATE_TEST_SUITE_P(OfTheSystem, RefusedCalls,
    testing::Values(Call{"CopyFileW", reinterpret_cast<void *>(copyPart)},
        Call{"FlushFileBuffers", reinterpret_cast<void *>(flush)},
        Call{"MoveFileExW", reinterpret_cast<void *>(move)},
        Call{"CreateDirectoryW", reinterpret_cast<void *>(makeFolder)}),
    [](const auto &call) { return std::string(call.param.name); });

} // namespace
} // namespace Vyn::OvraBase
