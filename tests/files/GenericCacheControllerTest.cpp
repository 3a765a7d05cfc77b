// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Cache.h"
#include "support/FolderTest.h"
#include "support/Guards.h"

namespace Vyn::Test {
namespace {

using CacheTest = FolderTest;

TEST_F(CacheTest, RemovesWhatIsInItsFolderAndNothingElse)
{
    const struct {
        const char *name;
        void (Cache::*call)();
        const char *path, *before, *after;
    } rows[] = {
        {"clear removes files that are not hidden", &Cache::clear, "cache",
            "beside, cache/.hidden, cache/a", "beside, cache/, cache/.hidden"},
        {"clear removes a folder with a sub-folder", &Cache::clear, "cache",
            "cache/.hidden, cache/a, cache/s/", ""},
        {"purge removes a folder", &Cache::purge, "cache", "cache/deep/.hidden", ""},
        {"purge keeps a file", &Cache::purge, "file", "file", "file"},
        {"reset makes a new folder", &Cache::reset, "cache", "cache/a", "cache/"},
        {"reset makes its parents", &Cache::reset, "new/deep/", "", "new/, new/deep/"},
    };
    forEach(rows, [&](const auto &row) {
        make(row.before);
        hideFileOnWindows(path("cache/.hidden"));
        Cache cache(path(row.path));
        (cache.*row.call)();
        EXPECT_EQ(tree(), row.after);
        EXPECT_THAT(mLog.records(), IsEmpty());
    });
}

TEST_F(CacheTest, TouchesNothingWithoutAPath)
{
    make("a, s/, s/a");
    const auto current = inFolder(mFolder.path());
    Cache cache({});
    cache.clear();
    cache.purge();
    EXPECT_EQ(tree(), "a, s/, s/a");
}

#ifndef Q_OS_WIN
TEST_F(CacheTest, EmptiesTheFolderBehindALinkAndKeepsTheLink)
{
    const struct {
        const char *name, *path;
        void (Cache::*call)();
    } rows[] = {{"purge", "cache", &Cache::purge},
        {"purge with a separator", "cache/", &Cache::purge}, {"clear", "cache", &Cache::clear}};
    forEach(rows, [&](const auto &row) {
        make("beside/x=x, disk/folder/deep/.hidden, disk/folder/.hidden");
        link("disk/folder", "cache");
        link("beside", "disk/folder/link");
        Cache cache(path(row.path));
        (cache.*row.call)();
        EXPECT_EQ(tree(), "beside/, beside/x=x, cache/, disk/, disk/folder/");
        EXPECT_TRUE(QFileInfo(path("cache")).isSymLink());
        EXPECT_THAT(mLog.records(), IsEmpty());
    });
}
#endif

TEST_F(CacheTest, WarnsOfAPathThatCannotBeAFolder)
{
    const std::string file = path("file%2").toStdString();
    const struct {
        const char *name;
        QString path;
        std::string line, message;
    } rows[] = {
        {"no path", {}, "68", "The cache folder name is empty. Cache will be disabled."},
        {"path of a file", path("file%2"), "84",
            "Cannot create cache folder because a file with the same path already exists."},
        {"path below a file", path("file%2/cache%1"), "78",
            "Could not create cache folder (<cache%1> in <" + file + "> for <" + file +
                "/cache%1>). Cache will be disabled."},
    };
    forEach(rows, [&](const auto &row) {
        make("file%2=x, cache/");
        Cache cache(path("cache"));
        cache.resetCacheFolder(row.path);
        EXPECT_EQ(cache.cacheFolderPath(), row.path);
        EXPECT_EQ(tree(), "file%2=x");
        EXPECT_THAT(
            mLog.take(), ElementsAre(Record{1,
                             "Support: GenericCacheController.cpp:" + row.line +
                                 " Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()",
                             row.message}));
    });
}

} // namespace
} // namespace Vyn::Test
