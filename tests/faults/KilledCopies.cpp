// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// A process that copies with backup is killed before and after each of its system calls.

#include "faults/Faults.h"

namespace {

using namespace Vyn::Test;

const QByteArray kOld(9'000, 'o');
const QByteArray kNew(20'000, 'n');

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString source = folder.filePath(QStringLiteral("source"));
    const QString copies[] = {
        folder.filePath(QStringLiteral("work/1")), folder.filePath(QStringLiteral("work/2"))};
    for (const bool isThere : {false, true}) {
        const auto prepare = [&] {
            FileUtils::removeDirRecursiveIfItExists(folder.filePath(QStringLiteral("work")));
            write(source, kNew);
            for (const QString &copy : copies) {
                write(copy + QStringLiteral(".bak"), "older");
                if (isThere) {
                    write(copy, kOld);
                }
            }
        };
        const auto call = [&] {
            FileUtils::copyWithBackup({{source, copies[0]}, {source, copies[1]}});
        };
        const auto check = [&](bool isDone) {
            require(read(source) == kNew, "the source is as it was");
            for (const QString &copy : copies) {
                const QByteArray now = read(copy);
                const QByteArray backup = read(copy + QStringLiteral(".bak"));
                require(now == kNew || (!isDone && now == (isThere ? kOld : QByteArray())),
                    "each destination is whole, old or new");
                require(backup == "older" || (isThere && backup == kOld), "each backup is whole");
                require(!isThere || now == kOld || backup == kOld, "the old content is there");
            }
        };
        const int stops = cutAtEachStop(
            prepare, call, [] {}, check);
        if (stops == 0) {
            return notTested("killed copies", "this system refuses ptrace()");
        }
        require(stops > 20, "the copies are killed too");
        std::printf("killed at %d stops\n", stops);
    }
    return 0;
}
