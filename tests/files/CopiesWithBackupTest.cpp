// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::Test {
namespace {

using CopiesWithBackup = FolderTest;

TEST_F(CopiesWithBackup, KeepTheOldContentAsTheBackup)
{
    const struct {
        const char *name, *source, *destination;
        Tree before, after;
    } rows[] = {
        {"nothing to keep", "new", "file", {{"new", "n"}}, {{"file", "n"}, {"new", "n"}}},
        {"in place of an older backup", "new", "file",
            {{"file", "old"}, {"file.bak", "older"}, {"new", "n"}},
            {{"file", "n"}, {"file.bak", "old"}, {"new", "n"}}},
        {"of a folder in place of a file", "new", "folder",
            {{"folder.bak", "older"}, {"folder/x", "x"}, {"new", "n"}},
            {{"folder", "n"}, {"folder.bak/", ""}, {"folder.bak/x", "x"}, {"new", "n"}}},
        {"when the source is the backup", "file.bak", "file", {{"file", "1"}, {"file.bak", "2"}},
            {{"file", "2"}, {"file.bak", "1"}}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        startAnew();
        make(row.before);
        EXPECT_TRUE(copyWithBackup(path(row.source), path(row.destination)));
        EXPECT_EQ(tree(), row.after);
        EXPECT_THAT(mLog.records(), IsEmpty());
    }
}

#ifdef Q_OS_LINUX
TEST_F(CopiesWithBackup, KeepTheOldContentWhereFileAndBackupAreLinked)
{
    const struct {
        const char *name;
        int (*makeLink)(const char *from, const char *to) noexcept;
        const char *target, *link;
    } rows[] = {{"the backup is another name of the file", ::link, "file", "file.bak"},
        {"the backup leads to the file", ::symlink, "file", "file.bak"},
        {"the file leads to the backup", ::symlink, "file.bak", "file"}};
    for (const auto &[name, makeLink, target, link] : rows) {
        SCOPED_TRACE(name);
        startAnew();
        make({{target, "old"}});
        ASSERT_EQ(makeLink(path(target).toUtf8().constData(), path(link).toUtf8().constData()), 0);
        EXPECT_TRUE(copyWithBackup(u"/proc/version"_s, path("file"))); // of size 0
        EXPECT_EQ(tree()["file.bak"], "old");
        EXPECT_THAT(tree()["file"], testing::StartsWith("Linux"));
    }
}

TEST_F(CopiesWithBackup, KeepTheFileWhenTheSourceCannotBeReadToItsEnd)
{
    make({{"file", "old"}});
    EXPECT_FALSE(copyWithBackup(u"/proc/self/mem"_s, path("file")));
    EXPECT_EQ(tree(), (Tree{{"file", "old"}}));
}
#endif

TEST_F(CopiesWithBackup, ChangeNothingWhenTheyFail)
{
    const QString withNul = path("file") + u"\0x"_s;
    const QString halfSurrogate = path("half ") + QChar(0xD800);
    const struct {
        const char *name;
        QString source, destination;
    } rows[] = {
        {"missing source", path("missing%3"), path("%1%2")},
        {"no source", {}, path("file")},
        {"no destination", path("file"), {}},
        {"source with a NUL", withNul, path("new")},
        {"destination with a NUL", path("blocked"), withNul},
        {"source without an encoding", halfSurrogate, path("file")},
        {"folder as the source", path("folder"), path("file")},
        {"file onto itself", path("file"), path("file")},
#ifdef Q_OS_WIN
        {"file onto its other spelling", path("file"), path("FILE")},
#endif
        {"folder in the way of the backup", path("file"), path("blocked")},
        {"folder without a name", path("file"), path("folder/")},
        {"missing folder", path("file"), path("missing/file")},
        {"file instead of a folder", path("file"), path("file/below")},
    };
    for (const auto &[name, source, destination] : rows) {
        SCOPED_TRACE(name);
        startAnew();
        const Tree before{{"blocked", "old"}, {"blocked.bak/", ""}, {"blocked.bak/x", "x"},
            {"file", "old"}, {"file.bak", "older"}, {"folder/", ""}, {"folder/x", "x"}};
        make(before);
        EXPECT_FALSE(copyWithBackup(source, destination));
        EXPECT_EQ(tree(), before);
        const QString start =
            u"Failed to copy "_s + source + u" to "_s + destination + u" because "_s;
        EXPECT_THAT(
            mLog.take(), ElementsAre(testing::FieldsAre(1,
                             "Debug: FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()",
                             testing::StartsWith(start.toStdString()))));
    }
    QFile missing(path("missing"));
    EXPECT_FALSE(missing.copy(path("new")) || copyWithBackup(missing.fileName(), path("new")));
    EXPECT_THAT(mLog.take().at(0).message, testing::EndsWith(missing.errorString().toStdString()));
}

TEST_F(CopiesWithBackup, RenameABackupWithoutItsOriginalBackWhenTheyFail)
{
    make({{"lost.bak", "old"}});
    EXPECT_FALSE(copyWithBackup(path("missing"), path("lost")));
    EXPECT_EQ(tree(), (Tree{{"lost", "old"}}));
}

#ifdef Q_OS_WIN
TEST_F(CopiesWithBackup, ReplaceReadOnlyFiles)
{
    make({{"new", "new"}});
    ASSERT_TRUE(QFile::setPermissions(path("new"), QFile::ReadOwner));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(copyWithBackup(path("new"), path("file"))) << i;
    }
    EXPECT_FALSE(QFileInfo(path("file.bak")).isWritable());
    for (const char *name : {"new", "file", "file.bak"}) {
        EXPECT_TRUE(QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner));
    }
}
#endif

TEST_F(CopiesWithBackup, ManyAtOnceDoWhatTheyDoOneAfterAnother)
{
    const struct {
        const char *name;
        std::vector<std::pair<std::string, std::string>> copies;
    } rows[] = {
        {"none", {}},
        {"unrelated", {{"a", "1"}, {"b", "2"}, {"missing", "3"}, {"a", "missing/4"}, {"b", "x"}}},
        {"a source is an earlier destination", {{"a", "new"}, {"new", "x"}, {"x", "y"}}},
        {"a source is an earlier backup", {{"a", "x"}, {"x.bak", "y"}}},
        {"twice to one destination", {{"a", "x"}, {"b", "x"}, {"missing", "x"}}},
        {"over a backup", {{"a", "x"}, {"b", "x.bak"}}},
        {"over a folder", {{"a", "folder"}, {"folder/c", "y"}, {"folder.bak/c", "z"}}},
#ifndef Q_OS_WIN
        {"through links", {{"a", "new"}, {"dangling", "1"}, {"b", "here/x"}, {"link", "2"}}},
        {"over links", {{"a", "here"}, {"here/b", "1"}, {"b", "link"}, {"link", "2"}}},
#endif
        {"back to a lost file", {{"missing", "lost"}, {"lost", "y"}, {"a", "lost"}}},
    };
    for (const auto &[name, copies] : rows) {
        SCOPED_TRACE(name);
        startAnew();
        for (const std::string folder : {"one/", "many/"}) {
            for (const std::string file : {"a", "b", "x", "x.bak", "lost.bak", "folder/c"}) {
                make({{folder + file, file}});
            }
#ifndef Q_OS_WIN
            link(folder + "x", folder + "link");
            link(folder + "new", folder + "dangling");
            link(folder, folder + "here");
#endif
        }
        std::vector<bool> expected;
        std::vector<std::pair<QString, QString>> many;
        for (const auto &[source, destination] : copies) {
            expected.push_back(copyWithBackup(path("one/" + source), path("one/" + destination)));
            many.emplace_back(path("many/" + source), path("many/" + destination));
        }
        const std::size_t records = mLog.take().size();
        EXPECT_EQ(copyWithBackup(many), expected);
        EXPECT_EQ(mLog.take().size(), records);
        EXPECT_EQ(tree("many"), tree("one"));
    }
}

} // namespace
} // namespace Vyn::Test
