// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/OpenFiles.h"
#include "support/OrdinaryUser.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/logging/logStr.h>

#ifndef Q_OS_WIN
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using namespace std::string_literals;
#ifndef Q_OS_WIN
using Test::OrdinaryUser;
using Test::withOpenFiles;
#endif
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Removal = Test::FolderTest;

TEST_F(Removal, RemovesAFileButNoFolder)
{
    write("file", "x");
    for (const QString &removed : {path("file"), path("file"), QString()}) {
        FileUtils::removeFileIfItExists(removed);
        EXPECT_FALSE(exists("file"));
    }
    EXPECT_THAT(mLog.records(), IsEmpty());

    const QString folder = path("%1\u4E2D");
    ASSERT_TRUE(FileUtils::makeFolder(folder));
    expectFailure<Exception::FileDeletionException>(
        [&] { FileUtils::removeFileIfItExists(folder); },
        "718 Vyn::OvraBase::FileUtils::removeFileIfItExists",
        u"Could not remove: "_s + logStr(folder), folder);
}

TEST_F(Removal, RemovesAFolderButNoFile)
{
    write("folder/.hidden/x", "x");
    write("folder/read-only", "x");
    QFile::setPermissions(path("folder/read-only"), QFile::ReadOwner);
    write("file", "x");
    for (const char *name : {"folder", "file", "missing"}) {
        FileUtils::removeDirRecursiveIfItExists(path(name));
    }
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "x")));
#ifdef Q_OS_LINUX
    const QString lasting = u"/proc/self/fdinfo"_s;
    expectFailure<Exception::FolderDeletionException>(
        [&] { FileUtils::removeDirRecursiveIfItExists(lasting); },
        "731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists",
        u"The directory or some of its content could not be removed : "_s + logStr(lasting),
        lasting);
#endif
}

#ifndef Q_OS_WIN
TEST_F(Removal, RemovalOfALinkLeavesItsTarget)
{
    write("target/x", "x");
    write("folder/sub/y", "y");
    link("target", "folder/sub/link");
    link("nowhere", "folder/dangling");
    FileUtils::removeDirRecursiveIfItExists(path("folder"));
    for (const char *spelling : {"link", "link/", "link/.", "link/./"}) {
        link("target", "link");
        FileUtils::removeDirRecursiveIfItExists(path(spelling));
    }
    for (const char *target : {"target", "target/x", "nowhere"}) {
        link(target, "link");
        FileUtils::removeFileIfItExists(path("link"));
    }
    makeFolder("current/deep");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("current")));
    FileUtils::removeDirRecursiveIfItExists(u"."_s);
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_THAT(tree("."), ElementsAre(Pair("target/", ""), Pair("target/x", "x")));
}

/// Makes \a depth folders, each in the one before, below \a path. Returns the deepest one.
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

TEST_F(Removal, RemovesNamesOfAnyBytesAtAnyDepthWithFewOpenFiles)
{
    makeFolder("folder");
    const int deepest = openNested(path("folder"), 150);
    for (const char *name : {"\xFF", "\xFE\n*", "\xED\xA0\x80"}) {
        EXPECT_EQ(mkdirat(deepest, name, 0755), 0);
        EXPECT_EQ(symlinkat("..", deepest, (name + "link"s).c_str()), 0);
    }
    close(deepest);
    withOpenFiles(100, [&] { FileUtils::removeDirRecursiveIfItExists(path("folder")); });
    EXPECT_FALSE(exists("folder"));
}

TEST_F(Removal, RemovesTheRestWhenSomethingCannotBeRemoved)
{
    {
        const OrdinaryUser user{mFolder.path()};
        // Folders that are closed meanwhile, because others below them are open, are listed anew.
        for (const char *name : {"folder/a", "folder/b/c", "folder/d"}) {
            makeFolder(name);
            const int deepest = openNested(path(name), 70);
            EXPECT_EQ(mkdirat(deepest, "locked", 0755), 0);
            for (const char *file : {"locked/kept", "removed"}) {
                close(openat(deepest, file, O_CREAT | O_CLOEXEC, 0644));
            }
            EXPECT_EQ(fchmodat(deepest, "locked", 0555, 0), 0);
            close(deepest);
        }
        write("folder/removed");
        makeFolder("folder/b/empty and unreadable");
        QFile::setPermissions(path("folder/b/empty and unreadable"), {});
        EXPECT_THROW(FileUtils::removeDirRecursiveIfItExists(path("folder")),
            Exception::FolderDeletionException);
    }
    std::map<std::string, int> files;
    QDirIterator left(
        mFolder.path(), QDir::AllEntries | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (left.hasNext()) {
        left.next();
        ++files[left.fileName().toStdString()];
        QFile::setPermissions(
            left.filePath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    EXPECT_THAT(
        files, ElementsAre(Pair("a", 1), Pair("a folder with a name of forty characters", 210),
                   Pair("b", 1), Pair("c", 1), Pair("d", 1), Pair("folder", 1), Pair("kept", 3),
                   Pair("locked", 3)));
}
#endif

} // namespace
} // namespace Vyn::OvraBase
