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
    make("data.tar.gz, empty.d/");
    const struct {
        const char *name;
        bool (*ofPath)(const QString &);
        bool (*ofUrl)(const QUrl &);
        std::vector<bool> answers; // in the order of the paths
    } rows[] = {{"exists", exists, exists, {true, true, true, false}},
        {"isFile", isFile, isFile, {false, true, false, false}},
        {"isFolder", isFolder, isFolder, {true, false, true, false}},
        {"isReadable", isReadable, isReadable, {true, true, true, false}},
        {"isWritable", isWritable, isWritable, {true, true, true, true}},
        {"both", isReadableAndWritable, isReadableAndWritable, {true, true, true, false}},
        {"isNonEmptyFolder", isNonEmptyFolder, isNonEmptyFolder, {true, false, false, false}}};
    const QString paths[] = {path(""), path("data.tar.gz"), path("empty.d"), path("missing.x")};
    for (const auto &[name, ofPath, ofUrl, answers] : rows) {
        for (std::size_t i = 0; i < answers.size(); ++i) {
            SCOPED_TRACE(name + (": " + paths[i].toStdString()));
            EXPECT_EQ(ofPath(paths[i]), answers[i]);
            EXPECT_EQ(ofUrl(QUrl::fromLocalFile(paths[i])), answers[i]);
            EXPECT_FALSE(ofUrl(QUrl(u"http://host"_s + paths[i])) || ofUrl(QUrl(paths[i])));
        }
    }
    for (const QString &path : paths) {
        EXPECT_EQ(checkFileCanBeOpened(path), path == paths[1]);
        EXPECT_EQ(getFileSuffix(path), path == paths[1] ? u"tar.gz"_s : QString());
    }
    make("empty.d/.hidden");
    hideFileOnWindows(path("empty.d/.hidden"));
    EXPECT_FALSE(isNonEmptyFolder(path("empty.d")));
}

TEST_F(FileChecks, WhatIsMissingIsAsWritableAsItsNearestAncestor)
{
    const bool isRootWritable = QFileInfo(QDir::rootPath()).isWritable();
    EXPECT_EQ(isWritable(QDir::rootPath() + QString(5'000, u'a') + u"/file"_s), isRootWritable);
    EXPECT_TRUE(isWritable(u"missing/below/the/current/folder"_s));
#ifdef Q_OS_WIN
    for (const QString &missing :
        {u"Q:/no/such/drive"_s, u"//nohost/share"_s, u"\\\\nohost\\share\\x"_s}) {
        EXPECT_FALSE(isWritable(missing)) << missing.toStdString();
    }
#else
    EXPECT_FALSE(isWritable(u"/proc/sys/missing/file"_s));
#endif
}

#ifndef Q_OS_WIN // there, a file does not vanish while it is open
TEST_F(FileChecks, DoNotCreateAFileThatVanishes)
{
    const std::jthread checks([file = path("file")](const std::stop_token &stop) {
        while (!stop.stop_requested()) {
            checkFileCanBeOpened(file);
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
        EXPECT_EQ(isRelativeFilePath(QUrl(QLatin1String(url))), isRelative) << url;
    }
}

TEST_F(FileChecks, CompareModificationTimes)
{
    make("older, newer");
    QFile file(path("newer"));
    ASSERT_TRUE(file.open(QFile::Append));
    ASSERT_TRUE(file.setFileTime(
        QDateTime::fromSecsSinceEpoch(4'000'000'000), QFile::FileModificationTime));
    for (const auto &[one, other, expected] :
        {std::tuple{"newer", "older", true}, {"older", "newer", false}, {"newer", "newer", false},
            {"newer", "missing", false}, {"missing", "older", false}}) {
        EXPECT_EQ(isFileMoreRecentThan(path(one), path(other)), expected) << one << other;
    }
}

} // namespace
} // namespace Vyn::Test
