// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Cache.h"
#include "support/FolderTest.h"

#include <ovrabase/logging/logStr.h>

#include <QProcess>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#endif

namespace Vyn::Test {
namespace {

using Removal = FolderTest;

TEST_F(Removal, OfAFileLeavesAFolder)
{
    make("file=x, %1\u4E2D/");
    for (const QString &removed : {path("file"), path("file"), QString()}) {
        removeFileIfItExists(removed);
    }
    const QString folder = path("%1\u4E2D");
    expectFailure<Exception::FileDeletionException>(
        "718 Vyn::OvraBase::FileUtils::removeFileIfItExists",
        u"Could not remove: "_s + logStr(folder), folder, [&] { removeFileIfItExists(folder); });
    EXPECT_EQ(tree(), "%1\u4E2D/");
}

TEST_F(Removal, OfAFolderLeavesAFile)
{
    make("folder/.hidden/x=x, folder/read-only=x, file=x");
    QFile::setPermissions(path("folder/read-only"), QFile::ReadOwner);
    for (const char *name : {"folder", "file", "missing"}) {
        removeDirRecursiveIfItExists(path(name));
    }
    EXPECT_EQ(tree(), "file=x");
}

#ifdef Q_OS_WIN
TEST_F(Removal, EmptiesAFolderThatAnotherProgramHasOpen)
{
    make("folder/open/sub/x=x, folder/y=y");
    void *const open = CreateFileW(native("folder/open").c_str(), GENERIC_READ, FILE_SHARE_READ,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    EXPECT_THROW(removeDirRecursiveIfItExists(path("folder")), Exception::FolderDeletionException);
    CloseHandle(open);
    EXPECT_THAT(mLog.take(), testing::SizeIs(1));
    EXPECT_EQ(tree(), "folder/, folder/open/");
}

TEST_F(Removal, OfAJunctionOrOfAFolderWithOneLeavesTheTarget)
{
    make("target/x=x, folder/sub/y=y");
    // The second junction is removed itself.
    for (const char *junction : {"folder/sub/junction", "swapped"}) {
        const QStringList command{u"/c"_s, u"mklink"_s, u"/J"_s,
            QDir::toNativeSeparators(path(junction)), QDir::toNativeSeparators(path("target"))};
        QProcess::execute(u"cmd"_s, command);
        if (!QFileInfo(path(junction)).isJunction()) {
            GTEST_SKIP() << "NOT TESTED, because this system makes no junctions";
        }
    }
    removeDirRecursiveIfItExists(path("folder"));
    removeDirRecursiveIfItExists(path("swapped"));
    EXPECT_EQ(tree(), "target/, target/x=x");
}
#else
TEST_F(Removal, OfALinkOrOfAFolderWithLinksLeavesTheTargets)
{
    make("target/x=x, folder/sub/y=y, folder/sub/link->target, folder/dangling->nowhere, "
         "current/deep/");
    removeDirRecursiveIfItExists(path("folder"));
    for (const char *spelling : {"link", "link/", "link/.", "link/./"}) {
        make("link->target");
        removeDirRecursiveIfItExists(path(spelling));
    }
    for (const std::string target : {"target", "target/x", "nowhere"}) {
        make("link->" + target);
        removeFileIfItExists(path("link"));
    }
    const auto current = inFolder(path("current"));
    removeDirRecursiveIfItExists(u"."_s);
    EXPECT_EQ(tree(), "target/, target/x=x");
}

/// Makes \a depth nested folders in \a folder. Returns the deepest one, opened.
int openNested(const fs::path &folder, int depth)
{
    const std::string name(40, 'x');
    int deepest = open(folder.c_str(), O_PATH | O_CLOEXEC);
    for (int i = 0; i < depth; ++i) {
        EXPECT_EQ(mkdirat(deepest, name.c_str(), 0755), 0);
        const int outer = std::exchange(deepest, openat(deepest, name.c_str(), O_PATH | O_CLOEXEC));
        close(outer);
    }
    return deepest;
}

TEST_F(Removal, ReachesNamesOfAnyBytesAtAnyDepthWithFewOpenFiles)
{
    make("folder/");
    const int deepest = openNested(native("folder"), 150);
    for (const std::string name : {"\xFF", "\xFE\n*", "\xED\xA0\x80"}) {
        EXPECT_EQ(mkdirat(deepest, name.c_str(), 0755), 0);
        EXPECT_EQ(symlinkat("..", deepest, (name + "link").c_str()), 0);
    }
    close(deepest);
    const auto limit = withOpenFiles(100);
    removeDirRecursiveIfItExists(path("folder"));
    EXPECT_EQ(tree(), "");
}

TEST_F(Removal, GoesOnWhenSomethingCannotBeRemoved)
{
    {
        const auto user = asOrdinaryUser({mFolder.path()});
        make("folder/a/, folder/b/c/, folder/d/, folder/removed, folder/b/x/, x/, cache/");
        // The folders nest so deeply that the removal closes outer ones, and opens and lists them
        // again after the inner ones.
        for (const char *name : {"folder/a", "folder/b/c", "folder/d"}) {
            const int deepest = openNested(native(name), 70);
            EXPECT_EQ(mkdirat(deepest, "locked", 0755), 0);
            for (const char *file : {"locked/kept", "removed"}) {
                close(openat(deepest, file, O_CREAT | O_CLOEXEC, 0644));
            }
            EXPECT_EQ(fchmodat(deepest, "locked", 0555, 0), 0);
            close(deepest);
        }
        for (const char *name : {"folder/b/x", "x", "cache"}) {
            fs::permissions(native(name), fs::perms::none);
        }
        removeDirRecursiveIfItExists(path("x"));
        Cache(path("cache")).purge();
        const QString folder = path("folder");
        expectFailure<Exception::FolderDeletionException>(
            "731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists",
            u"The directory or some of its content could not be removed : "_s + logStr(folder),
            folder, [&] { removeDirRecursiveIfItExists(folder); });
    }
    std::map<std::string, int> left;
    for (const auto &entry : fs::recursive_directory_iterator(native("."))) {
        ++left[entry.path().filename()];
        fs::permissions(entry, fs::perms::owner_all);
    }
    EXPECT_EQ(left, (std::map<std::string, int>{{"a", 1}, {std::string(40, 'x'), 210}, {"b", 1},
                        {"c", 1}, {"d", 1}, {"folder", 1}, {"kept", 3}, {"locked", 3}}));
}
#endif

} // namespace
} // namespace Vyn::Test
