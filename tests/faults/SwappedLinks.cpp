// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// A folder is swapped for a link to a victim while it is being removed, at each system call of the
/// removal. The victim has files of the same names and must lose none of them.

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

/// Each removes the folder "top" of \a base, which has the folder "inner", or that folder only.
const struct {
    const char *name;
    bool followsLinks; ///< where the path that it is given is a link already
    void (*removal)(const QString &base);
} kRemovals[] = {
    {"removeDirRecursiveIfItExists, link inside", false,
        [](const QString &base) { FileUtils::removeDirRecursiveIfItExists(base + u"/top"_s); }},
    {"removeDirRecursiveIfItExists, link in its place", false,
        [](const QString &base) {
            FileUtils::removeDirRecursiveIfItExists(base + u"/top/inner"_s);
        }},
    {"purge", false, [](const QString &base) { Cache(base + u"/top"_s).purge(); }},
    {"clear, link inside", false, [](const QString &base) { Cache(base + u"/top"_s).clear(); }},
    {"clear, link in its place", true,
        [](const QString &base) { Cache(base + u"/top/inner"_s).clear(); }},
};

} // namespace

int main()
{
    for (const auto &[name, followsLinks, removal] : kRemovals) {
        int swaps = 0;
        for (int stop = 1, left = 0; left <= 0; ++stop) {
            const QTemporaryDir base;
            const QString inner = base.filePath(u"top/inner"_s);
            const QString victim = base.filePath(u"victim"_s);
            fill(inner);
            fill(victim);
            left = stop;
            runInStops(
                [&, remove = removal] {
                    try {
                        remove(base.path());
                    } catch (const Vyn::Exception::FolderDeletionException &) {
                        // the link is in the way
                    }
                },
                [&, follows = followsLinks](pid_t) {
                    const qsizetype entries = entriesIn(inner);
                    const bool isEmptied = entries > 0 && entries < kFiles;
                    if ((!follows || isEmptied || left <= 0) && --left == 0 && entries > 0) {
                        require(QDir().rename(inner, inner + u"moved"_s), "moves the folder");
                        require(QFile::link(victim, inner), "puts a link in its place");
                        ++swaps;
                    }
                    return false;
                });
            require(entriesIn(victim) == kFiles, name);
        }
        std::printf("%s: swapped at %d stops\n", name, swaps);
        require(swaps > kFiles, "the folder is swapped while it is emptied");
    }
    return 0;
}
