// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/OpenFiles.h"

#include <QResource>

#include <cstdio>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using Test::Record;
#ifdef Q_OS_LINUX
using Test::withoutOpenFiles;
#endif
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class FolderCopies : public Test::FolderTest {
protected:
    void expectNotCopied(std::vector<std::pair<QString, QString>> pairs)
    {
        std::vector<Record> expected;
        for (const auto &[from, to] : pairs) {
            expected.push_back(
                {1, "Support: FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()",
                    (u"Error while copying : "_s + from + u" to : "_s + to).toStdString()});
        }
        EXPECT_THAT(mLog.take(), testing::UnorderedElementsAreArray(expected));
    }
};

QString joined(const QString &folder, const QString &name)
{
    return folder + QDir::separator() + name;
}

TEST_F(FolderCopies, CopiesAFolderWithAllThatIsHidden)
{
    write("source/a.txt", "a");
    write("source/.b/.c/d", "d");
    makeFolder("source/empty");
    EXPECT_TRUE(FileUtils::copyRecursively(path("source"), path("new/deep")));
    EXPECT_EQ(tree("new/deep"), tree("source"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(FolderCopies, CopiesQtResources)
{
    ASSERT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    EXPECT_TRUE(FileUtils::copyRecursively(u":/ovrabase-test"_s, path("copy")));
    EXPECT_TRUE(FileUtils::copyWithBackup(u":/ovrabase-test/resources.qrc"_s, path("single")));
    const QByteArray content = FileUtils::loadBinaryFile(u":/ovrabase-test/resources.qrc"_s);
    EXPECT_EQ(FileUtils::loadBinaryFile(path("copy/resources.qrc")), content);
    EXPECT_EQ(FileUtils::loadBinaryFile(path("single")), content);
    EXPECT_FALSE(FileUtils::copyWithBackup(u":/ovrabase-test/missing"_s, path("single")));
    EXPECT_EQ(FileUtils::loadBinaryFile(path("single")), content);
}

TEST_F(FolderCopies, ReportsWhatItCannotCopyAndGoesOn)
{
    write("source/%1", "new");
    write("source/sub/b", "b");
    write("source/c", "c");
    write("copy/%1", "old");
    write("copy/sub", "a file in the way");
    makeFolder("source/empty");
    write("copy/empty", "a file, too");
    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("copy")));
    EXPECT_THAT(tree("copy"), ElementsAre(Pair("%1", "old"), Pair("c", "c"),
                                  Pair("empty", "a file, too"), Pair("sub", "a file in the way")));
    expectNotCopied({{joined(path("source"), u"%1"_s), joined(path("copy"), u"%1"_s)},
        {joined(path("source"), u"empty"_s), joined(path("copy"), u"empty"_s)},
        {joined(joined(path("source"), u"sub"_s), u"b"_s),
            joined(joined(path("copy"), u"sub"_s), u"b"_s)}});

    EXPECT_FALSE(FileUtils::copyRecursively({}, path("copy")));
    EXPECT_FALSE(FileUtils::copyRecursively(path("source/c"), path("copy")));
    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("new") + u"\0x"_s));
    EXPECT_FALSE(exists("new"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(FolderCopies, IntoItselfTakesWhatWasThere)
{
    write("source/a", "a");
    write("source/copy/old", "old");
    EXPECT_TRUE(FileUtils::copyRecursively(path("source"), u"copy"_s)); // in the source
    EXPECT_THAT(tree("source"),
        ElementsAre(Pair("a", "a"), Pair("copy/", ""), Pair("copy/a", "a"), Pair("copy/copy/", ""),
            Pair("copy/copy/old", "old"), Pair("copy/old", "old")));
}

TEST_F(FolderCopies, CopiesFoldersWithLongPaths)
{
    QString folder = path("source");
    for (const char16_t letter : {u'a', u'b', u'c'}) {
        folder += u'/' + QString(100, letter);
        ASSERT_TRUE(FileUtils::makeFolder(folder));
        ASSERT_TRUE(FileUtils::saveTextToFile(u"x"_s, folder + u"/x"_s));
    }
    EXPECT_TRUE(FileUtils::copyRecursively(path("source"), path("copy")));
    EXPECT_EQ(tree("copy"), tree("source"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

#ifndef Q_OS_WIN
TEST_F(FolderCopies, PassesOverWhatIsNeitherFileNorFolder)
{
    makeFolder("source");
    link("nowhere", "source/dangling");
    link("source/circle", "source/circle");
    ASSERT_EQ(mkfifo(path("source/pipe").toLocal8Bit().constData(), 0600), 0);
    EXPECT_TRUE(FileUtils::copyRecursively(path("source"), path("copy")));
    EXPECT_THAT(tree("copy"), IsEmpty());
    EXPECT_THAT(mLog.records(), IsEmpty());
}

/// Twenty folders would come in twenty factorial times.
TEST_F(FolderCopies, EndsForFoldersThatLinkToEachOther)
{
    constexpr int kFolders = 20;
    const QDir source(path("source"));
    for (int i = 0; i < kFolders; ++i) {
        ASSERT_TRUE(source.mkpath(QString::number(i)));
        for (int j = 0; j < kFolders; ++j) {
            const QString name = u"%1/to %2"_s.arg(i).arg(j);
            ASSERT_TRUE(QFile::link(source.filePath(QString::number(j)), source.filePath(name)));
        }
    }
    EXPECT_FALSE(FileUtils::copyRecursively(source.path(), path("copy")));
    EXPECT_EQ(tree("copy").size(), kFolders * kFolders + 100); // links behind links
}

TEST_F(FolderCopies, FollowsLinksButNotBackUp)
{
    write("beside/x", "x");
    write("source/one/a", "a");
    write("source/two/b", "b");
    link("beside", "source/beside");
    link("source/two", "source/one/two");
    link("source/one", "source/two/one");
    link("source", "source/one/up");
    link(".", "source/above");

    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("copy")));

    EXPECT_THAT(tree("copy"),
        ElementsAre(Pair("beside/", ""), Pair("beside/x", "x"), Pair("one/", ""),
            Pair("one/a", "a"), Pair("one/two/", ""), Pair("one/two/b", "b"), Pair("two/", ""),
            Pair("two/b", "b"), Pair("two/one/", ""), Pair("two/one/a", "a")));
    std::vector<std::pair<QString, QString>> left;
    for (const char *name : {"above", "one/up", "one/two/one", "two/one/two", "two/one/up"}) {
        left.emplace_back(
            path("source/") + QLatin1String(name), path("copy/") + QLatin1String(name));
    }
    expectNotCopied(left);
}
#endif

#ifdef Q_OS_LINUX
TEST_F(FolderCopies, ReportsWhatItCannotList)
{
    write("source/name", "x");
    EXPECT_FALSE(
        withoutOpenFiles([&] { return FileUtils::copyRecursively(path("source"), path("copy")); }));
    expectNotCopied({{path("source"), path("copy")}});
    const QByteArray name = path("source/name").toLocal8Bit();
    ASSERT_EQ(std::rename(name.constData(), (name + '\xE9').constData()), 0); // not UTF-8
    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("copy")));
    EXPECT_EQ(std::remove((name + '\xE9').constData()), 0); // which Qt cannot
}
#endif

} // namespace
} // namespace Vyn::OvraBase
