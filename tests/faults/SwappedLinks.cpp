// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// While a folder is being removed or emptied, the folder or its sub-folder is replaced by a link
/// to another folder, the victim: in each run at another system call, as long as the folder has
/// entries. In a second test, a sub-folder is moved into the victim. The victim must lose none of
/// its files.

#include "faults/Faults.h"
#include "support/Cache.h"

#include <ovrabase/errors/Exception.h>

#include <QDir>

namespace {

using namespace Vyn::Test;

constexpr int kFiles = 5;

void fill(const QString &folder)
{
    for (int i = 0; i < kFiles; ++i) {
        write(folder + u'/' + QString::number(i), {});
    }
}

qsizetype entriesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
}

void tryToRemove(void (*remove)(const QString &folder), const QString &folder)
{
    try {
        remove(folder);
    } catch (const Vyn::Exception::FolderDeletionException &) {
        // another entry is in the way
    }
}

/// Moves a folder into the victim while the removal works far below it, so far that the removal has
/// closed the folder's parent. The removal must not go on in the new parent, the victim.
void moveAwayFromAClosedFolder()
{
    const QTemporaryDir base;
    const QString top = base.filePath(u"top"_s);
    const QString victim = base.filePath(u"victim"_s);
    const QString deepest = top + u"/x"_s.repeated(70);
    require(QDir().mkpath(deepest), "makes the folders");
    fill(victim);
    bool isMoved = false;
    runInStops([&] { tryToRemove(FileUtils::removeDirRecursiveIfItExists, top); },
        [&](pid_t) {
            if (!isMoved && !QFile::exists(deepest)) {
                isMoved = QDir().rename(top + u"/x/x/x"_s, victim + u"/moved"_s);
            }
            return false;
        });
    require(isMoved && entriesIn(victim) == kFiles + 1, "removes nothing beside the moved folder");
}

} // namespace

int main()
{
    moveAwayFromAClosedFolder();
    const struct {
        const char *name, *folder; // what is removed; "top/inner" is swapped
        void (*remove)(const QString &folder);
        bool followsLinks = false; // true: remove() follows a link at its path
    } rows[] = {
        {"removal, link inside", "top", FileUtils::removeDirRecursiveIfItExists},
        {"removal, link in its place", "top/inner", FileUtils::removeDirRecursiveIfItExists},
        {"purge", "top", [](auto &folder) { Cache(folder).purge(); }},
        {"clear, link inside", "top", [](auto &folder) { Cache(folder).clear(); }},
        {"clear, link in its place", "top/inner", [](auto &folder) { Cache(folder).clear(); },
            true},
    };
    for (const auto &row : rows) {
        int swaps = 0;
        for (int stop = 1, left = 0; left <= 0; ++stop) {
            const QTemporaryDir base;
            const QString inner = base.filePath(u"top/inner"_s);
            const QString victim = base.filePath(u"victim"_s);
            fill(inner);
            fill(victim);
            left = stop;
            const QString folder = base.filePath(QLatin1String(row.folder));
            const auto remove = [&] { tryToRemove(row.remove, folder); };
            runInStops(remove, [&](pid_t) {
                const qsizetype entries = entriesIn(inner);
                const bool isEmptied = entries > 0 && entries < kFiles;
                if ((!row.followsLinks || isEmptied || left <= 0) && --left == 0 && entries > 0) {
                    require(QDir().rename(inner, inner + u"moved"_s), "moves the folder");
                    require(QFile::link(victim, inner), "puts a link in its place");
                    ++swaps;
                }
                return false;
            });
            require(entriesIn(victim) == kFiles, row.name);
        }
        std::printf("%s: swapped at %d stops\n", row.name, swaps);
        require(swaps > kFiles, "the folder is swapped while it is emptied");
    }
    return 0;
}
