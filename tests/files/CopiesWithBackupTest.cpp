// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

using CopiesWithBackup = Test::FolderTest;

TEST_F(CopiesWithBackup, BackupKeepsTheOldContent)
{
    write("new", "new");
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file"))); // nothing there yet
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "new"), Pair("new", "new")));

    write("file", "old");
    write("file.bak", "older");
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file")));
    EXPECT_THAT(
        tree("."), ElementsAre(Pair("file", "new"), Pair("file.bak", "old"), Pair("new", "new")));

    write("folder/x", "x");
    write("folder.bak", "older");
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("folder")));
    EXPECT_THAT(tree("folder.bak"), ElementsAre(Pair("x", "x")));
    FileUtils::removeDirRecursiveIfItExists(path("folder.bak"));
    FileUtils::removeFileIfItExists(path("folder"));

    // Back to the old content: the source is the backup itself.
    EXPECT_TRUE(FileUtils::copyWithBackup(path("file.bak"), path("file")));
    EXPECT_THAT(
        tree("."), ElementsAre(Pair("file", "old"), Pair("file.bak", "new"), Pair("new", "new")));
    EXPECT_THAT(mLog.records(), IsEmpty());
#ifdef Q_OS_LINUX
    for (const auto makeLink : {::link, ::symlink}) { // the backup is the file already
        FileUtils::removeFileIfItExists(path("file"));
        const QByteArray backup = path("file.bak").toLocal8Bit();
        ASSERT_EQ(makeLink(backup.constData(), path("file").toLocal8Bit().constData()), 0);
        EXPECT_TRUE(FileUtils::copyWithBackup(u"/proc/version"_s, path("file"))); // of no size
        EXPECT_EQ(FileUtils::loadBinaryFile(path("file.bak")), "new");
        EXPECT_NE(FileUtils::loadBinaryFile(path("file")), "");
    }
    FileUtils::removeFileIfItExists(path("file.bak"));
    link("file", "file.bak"); // the backup leads to the file
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file")));
    EXPECT_NE(FileUtils::loadBinaryFile(path("file.bak")), "new");
    EXPECT_FALSE(FileUtils::copyWithBackup(u"/proc/self/mem"_s, path("file"))); // unreadable
    EXPECT_EQ(FileUtils::loadBinaryFile(path("file")), "new");
#endif
}

TEST_F(CopiesWithBackup, BackupThatFailsLosesNothing)
{
    write("file", "old");
    write("file.bak", "older");
    write("blocked", "old");
    write("blocked.bak/x", "a folder in the way");
    write("folder/x", "x");
    const auto before = tree(".");
    const QString withNul = path("file") + u"\0x"_s;
    EXPECT_FALSE(FileUtils::copyWithBackup(path("blocked"), withNul));
    EXPECT_FALSE(FileUtils::copyWithBackup(withNul, path("new")));
    EXPECT_FALSE(FileUtils::copyWithBackup(path("half ") + QChar(0xD800), path("file")));
    EXPECT_EQ(tree("."), before);
    mLog.take();
    const std::pair<const char *, const char *> calls[] = {{"missing", "file"}, {"", "file"},
        {"folder", "file"}, {"file", "file"}, {"file", "blocked"}, {"file", "folder/"},
        {"file", "missing/file"}, {"file", "file/below"}, {"missing%3", "%1%2"}};
    for (const auto &[source, destination] : calls) {
        const QString from = *source == '\0' ? QString() : path(source);
        EXPECT_FALSE(FileUtils::copyWithBackup(from, path(destination))) << source;
        EXPECT_EQ(tree("."), before) << source << ' ' << destination;
        const QString start =
            u"Failed to copy "_s + from + u" to "_s + path(destination) + u" because "_s;
        EXPECT_THAT(mLog.take(),
            ElementsAre(
                FieldsAre(1, "Debug: FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()",
                    StartsWith(start.toStdString()))));
    }
    EXPECT_FALSE(FileUtils::copyWithBackup(path("file"), {}));
    mLog.take();
    QFile missing(path("missing"));
    EXPECT_FALSE(FileUtils::copyWithBackup(missing.fileName(), path("new")));
    EXPECT_FALSE(missing.copy(path("new")));
    EXPECT_THAT(mLog.take().at(0).message, testing::EndsWith(missing.errorString().toStdString()));

    write("lost.bak", "old"); // a backup without its original is renamed back
    EXPECT_FALSE(FileUtils::copyWithBackup(path("missing"), path("lost")));
    EXPECT_EQ(FileUtils::loadBinaryFile(path("lost")), "old");
    EXPECT_FALSE(exists("lost.bak"));
}

} // namespace
} // namespace Vyn::OvraBase
