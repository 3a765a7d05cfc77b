// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/logging/logStr.h>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
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
#endif

} // namespace
} // namespace Vyn::OvraBase
