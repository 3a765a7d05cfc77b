// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::Test {
namespace {

using CopiesWithBackup = FolderTest;

TEST_F(CopiesWithBackup, KeepTheOldContentAsTheBackup)
{
    const Rows<const char *, const char *, const char *, const char *> rows{
        {"nothing to keep", "new", "file", "new=n", "file=n, new=n"},
        {"in place of an older backup", "new", "file", "file=old, file.bak=older, new=n",
            "file.bak=old, file=n, new=n"},
        {"a folder, in place of a file as the backup", "new", "folder",
            "folder.bak=older, folder/x=x, new=n", "folder.bak/, folder.bak/x=x, folder=n, new=n"},
        {"when the source is the backup", "file.bak", "file", "file=1, file.bak=2",
            "file.bak=1, file=2"},
    };
    forEach(rows, [&](auto source, auto destination, auto before, auto after) {
        make(before);
        EXPECT_TRUE(copyWithBackup(path(source), path(destination)));
        EXPECT_EQ(tree(), after);
    });
}

#ifdef Q_OS_LINUX
TEST_F(CopiesWithBackup, KeepTheOldContentOfLinkedFiles)
{
    make("new=n"); // names that differ only in letter case are two files
    fs::create_symlink("new", native("New"));
    EXPECT_TRUE(copyWithBackup(path("new"), path("New")));
    fs::create_hard_link(native("new"), native("NEW"));
    EXPECT_TRUE(copyWithBackup(path("new"), path("NEW")));
    EXPECT_EQ(tree(), "NEW.bak=n, NEW=n, New.bak->new, New=n, new=n");
    const Rows<void (*)(const fs::path &, const fs::path &), std::string, std::string> rows{
        {"the backup is a hard link to the file", fs::create_hard_link, "file", "file.bak"},
        {"the backup is a link to the file", fs::create_symlink, "file", "file.bak"},
        {"the file is a link to the backup", fs::create_symlink, "file.bak", "file"}};
    forEach(rows, [&](auto makeLink, const auto &target, const auto &link) {
        make(target + "=old");
        makeLink(native(target), native(link));
        EXPECT_TRUE(copyWithBackup(u"/proc/version"_s, path("file"))); // its size is given as 0
        EXPECT_THAT(tree(), testing::StartsWith("file.bak=old, file=Linux"));
    });
}

TEST_F(CopiesWithBackup, NeedNoRightToListTheFolder)
{
    const auto user = asOrdinaryUser({mFolder.path()});
    make("new=n, to/file=old");
    fs::permissions(native("to"), fs::perms::owner_write | fs::perms::owner_exec);
    EXPECT_TRUE(copyWithBackup(path("new"), path("to/file")));
    fs::permissions(native("to"), fs::perms::owner_all);
    EXPECT_EQ(tree(), "new=n, to/, to/file.bak=old, to/file=n");
}
#endif

TEST_F(CopiesWithBackup, LoseNothingWhenTheSourceOrDestinationIsUnusable)
{
    const Rows<QString, QString> rows{
        {"missing source", path("missing%3"), path("%1%2")},
        {"missing resource", u":/missing"_s, path("file")},
        {"no source", {}, path("file")},
        {"destination with a NUL", path("blocked"), path("file") + u"\0x"_s},
        {"source with an unpaired surrogate", path("half ") + QChar(0xD800), path("file")},
        {"folder as the source", path("folder"), path("file")},
#ifdef Q_OS_LINUX
        {"source that cannot be read", u"/proc/self/mem"_s, path("file")},
        {"endless source", u"/dev/zero"_s, path("file")},
#else
        {"file onto itself in capitals", path("file"), path("FILE")},
#endif
        {"file onto itself", path("file"), path("file")},
        {"folder in the way of the backup", path("file"), path("blocked")},
        {"destination that ends in a slash", path("file"), path("folder/")},
        {"destination in a missing folder", path("file"), path("missing/file")},
    };
    forEach(rows, [&](const QString &source, const QString &destination) {
        const std::string before = "blocked.bak/, blocked.bak/x=x, blocked=old, file.bak=older, "
                                   "file=old, folder/, folder/x=x";
        make(before);
        EXPECT_FALSE(copyWithBackup(source, destination));
        EXPECT_EQ(tree(), before);
        const QString start = u"Failed to copy %1 to %2 because "_s.arg(source, destination);
        EXPECT_THAT(
            mLog.take(), ElementsAre(testing::FieldsAre(1,
                             "Debug: FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()",
                             testing::StartsWith(start.toStdString()))));
    });
}

TEST_F(CopiesWithBackup, RestoreAFileThatOnlyHasABackupWhenTheyFail)
{
    make("lost.bak=old");
    QFile missing(path("missing"));
    EXPECT_FALSE(missing.copy(path("new")) || copyWithBackup(missing.fileName(), path("lost")));
    EXPECT_THAT(mLog.take().at(0).message, testing::EndsWith(missing.errorString().toStdString()));
    EXPECT_EQ(tree(), "lost=old");
}

#ifdef Q_OS_WIN
TEST_F(CopiesWithBackup, ReplaceReadOnlyFiles)
{
    make("new=new");
    ASSERT_TRUE(QFile::setPermissions(path("new"), QFile::ReadOwner));
    for (int i = 0; i < 3; ++i) { // over nothing, over a file, over a file with a backup
        EXPECT_TRUE(copyWithBackup(path("new"), path("file")));
    }
    EXPECT_EQ(tree(), "file.bak=new, file=new, new=new");
    EXPECT_FALSE(isWritable(path("file.bak")));
}
#endif

TEST_F(CopiesWithBackup, InOneCallDoWhatTheyDoInSeveral)
{
    const Rows<QString> rows{// each copy: source>destination
        {"unrelated", u"a>1 b>2 missing>3 a>missing/4 b>x"_s},
        {"a source is an earlier destination", u"a>new new>x x>y"_s},
        {"a source is an earlier backup", u"a>x x.bak>y"_s},
        {"twice to one destination", u"a>x b>x missing>x"_s}, {"over a backup", u"a>x b>x.bak"_s},
        {"over a folder", u"a>folder folder/c>y folder.bak/c>z"_s},
#ifndef Q_OS_WIN
        {"through links", u"a>new dangling>1 b>here/x link>2"_s},
        {"over links", u"a>here here/b>1 b>link link>2"_s},
#endif
        {"a destination that only has a backup", u"missing>lost lost>y a>lost"_s}};
    forEach(rows, [&](const QString &copies) {
        QString before = u"%1/a=a, %1/b=b, %1/x=x, %1/x.bak=y, %1/lost.bak=z, %1/folder/c=c"_s;
#ifndef Q_OS_WIN
        before += u", %1/link->%1/x, %1/dangling->%1/new, %1/here->%1"_s;
#endif
        make(before.arg(u"one"_s).toStdString());
        make(before.arg(u"many"_s).toStdString());
        std::vector<bool> expected;
        std::vector<std::pair<QString, QString>> many;
        for (const QString &copy : copies.split(u' ')) {
            const QStringList names = copy.split(u'>');
            expected.push_back(copyWithBackup(path("one/") + names[0], path("one/") + names[1]));
            many.emplace_back(path("many/") + names[0], path("many/") + names[1]);
        }
        const std::size_t records = mLog.take().size();
        EXPECT_EQ(copyWithBackup(many), expected);
        EXPECT_EQ(mLog.take().size(), records);
        EXPECT_EQ(tree("many"), tree("one"));
    });
}

} // namespace
} // namespace Vyn::Test
