// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// The disk is full or the system refuses a call in the middle of a copy. This program has
/// functions of its own in the place of the system's, which the library finds first.

#include "faults/Faults.h"

#include <QDir>

#include <cerrno>
#include <fcntl.h>
#include <set>
#include <string>
#include <sys/resource.h>
#include <sys/syscall.h>

namespace {

std::set<std::string> refused; // names of calls

long refuse(const char *name, int error, const std::function<long()> &call)
{
    if (!refused.contains(name)) {
        return call();
    }
    errno = error;
    return -1;
}

} // namespace

extern "C" {

ssize_t copy_file_range(int from, off64_t *, int to, off64_t *, size_t size, unsigned flags)
{
    return refuse("copy_file_range", EINVAL,
        [=] { return syscall(SYS_copy_file_range, from, nullptr, to, nullptr, size, flags); });
}

ssize_t sendfile(int to, int from, off_t *offset, size_t size) noexcept
{
    return refuse(
        "sendfile", EINVAL, [=] { return syscall(SYS_sendfile, to, from, offset, size); });
}

int fchmod(int file, mode_t mode) noexcept
{
    return int(refuse("fchmod", EPERM, [=] { return syscall(SYS_fchmod, file, mode); }));
}

int link(const char *from, const char *to) noexcept
{
    return int(refuse("link", EPERM, [=] { return syscall(SYS_link, from, to); }));
}

int renameat2(
    int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) noexcept
{
    return int(refuse("renameat2", EINVAL,
        [=] { return syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags); }));
}

int fsync(int file)
{
    return int(refuse("fsync", EIO, [=] { return syscall(SYS_fsync, file); }));
}

int syncfs(int file) noexcept
{
    return int(refuse("syncfs", EIO, [=] { return syscall(SYS_syncfs, file); }));
}

/// Closes all the same, as the system does. Only files that are written are refused.
int close(int file)
{
    const bool isWritten = (fcntl(file, F_GETFL) & O_ACCMODE) == O_WRONLY;
    const int result = int(syscall(SYS_close, file));
    return isWritten ? int(refuse("close", EDQUOT, [=] { return result; })) : result;
}
}

namespace {

using namespace Vyn::Test;

constexpr qsizetype kNoLimit = qsizetype{1} << 40;

/// A full disk: files cannot grow beyond this size. Nobody is root enough to exceed it.
void limitFiles(qsizetype size)
{
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = rlim_t(size);
    require(setrlimit(RLIMIT_FSIZE, &limit) == 0, "limits the size of files");
}

/// Returns how many bytes this process has written.
qint64 writtenBytes()
{
    const QByteArray io = FileUtils::loadBinaryFile(QStringLiteral("/proc/self/io"));
    const qsizetype begin = io.indexOf("wchar:") + 6;
    return io.mid(begin, io.indexOf('\n', begin) - begin).trimmed().toLongLong();
}

class Folder {
public:
    Folder()
    {
        for (const char *name : {"file", "batch"}) {
            write(path(name), "old");
        }
        write(path("file.bak"), "older");
        write(path("small"), "small");
        FileUtils::makeFolder(path("source"));
    }

    QString path(const char *name) const { return mFolder.filePath(QString::fromUtf8(name)); }

    /// Copies a file of \a size bytes in each way, where files can be as large as \a limit.
    /// Requires that the answers are \a expected and true.
    void copy(qsizetype size, qsizetype limit, bool expected, bool expectedOfSmall) const
    {
        const QByteArray content(size, 'n');
        write(path("source/big"), content);
        const QByteArray now = expected ? content : QByteArray("old");
        const qint64 before = writtenBytes();
        limitFiles(limit);
        require(FileUtils::copyWithBackup(path("source/big"), path("file")) == expected, "answers");
        require(writtenBytes() - before < limit + limit / 2, "does not try again in full");
        require(read(path("file")) == now, "keeps or replaces a file as it answered");
        require(read(path("file.bak")) == (expected ? "old" : "older"), "keeps the backup");

        const std::vector<bool> answers = FileUtils::copyWithBackup({{path("small"), path("1")},
            {path("source/big"), path("batch")}, {path("small"), path("2")}});
        require(
            answers == std::vector{expectedOfSmall, expected, expectedOfSmall}, "answers for each");
        require(read(path("batch")) == now, "keeps or replaces one of many");
        for (const char *name : {"1", "2"}) {
            require(
                read(path(name)) == (expectedOfSmall ? "small" : QByteArray()), "copies others");
        }

        require(FileUtils::copyRecursively(path("source"), path("new")) == expected, "answers");
        require(!expected || read(path("new/big")) == content, "copies with its folder");
        require(expected || !expectedOfSmall || !QFile::exists(path("new/big")), "leaves no part");
        require(
            QDir(mFolder.path()).entryList({QStringLiteral("*.tmp")}).isEmpty(), "leaves no part");
        limitFiles(kNoLimit);
    }

private:
    QTemporaryDir mFolder;
};

} // namespace

int main()
{
    constexpr qsizetype kDisk = qsizetype{128} << 10;
    const struct {
        std::set<std::string> calls;
        qsizetype limit;
        bool survives;
    } rows[] = {{{}, kDisk, true}, {{"sendfile", "copy_file_range"}, kDisk, true},
        {{"fchmod"}, kNoLimit, true}, {{"link"}, kNoLimit, true}, {{"renameat2"}, kNoLimit, true},
        {{"renameat2", "link"}, kNoLimit, true}, {{"close"}, kNoLimit, false},
        {{"fsync", "syncfs"}, kNoLimit, false}};
    for (const auto &[calls, limit, survives] : rows) {
        for (const qsizetype size : {qsizetype{0}, kDisk, kDisk + 1, kDisk + 10'000, 7 * kDisk}) {
            const Folder folder;
            refused = calls;
            folder.copy(size, limit, survives && size <= limit, survives);
            refused.clear();
        }
    }
    return 0;
}
