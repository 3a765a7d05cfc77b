// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/Require.h"

#include <ovrabase/files/FileUtils.h>

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

/// \file
/// Shared by the programs of this folder. A program exits with 0 if the library passes, and ends in
/// notTested() if this machine does not let it provoke the fault.
namespace Vyn::Test {

using namespace Qt::StringLiterals;
using OvraBase::FileUtils;

/// Prints why the fault cannot be provoked and ends the program. ctest shows the test as skipped.
[[noreturn]] inline void notTested(const char *why)
{
    std::printf("NOT TESTED: %s, because %s\n", program_invocation_short_name, why);
    std::exit(77);
}

inline void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    require(FileUtils::makeFolder(FileUtils::extractFolderPath(path)) &&
                file.open(QFile::WriteOnly) && file.write(content) == content.size(),
        "writes a file");
}

/// Returns an empty array for a missing file.
inline QByteArray read(const QString &path)
{
    return QFile::exists(path) ? FileUtils::loadBinaryFile(path) : QByteArray();
}

/// Returns what follows \a key on its line of the file \a path.
inline QByteArray valueIn(const QString &path, const char *key)
{
    const QByteArray text = read(path);
    const qsizetype begin = text.indexOf(key) + qsizetype(qstrlen(key));
    return text.mid(begin, text.indexOf('\n', begin) - begin).trimmed();
}

/// Runs \a call in a process of its own, which is stopped before and after each system call.
/// At each stop, calls \a ends with the id of the process, and kills the process if the answer
/// is true. Returns true if the process was killed.
inline bool runInStops(const std::function<void()> &call, const std::function<bool(pid_t)> &ends)
{
    const pid_t child = fork();
    if (child == 0) {
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
            _exit(EXIT_FAILURE);
        }
        raise(SIGSTOP);
        call();
        _exit(EXIT_SUCCESS);
    }
    int status = 0;
    waitpid(child, &status, 0);
    do {
        if (!WIFSTOPPED(status) || ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0) {
            notTested("this system refuses ptrace()");
        }
        waitpid(child, &status, 0);
        if (WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) {
            return false;
        }
        require(WIFSTOPPED(status), "the call returns");
    } while (!ends(child));
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}

/// Copies the file "source" in \a folder to "copies/1" and "copies/2" with backup, in many runs.
/// Kills the process of run n at its stop n, until a run ends before that stop. In each run, both
/// backups exist before, and both destinations if \a isThere. \a prepared is called before the
/// copies and \a ended after the end of the process. Then each destination must have its whole new
/// content or, if the process was killed, its whole old content (none, if it did not exist). Only
/// the old content may replace a backup. Returns the number of runs.
inline int killCopiesAtEachStop(const QString &folder, bool isThere,
    const std::function<void()> &prepared, const std::function<void()> &ended)
{
    const QByteArray old(9'000, 'o');
    const QByteArray fresh(20'000, 'n');
    const QString source = folder + u"/source"_s;
    const QString copies[] = {folder + u"/copies/1"_s, folder + u"/copies/2"_s};
    for (int stop = 1;; ++stop) {
        FileUtils::removeDirRecursiveIfItExists(folder + u"/copies"_s);
        write(source, fresh);
        for (const QString &copy : copies) {
            write(copy + u".bak"_s, "older");
            if (isThere) {
                write(copy, old);
            }
        }
        prepared();
        const auto call = [&] {
            FileUtils::copyWithBackup({{source, copies[0]}, {source, copies[1]}});
        };
        int left = stop;
        const bool isKilled = runInStops(call, [&](pid_t) { return --left == 0; });
        ended();
        require(read(source) == fresh, "the source is as it was");
        for (const QString &copy : copies) {
            const QByteArray now = read(copy);
            const QByteArray backup = read(copy + u".bak"_s);
            require(now == fresh || (isKilled && (isThere ? now == old : !QFile::exists(copy))),
                "each destination is whole, old or new");
            require(backup == "older" || (isThere && backup == old), "each backup is whole");
            require(!isThere || now == old || backup == old, "the old content is there");
        }
        if (!isKilled) {
            return stop;
        }
    }
}

} // namespace Vyn::Test
