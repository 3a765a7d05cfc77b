// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QUrl>

#include <thread>
#include <tuple>

namespace Vyn::Test {
namespace {

using FileChecks = FolderTest;

TEST_F(FileChecks, TellTheKindOfAPathAndOfALocalUrl)
{
    make({{"data.tar.gz", ""}, {"empty.d/", ""}});
    struct {
        QString path;
        bool exists, isFile, isFolder, isReadable, isWritable, both, isNonEmpty;
    } const rows[] = {
        {mFolder.path(), true, false, true, true, true, true, true},
        {path("data.tar.gz"), true, true, false, true, true, true, false},
        {path("empty.d"), true, false, true, true, true, true, false},
        {path("missing.txt"), false, false, false, false, true, false, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        const auto expectSame = [&](bool (*ofPath)(const QString &), bool (*ofUrl)(const QUrl &),
                                    bool expected) {
            EXPECT_EQ(ofPath(row.path), expected);
            EXPECT_EQ(ofUrl(QUrl::fromLocalFile(row.path)), expected);
            EXPECT_FALSE(ofUrl(QUrl(u"http://host"_s + row.path)) || ofUrl(QUrl(row.path)));
        };
        expectSame(FileUtils::exists, FileUtils::exists, row.exists);
        expectSame(FileUtils::isFile, FileUtils::isFile, row.isFile);
        expectSame(FileUtils::isFolder, FileUtils::isFolder, row.isFolder);
        expectSame(FileUtils::isReadable, FileUtils::isReadable, row.isReadable);
        expectSame(FileUtils::isWritable, FileUtils::isWritable, row.isWritable);
        expectSame(FileUtils::isReadableAndWritable, FileUtils::isReadableAndWritable, row.both);
        expectSame(FileUtils::isNonEmptyFolder, FileUtils::isNonEmptyFolder, row.isNonEmpty);
        EXPECT_EQ(FileUtils::checkFileCanBeOpened(row.path), row.isFile);
        EXPECT_EQ(FileUtils::getFileSuffix(row.path), row.isFile ? u"tar.gz"_s : QString());
    }
    make({{"empty.d/.hidden", ""}});
    FileUtils::hideFileOnWindows(path("empty.d/.hidden"));
    EXPECT_FALSE(FileUtils::isNonEmptyFolder(path("empty.d")));
}

TEST_F(FileChecks, WhatIsMissingIsAsWritableAsItsNearestAncestor)
{
    const bool isRootWritable = QFileInfo(QDir::rootPath()).isWritable();
    for (const QString &path : {u"nonexistent/deeper/file"_s, QString(5'000, u'a') + u"/file"_s}) {
        EXPECT_EQ(FileUtils::isWritable(QDir::rootPath() + path), isRootWritable);
    }
    EXPECT_TRUE(FileUtils::isWritable(u"missing/below/the/current/folder"_s));
#ifdef Q_OS_WIN
    for (const QString &missing : {u"Q:/no/such/drive"_s, u"//nohost/share/x"_s,
             u"//nohost/share/x/y"_s, u"//nohost/share"_s, u"\\\\nohost\\share\\x"_s}) {
        EXPECT_FALSE(FileUtils::isWritable(missing)) << missing.toStdString();
    }
#else
    EXPECT_FALSE(FileUtils::isWritable(u"/proc/sys/missing/file"_s));
#endif
}

#ifndef Q_OS_WIN // there, a file does not vanish while it is open
TEST_F(FileChecks, DoNotCreateAFileThatVanishes)
{
    const std::jthread checks([file = path("file")](const std::stop_token &stop) {
        while (!stop.stop_requested()) {
            FileUtils::checkFileCanBeOpened(file);
        }
    });
    bool isOurs = true;
    for (QDeadlineTimer end(1'000); !end.hasExpired() && isOurs;) {
        isOurs = QFile(path("file")).open(QFile::WriteOnly | QFile::NewOnly);
        QFile::remove(path("file"));
    }
    EXPECT_TRUE(isOurs);
}
#endif

TEST_F(FileChecks, KnowRelativeUrls)
{
    for (const auto &[url, isRelative] : {std::pair{"", true}, {"a/b", true}, {"/a", true},
             {"file:a", true}, {"file:///a", false}, {"http:a", false}, {"qrc:/a", false}}) {
        EXPECT_EQ(FileUtils::isRelativeFilePath(QUrl(QLatin1String(url))), isRelative) << url;
    }
}

TEST_F(FileChecks, CompareModificationTimes)
{
    make({{"older", ""}, {"newer", ""}});
    QFile file(path("newer"));
    ASSERT_TRUE(file.open(QFile::Append));
    ASSERT_TRUE(file.setFileTime(
        QDateTime::fromSecsSinceEpoch(4'000'000'000), QFile::FileModificationTime));
    for (const auto &[one, other, expected] :
        {std::tuple{"newer", "older", true}, {"older", "newer", false}, {"newer", "newer", false},
            {"newer", "missing", false}, {"missing", "older", false}}) {
        EXPECT_EQ(FileUtils::isFileMoreRecentThan(path(one), path(other)), expected)
            << one << other;
    }
}

} // namespace
} // namespace Vyn::Test
