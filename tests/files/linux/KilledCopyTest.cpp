// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <csignal>
#include <optional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Vyn::OvraBase {
namespace {

using KilledCopy = Test::FolderTest;

/// Runs \a call in a process of its own and kills that at the stop number \a stop, each system call
/// having one before and one behind it. Returns whether it was killed; nothing when the system does
/// not let us trace.
template<class Call>
std::optional<bool> killAtStop(int stop, Call call)
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
    for (int i = 0; i < stop; ++i) {
        if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0 ||
            waitpid(child, &status, 0) != child) {
            return std::nullopt;
        }
        if (WIFEXITED(status)) {
            return false;
        }
    }
    kill(child, SIGKILL);
    waitpid(child, &status, 0);
    return true;
}

/// Kills the copy at every system call, for a new destination and for one with an old backup.
TEST_F(KilledCopy, LeavesWholeContentUnderAKnownName)
{
    const std::string oldContent(9'000, 'o');
    const std::string newContent(20'000, 'n');
    for (const bool isThere : {false, true}) {
        int stop = 1;
        for (;; ++stop) {
            FileUtils::removeDirRecursiveIfItExists(path("work"));
            write("work/source", QByteArray::fromStdString(newContent));
            if (isThere) {
                write("work/file", QByteArray::fromStdString(oldContent));
                write("work/file.bak", "older");
            }

            const std::optional<bool> killed = killAtStop(
                stop, [&] { FileUtils::copyWithBackup(path("work/source"), path("work/file")); });

            ASSERT_TRUE(killed.has_value())
                << "This system refuses ptrace(): that a killed copy loses nothing is NOT tested.";
            auto left = tree("work");
            ASSERT_EQ(left["source"], newContent);
            const bool isThereNow = left.contains("file");
            const std::string now = left["file"];
            const bool isWhole = now == newContent || now == oldContent;
            ASSERT_TRUE(isWhole || !isThereNow) << "killed at stop " << stop;
            ASSERT_TRUE(isWhole || !isThere || left["file.bak"] == oldContent)
                << "killed at stop " << stop;
            if (!*killed) {
                ASSERT_EQ(now, newContent);
                break;
            }
        }
        RecordProperty(isThere ? "stopsWithBackup" : "stopsWithoutBackup", stop);
        EXPECT_GT(stop, 20) << "too few to have met the copy";
    }
}

} // namespace
} // namespace Vyn::OvraBase
