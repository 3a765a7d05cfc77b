// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/files/GenericCacheController.h>

namespace Vyn::OvraBase {
namespace {

using Test::Record;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class Cache final : public GenericCacheController {
public:
    explicit Cache(QString path)
        : mPath(std::move(path))
    {
    }
    QString cacheFolderPath() const override { return mPath; }
    void setCacheFolderPath(const QString &path) override { mPath = path; }

private:
    QString mPath;
};

using CacheTest = Test::FolderTest;

TEST_F(CacheTest, ClearTakesTheFolderOnlyWithASubFolder)
{
    for (const char *name : {"cache/a", "cache/.hidden", "beside"}) {
        write(name);
    }
    FileUtils::hideFileOnWindows(path("cache/.hidden"));
    Cache(path("cache")).clear();
    EXPECT_THAT(
        tree("."), ElementsAre(Pair("beside", ""), Pair("cache/", ""), Pair("cache/.hidden", "")));

    write("cache/a");
    makeFolder("cache/s");
    Cache(path("cache")).clear();
    EXPECT_THAT(tree("."), ElementsAre(Pair("beside", "")));
}

TEST_F(CacheTest, ClearAndPurgeWithoutAPathTouchNothing)
{
    write("s/a");
    write("a");
    const auto all = tree(".");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(mFolder.path()));
    Cache({}).clear();
    Cache({}).purge();
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_EQ(tree("."), all);
}

TEST_F(CacheTest, PurgeTakesAFolderButNoFile)
{
    write("cache/deep/.hidden");
    write("file");
    for (const char *name : {"cache", "file", "missing"}) {
        Cache(path(name)).purge();
    }
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "")));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(CacheTest, ResetGivesANewFolderInsteadOfTheOld)
{
    write("cache/a");
    Cache cache(path("cache"));
    cache.resetCacheFolder(path("cache"));
    EXPECT_THAT(tree("."), ElementsAre(Pair("cache/", "")));
    cache.resetCacheFolder(path("new/deep/"));
    EXPECT_THAT(tree("."), ElementsAre(Pair("new/", ""), Pair("new/deep/", "")));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

#ifndef Q_OS_WIN
TEST_F(CacheTest, EmptiesTheFolderBehindALinkAndKeepsTheLink)
{
    const struct {
        const char *name;
        const char *path;
        void (*call)(Cache &);
    } rows[] = {
        {"purge", "cache", [](Cache &cache) { cache.purge(); }},
        {"purge with a separator", "cache/", [](Cache &cache) { cache.purge(); }},
        {"clear", "cache", [](Cache &cache) { cache.clear(); }},
        {"reset", "cache", [](Cache &cache) { cache.resetCacheFolder(cache.cacheFolderPath()); }},
    };
    link("disk/folder", "cache");
    write("beside/x", "x");
    for (const auto &[name, cachePath, call] : rows) {
        SCOPED_TRACE(name);
        write("disk/folder/deep/.hidden");
        write("disk/folder/.hidden");
        link("beside", "disk/folder/link");
        Cache cache(path(cachePath));
        call(cache);
        EXPECT_THAT(
            tree("."), ElementsAre(Pair("beside/", ""), Pair("beside/x", "x"), Pair("cache/", ""),
                           Pair("disk/", ""), Pair("disk/folder/", "")));
        EXPECT_TRUE(QFileInfo(path("cache")).isSymLink());
    }
    EXPECT_THAT(mLog.records(), IsEmpty());
}
#endif

TEST_F(CacheTest, ResetWarnsOfAPathThatCannotBeAFolder)
{
    write("file%2", "x");
    const struct {
        QString path;
        int line;
        std::string message;
    } rows[] = {
        {{}, 68, "The cache folder name is empty. Cache will be disabled."},
        {path("file%2"), 84,
            "Cannot create cache folder because a file with the same path already exists."},
        {path("file%2/cache%1"), 78,
            "Could not create cache folder (<cache%1> in <" + path("file%2").toStdString() +
                "> for <" + path("file%2/cache%1").toStdString() + ">). Cache will be disabled."},
    };
    for (const auto &[newPath, line, message] : rows) {
        makeFolder("cache");
        Cache cache(path("cache"));
        cache.resetCacheFolder(newPath);
        EXPECT_EQ(cache.cacheFolderPath(), newPath);
        EXPECT_THAT(tree("."), ElementsAre(Pair("file%2", "x")));
        EXPECT_THAT(
            mLog.take(), ElementsAre(Record{1,
                             "Support: GenericCacheController.cpp:" + std::to_string(line) +
                                 " Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()",
                             message}));
    }
}

} // namespace
} // namespace Vyn::OvraBase
