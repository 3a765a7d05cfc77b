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

TEST_F(CopiesWithBackup, KeepsTheOldContent)
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

TEST_F(CopiesWithBackup, LosesNothingWhenItFails)
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
        {"file", "missing/file"}, {"file", "file/below"}, {"missing%3", "%1%2"},
#ifdef Q_OS_WIN
        {"file", "FILE"}
#endif
    };
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

#ifdef Q_OS_WIN
TEST_F(CopiesWithBackup, ReplacesReadOnlyFiles)
{
    write("new", "new");
    ASSERT_TRUE(QFile::setPermissions(path("new"), QFile::ReadOwner));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file"))) << i;
    }
    EXPECT_FALSE(QFileInfo(path("file.bak")).isWritable());
    for (const char *name : {"new", "file", "file.bak"}) {
        EXPECT_TRUE(QFile::setPermissions(path(name), QFile::ReadOwner | QFile::WriteOwner));
    }
}
#endif

TEST_F(CopiesWithBackup, AnswersForEachOfHundredsOfCopies)
{
    write("a", "new");
    write("real/199", "old");
#ifdef Q_OS_WIN
    const QString folder = path("real");
#else
    const QString folder = path("link"); // the last copy replaces it
    ASSERT_TRUE(QFile::link(path("real"), folder));
#endif
    std::vector<std::pair<QString, QString>> copies;
    std::vector<bool> expected;
    for (int i = 0; i < 400; ++i) {
        expected.push_back(i % 7 != 0);
        copies.emplace_back(
            path(expected.back() ? "a" : "missing"), folder + QStringLiteral("/%1").arg(i));
    }
    copies.emplace_back(path("a"), folder);
    expected.push_back(true);
    EXPECT_EQ(FileUtils::copyWithBackup(copies), expected);
    const QString now = QFileInfo(path("real")).isDir() ? path("real") : path("real.bak");
    for (int i = 0; i < 400; ++i) {
        const QString copy = now + QStringLiteral("/%1").arg(i);
        EXPECT_EQ(QFileInfo::exists(copy), expected[std::size_t(i)]) << i;
    }
    EXPECT_EQ(FileUtils::loadBinaryFile(now + QStringLiteral("/199.bak")), "old");
    EXPECT_EQ(FileUtils::loadBinaryFile(folder), "new");
}

struct Batch {
    const char *name;
    std::vector<std::pair<const char *, const char *>> copies;
    friend void PrintTo(const Batch &batch, std::ostream *out) { *out << batch.name; }
};

class ManyCopiesWithBackup : public CopiesWithBackup, public testing::WithParamInterface<Batch> {
protected:
    /// Returns the path of \a name in \a folder, which is filled the first time.
    QString in(const char *folder, const char *name) const
    {
        if (!exists(folder)) {
            for (const char *file : {"a", "b", "x", "x.bak", "lost.bak", "folder/c"}) {
                write((folder + QByteArray("/") + file).constData(), file);
            }
#ifndef Q_OS_WIN
            makeLink(QByteArray(folder) + "/link", "x");
            makeLink(QByteArray(folder) + "/dangling", "new");
            makeLink(QByteArray(folder) + "/here", ".");
#endif
        }
        return path(folder) + u'/' + QLatin1String(name);
    }

    /// With a relative target.
    void makeLink(const QByteArray &name, const char *target) const
    {
        QFile link(QString::fromLatin1(target));
        ASSERT_TRUE(link.link(path(name)));
    }
};

TEST_P(ManyCopiesWithBackup, DoWhatTheyDoOneAfterAnother)
{
    std::vector<bool> expected;
    std::vector<std::pair<QString, QString>> copies;
    for (const auto &[source, destination] : GetParam().copies) {
        expected.push_back(FileUtils::copyWithBackup(in("one", source), in("one", destination)));
        copies.emplace_back(in("many", source), in("many", destination));
    }
    const std::size_t records = mLog.take().size();
    EXPECT_EQ(FileUtils::copyWithBackup(copies), expected);
    EXPECT_EQ(mLog.take().size(), records);
    EXPECT_EQ(tree("many"), tree("one"));
}
const Batch kBatches[] = {{"None", {}},
    {"Unrelated", {{"a", "1"}, {"b", "2"}, {"missing", "3"}, {"a", "missing/4"}, {"b", "x"}}},
    {"OneSourceIsAnEarlierDestination", {{"a", "new"}, {"new", "x"}, {"x", "y"}}},
    {"OneSourceIsAnEarlierBackup", {{"a", "x"}, {"x.bak", "y"}}},
    {"TwiceToOneDestination", {{"a", "x"}, {"b", "x"}, {"missing", "x"}}},
    {"OverABackup", {{"a", "x"}, {"b", "x.bak"}}},
    {"OverAFolder", {{"a", "folder"}, {"folder/c", "y"}, {"folder.bak/c", "z"}}},
#ifndef Q_OS_WIN
    {"ThroughLinks", {{"a", "new"}, {"dangling", "1"}, {"b", "here/x"}, {"link", "2"}}},
    {"OverLinks", {{"a", "here"}, {"here/b", "1"}, {"b", "link"}, {"link", "2"}}},
#endif
    {"BackToALostFile", {{"missing", "lost"}, {"lost", "y"}, {"a", "lost"}}}};
INSTANTIATE_TEST_SUITE_P(Batches, ManyCopiesWithBackup, testing::ValuesIn(kBatches),
    [](const auto &batch) { return std::string(batch.param.name); });

} // namespace
} // namespace Vyn::OvraBase
