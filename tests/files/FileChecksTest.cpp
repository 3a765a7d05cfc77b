// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QUrl>

#include <atomic>
#include <thread>
#include <tuple>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

using FileChecks = Test::FolderTest;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST_F(FileChecks, TellsTheKindOfAPathAndOfALocalUrl)
{
    write("data.tar.gz");
    makeFolder("data.d");
    struct {
        QString path;
        bool exists, isFile, isFolder, isReadable, isWritable, both, isNonEmpty;
    } const rows[] = {
        {mFolder.path(), true, false, true, true, true, true, true},
        {path("data.tar.gz"), true, true, false, true, true, true, false},
        {path("data.d"), true, false, true, true, true, true, false},
        {path("missing.txt"), false, false, false, false, true, false, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        const auto expectSame = [](bool (*ofPath)(const QString &), bool (*ofUrl)(const QUrl &),
                                    const QString &path, bool expected) {
            EXPECT_EQ(ofPath(path), expected);
            EXPECT_EQ(ofUrl(QUrl::fromLocalFile(path)), expected);
            EXPECT_FALSE(ofUrl(QUrl(u"http://host"_s + path)));
            EXPECT_FALSE(ofUrl(QUrl(path))); // no scheme
        };
        using F = FileUtils;
        expectSame(F::exists, F::exists, row.path, row.exists);
        expectSame(F::isFile, F::isFile, row.path, row.isFile);
        expectSame(F::isFolder, F::isFolder, row.path, row.isFolder);
        expectSame(F::isReadable, F::isReadable, row.path, row.isReadable);
        expectSame(F::isWritable, F::isWritable, row.path, row.isWritable);
        expectSame(F::isReadableAndWritable, F::isReadableAndWritable, row.path, row.both);
        expectSame(F::isNonEmptyFolder, F::isNonEmptyFolder, row.path, row.isNonEmpty);
        EXPECT_EQ(F::checkFileCanBeOpened(row.path), row.isFile);
        EXPECT_EQ(F::getFileSuffix(row.path), row.isFile ? u"tar.gz"_s : QString());
    }
    write("data.d/.hidden");
    FileUtils::hideFileOnWindows(path("data.d/.hidden"));
    EXPECT_FALSE(FileUtils::isNonEmptyFolder(path("data.d")));
}

TEST_F(FileChecks, WhatIsMissingIsAsWritableAsItsNearestAncestor)
{
    const QFileInfo root(QDir::rootPath());
    for (const QString &path : {u"nonexistent/deeper/file"_s, QString(5'000, u'a') + u"/file"_s}) {
        EXPECT_EQ(FileUtils::isWritable(QDir::rootPath() + path), root.isWritable());
    }
    EXPECT_TRUE(FileUtils::isWritable(u"missing/below/the/current/folder"_s));
    EXPECT_FALSE(FileUtils::isWritable(QString()));
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
TEST_F(FileChecks, CheckDoesNotCreateAFileThatVanishes)
{
    const QString file = path("file");
    std::atomic<bool> isOver = false;
    std::thread checks([&] {
        while (!isOver) {
            FileUtils::checkFileCanBeOpened(file);
        }
    });
    int createdByOthers = 0;
    for (QDeadlineTimer end(1'000); !end.hasExpired() && createdByOthers == 0;) {
        createdByOthers += QFile(file).open(QFile::WriteOnly | QFile::NewOnly) ? 0 : 1;
        QFile::remove(file);
    }
    isOver = true;
    checks.join();
    EXPECT_EQ(createdByOthers, 0);
}
#endif

TEST_F(FileChecks, KnowsRelativeUrls)
{
    for (const auto &[url, isRelative] : {std::pair{"", true}, {"a/b", true}, {"/a", true},
             {"file:a", true}, {"file:///a", false}, {"http:a", false}, {"qrc:/a", false}}) {
        EXPECT_EQ(FileUtils::isRelativeFilePath(QUrl(text(url))), isRelative) << url;
    }
}

TEST_F(FileChecks, ComparesModificationTimes)
{
    write("older");
    write("newer");
    QFile file(path("newer"));
    ASSERT_TRUE(
        file.open(QFile::Append) && file.setFileTime(QDateTime::fromSecsSinceEpoch(4'000'000'000),
                                        QFile::FileModificationTime));
    for (const auto &[one, other, expected] :
        {std::tuple{"newer", "older", true}, {"older", "newer", false}, {"newer", "newer", false},
            {"newer", "missing", false}, {"missing", "older", false}}) {
        EXPECT_EQ(FileUtils::isFileMoreRecentThan(path(one), path(other)), expected)
            << one << ' ' << other;
    }
}

} // namespace
} // namespace Vyn::OvraBase
