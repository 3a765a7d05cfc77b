// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// The disk is full or the system refuses a call in the middle of a copy. The functions of this
/// program replace those of the system, because the loader finds them first.

#include "faults/Faults.h"

#include <QDir>

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <sys/resource.h>
#include <sys/syscall.h>

namespace {

std::map<long, int> refused; // numbers of system calls with their errors, or 0 to do nothing
constexpr long kFolderSync = -SYS_fsync;
int syncs = 0; // of file systems

bool isRefused(long number)
{
    const auto refusal = refused.find(number);
    errno = refusal == refused.end() ? errno : refusal->second;
    return refusal != refused.end();
}

template<class... Arguments>
long call(long number, Arguments... arguments)
{
    return isRefused(number) ? (errno == 0 ? 0 : -1) : syscall(number, arguments...);
}

} // namespace

extern "C" {

ssize_t copy_file_range(int from, off64_t *, int to, off64_t *, size_t size, unsigned flags)
{
    return call(SYS_copy_file_range, from, nullptr, to, nullptr, size, flags);
}

int fchmod(int file, mode_t mode) noexcept
{
    return int(call(SYS_fchmod, file, mode));
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    return int(call(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int renameat2(
    int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) noexcept
{
    return int(call(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int fsync(int file)
{
    const bool isFolder = (fcntl(file, F_GETFL) & O_DIRECTORY) != 0;
    return isFolder && isRefused(kFolderSync) ? -1 : int(call(SYS_fsync, file));
}

int syncfs(int file) noexcept
{
    ++syncs;
    return int(call(SYS_syncfs, file));
}

/// Closes the file even if the call is refused, as the system does. Calls for files that are only
/// read succeed.
int close(int file)
{
    const bool isWritten = (fcntl(file, F_GETFL) & O_ACCMODE) == O_WRONLY;
    const int result = int(syscall(SYS_close, file));
    return isWritten && isRefused(SYS_close) ? -1 : result;
}

/// Hides the types of entries, as some file systems do.
dirent *readdir(DIR *folder)
{
    static const auto next = reinterpret_cast<dirent *(*)(DIR *)>(dlsym(RTLD_NEXT, "readdir"));
    dirent *const entry = next(folder);
    if (entry != nullptr) {
        entry->d_type = DT_UNKNOWN;
    }
    return entry;
}
}

namespace {

using namespace Vyn::Test;

constexpr qsizetype kNoLimit = qsizetype{1} << 40;

/// Lets files grow up to \a size, like a full disk. The limit holds for root too.
void limitFiles(qsizetype size)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = rlim_t(size);
    require(setrlimit(RLIMIT_FSIZE, &limit) == 0, "limits the size of files");
}

/// Copies a file of \a size bytes in each way, where files can be as large as \a limit. Requires
/// that the answers are \a expected, and \a expectedOfSmall for small files.
void copyInEachWay(qsizetype size, qsizetype limit, bool expected, bool expectedOfSmall)
{
    const QTemporaryDir folder;
    const auto path = [&](const char *name) { return folder.filePath(QString::fromUtf8(name)); };
    const QByteArray content(size, 'n');
    const QByteArray small = expectedOfSmall ? "small" : QByteArray();
    for (const char *name : {"file", "file.bak", "batch", "small", "other/2"}) {
        write(path(name), name);
    }
    write(path("source/big"), content);
    const auto writtenBytes = [] { return valueIn(u"/proc/self/io"_s, "wchar:").toLongLong(); };
    const qint64 before = writtenBytes();

    limitFiles(limit);
    require(FileUtils::copyWithBackup(path("source/big"), path("file")) == expected, "one answer");
    require(writtenBytes() - before < std::min(limit, size) * 3 / 2 + 4096, "writes only once");
    require(read(path("file")) == (expected ? content : "file"), "the content fits the answer");
    require(read(path("file.bak")) == (expected ? "file" : "file.bak"), "so does the backup");

    syncs = 0;
    const std::vector<bool> answers = FileUtils::copyWithBackup({{path("small"), path("1")},
        {path("source/big"), path("batch")}, {path("small"), path("other/2")}});
    require(answers == std::vector{expectedOfSmall, expected, expectedOfSmall}, "three answers");
    require(syncs <= 2, "syncs the file system at most twice");
    require(read(path("batch")) == (expected ? content : "batch"), "the second fits its answer");
    require(read(path("1")) == small, "the first fits its answer");
    require(read(path("other/2")) == (expectedOfSmall ? "small" : "other/2"), "so does the third");

    require(FileUtils::copyRecursively(path("source"), path("new")) == expected, "folder's answer");
    require(!expected || read(path("new/big")) == content, "the file in the folder is copied");
    require(expected || !expectedOfSmall || !QFile::exists(path("new/big")), "no partial copy");
    require(QDir(folder.path()).entryList({u"*.tmp"_s}).isEmpty(), "leaves no temporary file");
    FileUtils::removeDirRecursiveIfItExists(folder.path()); // throws if a sub-folder stays
    limitFiles(kNoLimit);
}

} // namespace

int main()
{
    constexpr qsizetype kDisk = qsizetype{128} << 10;
    const struct {
        const char *name;
        std::map<long, int> calls;
        qsizetype limit;
        bool survives;
    } rows[] = {
        {"a full disk", {}, kDisk, true},
        {"no copy_file_range", {{SYS_copy_file_range, EINVAL}}, kDisk, true},
        {"an empty copy_file_range", {{SYS_copy_file_range, 0}}, kDisk, true},
        {"no sync of folders", {{kFolderSync, EINVAL}}, kNoLimit, true},
        {"no fchmod", {{SYS_fchmod, EPERM}}, kNoLimit, true},
        {"no link", {{SYS_linkat, EPERM}}, kNoLimit, true},
        {"no renameat2", {{SYS_renameat2, EINVAL}}, kNoLimit, true},
        {"no renameat2, no link", {{SYS_renameat2, EINVAL}, {SYS_linkat, EPERM}}, kNoLimit, true},
        {"an exceeded quota", {{SYS_close, EDQUOT}}, kNoLimit, false},
        {"a broken disk", {{SYS_fsync, EIO}, {SYS_syncfs, EIO}}, kNoLimit, false},
    };
    std::signal(SIGXFSZ, SIG_IGN);
    for (const auto &[name, calls, limit, survives] : rows) {
        std::printf("%s\n", name);
        for (const qsizetype size : {qsizetype{0}, kDisk, kDisk + 1, kDisk + 10'000, 7 * kDisk}) {
            refused = calls;
            copyInEachWay(size, limit, survives && size <= limit, survives);
            refused.clear();
        }
    }
    return 0;
}
