// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <csignal>
#include <optional>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

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

std::optional<QByteArray> contentOf(const QString &path)
{
    return FileUtils::isFile(path) ? std::optional(FileUtils::loadBinaryFile(path)) : std::nullopt;
}

/// Kills the copy at every system call, for a new destination and for one with an old backup.
TEST(KilledCopy, LeavesWholeContentUnderAKnownName)
{
    const QByteArray oldContent(9'000, 'o');
    const QByteArray newContent(20'000, 'n');
    for (const bool isThere : {false, true}) {
        int stop = 1;
        for (;; ++stop) {
            const QTemporaryDir folder;
            const QString source = folder.filePath(u"source"_s);
            const QString destination = folder.filePath(u"file"_s);
            const QString backup = folder.filePath(u"file.bak"_s);
            const auto write = [](const QString &path, const QByteArray &content) {
                QFile file(path);
                ASSERT_TRUE(
                    file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
            };
            write(source, newContent);
            if (isThere) {
                write(destination, oldContent);
                write(backup, "older");
            }

            const std::optional<bool> killed =
                killAtStop(stop, [&] { FileUtils::copyWithBackup(source, destination); });

            ASSERT_TRUE(killed.has_value())
                << "This system refuses ptrace(): that a killed copy loses nothing is NOT tested.";
            const auto now = contentOf(destination);
            ASSERT_EQ(contentOf(source), newContent);
            if (isThere) {
                ASSERT_TRUE(
                    now == newContent || now == oldContent || contentOf(backup) == oldContent)
                    << "killed at stop " << stop;
            }
            ASSERT_TRUE(!now || now == newContent || now == oldContent)
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
