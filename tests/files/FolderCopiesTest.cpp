// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/Guards.h"

#include <QResource>

#include <algorithm>
#include <cstdio>

namespace Vyn::Test {
namespace {

class FolderCopies : public FolderTest {
protected:
    /// Expects a warning for each of \a names below "source" that is not copied to "copy".
    void expectNotCopied(const std::vector<QString> &names)
    {
        std::vector<Record> expected;
        for (const QString &name : names) {
            const QString native = QString(name).replace(u'/', QDir::separator());
            expected.push_back(
                {1, "Support: FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()",
                    u"Error while copying : %1 to : %2"_s
                        .arg(path("source") + native, path("copy") + native)
                        .toStdString()});
        }
        EXPECT_THAT(mLog.take(), testing::UnorderedElementsAreArray(expected));
    }
};

TEST_F(FolderCopies, CopyHiddenEmptyAndDeepFolders)
{
    const std::string name(100, 'x');
    make("source/a.txt=a, source/.b/.c/d=d, source/empty/, source/" + name + '/' + name + '/' +
         name + "/x=x");
    EXPECT_TRUE(copyRecursively(path("source"), path("new/deep")));
    EXPECT_EQ(tree("new/deep"), tree("source"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(FolderCopies, CopyQtResources)
{
    ASSERT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    EXPECT_TRUE(copyRecursively(u":/ovrabase-test"_s, path("copy")));
    EXPECT_TRUE(copyWithBackup(u":/ovrabase-test/resources.qrc"_s, path("single")));
    EXPECT_FALSE(copyWithBackup(u":/ovrabase-test/missing"_s, path("single")));
    const std::string content = loadBinaryFile(u":/ovrabase-test/resources.qrc"_s).toStdString();
    EXPECT_EQ(tree(), "copy/, copy/resources.qrc=" + content + ", single=" + content);
}

TEST_F(FolderCopies, ReportWhatCannotBeCopiedAndGoOn)
{
    make("source/%1=new, source/sub/b=b, source/c=c, source/empty/");
    make("copy/%1=old, copy/empty=a file, copy/sub=a file");
    EXPECT_FALSE(copyRecursively(path("source"), path("copy")));
    EXPECT_EQ(tree("copy"), "%1=old, c=c, empty=a file, sub=a file");
    expectNotCopied({u"/%1"_s, u"/empty"_s, u"/sub/b"_s});
}

TEST_F(FolderCopies, FailForAPathThatIsNotAFolder)
{
    make("source/file");
    EXPECT_FALSE(copyRecursively(path("source/file"), path("copy")));
    EXPECT_FALSE(copyRecursively(path("source"), path("new") + u"\0x"_s));
    EXPECT_EQ(tree(), "source/, source/file");
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(FolderCopies, IntoTheSourceCopyWhatItHeldBefore)
{
    make("source/a=a, source/copy/old=old");
    EXPECT_TRUE(copyRecursively(path("source"), u"copy"_s)); // in the source
    EXPECT_EQ(tree("source"), "a=a, copy/, copy/a=a, copy/copy/, copy/copy/old=old, copy/old=old");
}

#ifndef Q_OS_WIN
TEST_F(FolderCopies, PassOverWhatIsNeitherFileNorFolder)
{
    make("source/");
    link("nowhere", "source/dangling");
    link("source/circle", "source/circle");
    ASSERT_EQ(mkfifo(path("source/pipe").toLocal8Bit().constData(), 0600), 0);
    EXPECT_TRUE(copyRecursively(path("source"), path("copy")));
    EXPECT_EQ(tree("copy"), "");
    EXPECT_THAT(mLog.records(), IsEmpty());
}

/// Without a limit, twenty folders would be copied in each of their twenty factorial orders.
TEST_F(FolderCopies, EndForFoldersThatLinkToEachOther)
{
    constexpr int kFolders = 20;
    for (int i = 0; i < kFolders * kFolders; ++i) {
        const std::string from = "source/" + std::to_string(i / kFolders) + '/';
        const std::string to = std::to_string(i % kFolders);
        make(from);
        link("source/" + to, from + "to " + to);
    }
    EXPECT_FALSE(copyRecursively(path("source"), path("copy")));
    const std::string copied = tree("copy");
    const auto folders = std::count(copied.begin(), copied.end(), ',') + 1;
    EXPECT_EQ(folders, kFolders * kFolders + 100); // links behind links
}

TEST_F(FolderCopies, FollowLinksButNotBackUp)
{
    make("beside/x=x, source/one/a=a, source/two/b=b");
    link("beside", "source/beside");
    link("source/two", "source/one/two");
    link("source/one", "source/two/one");
    link("source", "source/one/up");
    link(".", "source/above");

    EXPECT_FALSE(copyRecursively(path("source"), path("copy")));

    EXPECT_EQ(tree("copy"), "beside/, beside/x=x, one/, one/a=a, one/two/, one/two/b=b, two/, "
                            "two/b=b, two/one/, two/one/a=a");
    expectNotCopied(
        {u"/above"_s, u"/one/up"_s, u"/one/two/one"_s, u"/two/one/two"_s, u"/two/one/up"_s});
}
#endif

#ifdef Q_OS_LINUX
TEST_F(FolderCopies, ReportAFolderThatCannotBeListed)
{
    make("source/name=x");
    {
        const auto limit = withOpenFiles(0);
        EXPECT_FALSE(copyRecursively(path("source"), path("copy")));
    }
    expectNotCopied({u""_s});
    const QByteArray name = path("source/name").toLocal8Bit();
    ASSERT_EQ(std::rename(name.constData(), (name + '\xE9').constData()), 0); // not UTF-8
    EXPECT_FALSE(copyRecursively(path("source"), path("copy")));
    EXPECT_EQ(std::remove((name + '\xE9').constData()), 0); // which Qt cannot
}
#endif

} // namespace
} // namespace Vyn::Test
