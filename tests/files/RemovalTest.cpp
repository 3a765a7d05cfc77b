// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/Guards.h"
#include "support/OrdinaryUser.h"

#include <ovrabase/logging/logStr.h>

#include <QProcess>

#ifndef Q_OS_WIN
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
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
    EXPECT_THAT(mLog.records(), IsEmpty());
    const QString folder = path("%1\u4E2D");
    expectFailure<Exception::FileDeletionException>([&] { removeFileIfItExists(folder); },
        "718 Vyn::OvraBase::FileUtils::removeFileIfItExists",
        u"Could not remove: "_s + logStr(folder), folder);
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
#ifdef Q_OS_LINUX
    const QString lasting = u"/proc/self/fdinfo"_s;
    expectFailure<Exception::FolderDeletionException>(
        [&] { removeDirRecursiveIfItExists(lasting); },
        "731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists",
        u"The directory or some of its content could not be removed : "_s + logStr(lasting),
        lasting);
#endif
}

#ifdef Q_OS_WIN
TEST_F(Removal, OfAJunctionLeavesItsTarget)
{
    make("target/x=x, folder/sub/y=y");
    for (const char *junction : {"folder/sub/junction", "swapped"}) { // one in the folder's place
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
TEST_F(Removal, OfALinkLeavesItsTarget)
{
    make("target/x=x, folder/sub/y=y, current/deep/");
    link("target", "folder/sub/link");
    link("nowhere", "folder/dangling");
    removeDirRecursiveIfItExists(path("folder"));
    for (const char *spelling : {"link", "link/", "link/.", "link/./"}) {
        link("target", "link");
        removeDirRecursiveIfItExists(path(spelling));
    }
    for (const char *target : {"target", "target/x", "nowhere"}) {
        link(target, "link");
        removeFileIfItExists(path("link"));
    }
    const auto current = inFolder(path("current"));
    removeDirRecursiveIfItExists(u"."_s);
    EXPECT_EQ(tree(), "target/, target/x=x");
}

/// Makes \a depth nested folders below \a path. Returns the deepest one, opened.
int openNested(const QString &path, int depth)
{
    int folder = open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC);
    for (int i = 0; i < depth; ++i) {
        constexpr const char *kName = "a folder with a name of forty characters";
        EXPECT_EQ(mkdirat(folder, kName, 0755), 0);
        const int inner = openat(folder, kName, O_PATH | O_CLOEXEC);
        close(folder);
        folder = inner;
    }
    return folder;
}

TEST_F(Removal, ReachesNamesOfAnyBytesAtAnyDepthWithFewOpenFiles)
{
    make("folder/");
    const int deepest = openNested(path("folder"), 150);
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
        const OrdinaryUser user{mFolder.path()};
        make("folder/a/, folder/b/c/, folder/d/, folder/removed, folder/b/empty and unreadable/");
        // Folders that are closed meanwhile, because others below them are open, are listed anew.
        for (const char *name : {"folder/a", "folder/b/c", "folder/d"}) {
            const int deepest = openNested(path(name), 70);
            EXPECT_EQ(mkdirat(deepest, "locked", 0755), 0);
            for (const char *file : {"locked/kept", "removed"}) {
                close(openat(deepest, file, O_CREAT | O_CLOEXEC, 0644));
            }
            EXPECT_EQ(fchmodat(deepest, "locked", 0555, 0), 0);
            close(deepest);
        }
        QFile::setPermissions(path("folder/b/empty and unreadable"), {});
        EXPECT_THROW(
            removeDirRecursiveIfItExists(path("folder")), Exception::FolderDeletionException);
    }
    std::map<std::string, int> left;
    QDirIterator entries(
        mFolder.path(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo entry(entries.next());
        ++left[entry.fileName().toStdString()];
        QFile::setPermissions(
            entry.filePath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    EXPECT_EQ(left,
        (std::map<std::string, int>{{"a", 1}, {"a folder with a name of forty characters", 210},
            {"b", 1}, {"c", 1}, {"d", 1}, {"folder", 1}, {"kept", 3}, {"locked", 3}}));
}
#endif

} // namespace
} // namespace Vyn::Test
