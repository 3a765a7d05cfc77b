// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <QResource>

namespace Vyn::Test {
namespace {

class FolderCopies : public FolderTest {
protected:
    /// Copies "source" to "copy". Expects \a names not to be copied, with a warning for each.
    void copyAllBut(const std::vector<QString> &names)
    {
        EXPECT_EQ(copyRecursively(path("source"), path("copy")), names.empty());
        expectWarnings(names);
    }

    void expectWarnings(const std::vector<QString> &names)
    {
        std::vector<Record> expected;
        for (const QString &name : names) {
            const QString message = u"Error while copying : %1%3 to : %2%3"_s.arg(
                path("source"), path("copy"), QDir::toNativeSeparators(name));
            expected.push_back(
                {1, "Support: FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()",
                    message.toStdString()});
        }
        EXPECT_THAT(mLog.take(), testing::UnorderedElementsAreArray(expected));
    }
};

TEST_F(FolderCopies, CopyHiddenEmptyAndDeepFoldersAndQtResources)
{
    const std::string n(100, 'x');
    make("source/a=a, source/.b/.c/d=d, source/empty/, source/" + n + '/' + n + '/' + n + "/x=x");
    EXPECT_TRUE(copyRecursively(path("source"), path("new/deep")));
    EXPECT_EQ(tree("new/deep"), tree("source"));

    ASSERT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    const QString resource = u":/ovrabase-test/resources.qrc"_s;
    EXPECT_TRUE(copyRecursively(u":/ovrabase-test"_s, path("copies")));
    EXPECT_TRUE(copyWithBackup(resource, path("copies/single")));
    const std::string content = loadBinaryFile(resource).toStdString();
    EXPECT_EQ(tree("copies"), "resources.qrc=" + content + ", single=" + content);
    EXPECT_FALSE(QFile::permissions(path("copies/single")).testFlag(QFile::WriteOwner));
}

TEST_F(FolderCopies, ReportWhatCannotBeCopiedAndGoOn)
{
    make("source/%1=new, source/sub/b=b, source/c=c, source/empty/");
    make("copy/%1=old, copy/empty=a file, copy/sub=a file");
    copyAllBut({u"/%1"_s, u"/empty"_s, u"/sub/b"_s});
    EXPECT_EQ(tree("copy"), "%1=old, c=c, empty=a file, sub=a file");
}

TEST_F(FolderCopies, FailForAFileAndCopyAFolderIntoItselfOnce)
{
    make("a=a, copy/old=old");
    EXPECT_FALSE(copyRecursively(path("a"), path("new")));
    EXPECT_FALSE(copyRecursively(mFolder.path(), path("new") + u"\0x"_s));
    EXPECT_TRUE(copyRecursively(mFolder.path(), u"copy"_s)); // relative to the source
    EXPECT_EQ(tree(), "a=a, copy/, copy/a=a, copy/copy/, copy/copy/old=old, copy/old=old");
}

#ifdef Q_OS_LINUX
/// Without a limit, each of the 20! ways through the linked folders would be copied.
TEST_F(FolderCopies, EndForFoldersThatLinkToEachOther)
{
    constexpr int kFolders = 20;
    for (int i = 0; i < kFolders * kFolders; ++i) {
        const std::string from = "source/" + std::to_string(i / kFolders) + '/';
        const std::string to = std::to_string(i % kFolders);
        make(from + ", " + from + to + "->source/" + to);
    }
    EXPECT_FALSE(copyRecursively(path("source"), path("copy")));
    mLog.take(); // a warning for each link that was not followed
    const QString copied = QString::fromStdString(tree("copy"));
    // The last 100 are links to folders inside linked folders.
    EXPECT_EQ(copied.count(u',') + 1, kFolders * kFolders + 100);
}

TEST_F(FolderCopies, FollowLinksExceptToAParentAndIgnorePipesAndDanglingLinks)
{
    make("beside/x=x, source/one/a=a, source/two/b=b, source/beside->beside, source/above->., "
         "source/one/two->source/two, source/two/one->source/one, source/one/up->source, "
         "source/dangling->nowhere, source/circle->source/circle");
    ASSERT_EQ(mkfifo(native("source/pipe").c_str(), 0600), 0);
    copyAllBut({u"/above"_s, u"/one/up"_s, u"/one/two/one"_s, u"/two/one/two"_s, u"/two/one/up"_s});
    EXPECT_EQ(tree("copy"), "beside/, beside/x=x, one/, one/a=a, one/two/, one/two/b=b, two/, "
                            "two/b=b, two/one/, two/one/a=a");
}

TEST_F(FolderCopies, ReportAFolderThatCannotBeListed)
{
    make("source/");
    const fs::path notUtf8 = native("source") / "\xE9";
    fs::create_directory(notUtf8);
    copyAllBut({u""_s});
    fs::remove(notUtf8); // Qt cannot remove it
    const QString source = path("source");
    const QString copy = path("copy");
    {
        const auto limit = withOpenFiles(0);
        EXPECT_FALSE(copyRecursively(source, copy));
    }
    expectWarnings({u""_s});
}
#endif

} // namespace
} // namespace Vyn::Test
