// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "support/Require.h"

#include <ovrabase/files/FileUtils.h>

#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <functional>
#include <optional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

/// \file
/// What the programs share that provoke one fault each. They exit with 0 if the library stands it,
/// and with the status of notTested() if this machine does not let them provoke it.
namespace Vyn::Test {

using OvraBase::FileUtils;

/// Tells why the fault cannot be provoked. ctest shows the test as skipped.
inline int notTested(const char *program, const char *why)
{
    std::printf("NOT TESTED: %s, because %s\n", program, why);
    return 77;
}

inline void write(const QString &path, const QByteArray &content)
{
    require(FileUtils::makeFolder(FileUtils::extractFolderPath(path)), "makes a folder");
    QFile file(path);
    require(file.open(QFile::WriteOnly) && file.write(content) == content.size(), "writes a file");
}

/// Returns a null array for a missing file.
inline QByteArray read(const QString &path)
{
    return QFile::exists(path) ? QByteArray("") + FileUtils::loadBinaryFile(path) : QByteArray();
}

/// Runs \a call in a process of its own, which is stopped before and after each system call, and
/// kills it as soon as \a endsHere, which is given its id, returns true for a stop. Returns whether
/// it was killed; nothing if this system does not let us trace.
inline std::optional<bool> runInStops(
    const std::function<void()> &call, const std::function<bool(pid_t)> &endsHere)
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
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFSTOPPED(status)) {
        return std::nullopt;
    }
    do {
        if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0 ||
            waitpid(child, &status, 0) != child) {
            return std::nullopt;
        }
        if (!WIFSTOPPED(status)) {
            require(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS, "the call returns");
            return false;
        }
    } while (!endsHere(child));
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}

/// Runs \a call again and again, each time one stop further, until nothing is left to cut off.
/// \a prepare comes before each run, \a cut at the stop, \a check, which is told whether the call
/// returned, after it. Returns the number of stops, 0 if this system does not let us trace.
inline int cutAtEachStop(const std::function<void()> &prepare, const std::function<void()> &call,
    const std::function<void()> &cut, const std::function<void(bool)> &check)
{
    for (int stop = 1;; ++stop) {
        prepare();
        int left = stop;
        const std::optional<bool> isKilled = runInStops(call, [&](pid_t) {
            if (--left > 0) {
                return false;
            }
            cut();
            return true;
        });
        if (!isKilled) {
            return 0;
        }
        check(!*isKilled);
        if (!*isKilled) {
            return stop;
        }
    }
}

} // namespace Vyn::Test
