// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Cache.h"
#include "support/FolderTest.h"
#include "support/Guards.h"

namespace Vyn::Test {
namespace {

using CacheTest = FolderTest;

void clear(Cache &cache)
{
    cache.clear();
}

void purge(Cache &cache)
{
    cache.purge();
}

void reset(Cache &cache)
{
    cache.resetCacheFolder(cache.cacheFolderPath());
}

TEST_F(CacheTest, RemovesWhatIsInItsFolderAndNothingElse)
{
    const struct {
        const char *name;
        void (*call)(Cache &);
        const char *path;
        Tree before, after;
    } rows[] = {
        {"clear removes files that are not hidden", clear, "cache",
            {{"cache/a", ""}, {"cache/.hidden", ""}, {"beside", ""}},
            {{"beside", ""}, {"cache/", ""}, {"cache/.hidden", ""}}},
        {"clear removes a folder with a sub-folder", clear, "cache",
            {{"cache/a", ""}, {"cache/.hidden", ""}, {"cache/s/", ""}}, {}},
        {"purge removes a folder", purge, "cache", {{"cache/deep/.hidden", ""}}, {}},
        {"purge keeps a file", purge, "file", {{"file", ""}}, {{"file", ""}}},
        {"purge ignores a missing folder", purge, "missing", {{"file", ""}}, {{"file", ""}}},
        {"reset makes a new folder", reset, "cache", {{"cache/a", ""}}, {{"cache/", ""}}},
        {"reset makes its parents", reset, "new/deep/", {}, {{"new/", ""}, {"new/deep/", ""}}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        startAnew();
        make(row.before);
        hideFileOnWindows(path("cache/.hidden"));
        Cache cache(path(row.path));
        row.call(cache);
        EXPECT_EQ(tree(), row.after);
        EXPECT_THAT(mLog.records(), IsEmpty());
    }
}

TEST_F(CacheTest, TouchesNothingWithoutAPath)
{
    make({{"s/a", ""}, {"a", ""}});
    const Tree before = tree();
    const auto current = inFolder(mFolder.path());
    Cache cache({});
    cache.clear();
    cache.purge();
    EXPECT_EQ(tree(), before);
}

#ifndef Q_OS_WIN
TEST_F(CacheTest, EmptiesTheFolderBehindALinkAndKeepsTheLink)
{
    const struct {
        const char *name, *path;
        void (*call)(Cache &);
    } rows[] = {{"purge", "cache", purge}, {"purge with a separator", "cache/", purge},
        {"clear", "cache", clear}, {"reset", "cache", reset}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        startAnew();
        make({{"beside/x", "x"}, {"disk/folder/deep/.hidden", ""}, {"disk/folder/.hidden", ""}});
        link("disk/folder", "cache");
        link("beside", "disk/folder/link");
        Cache cache(path(row.path));
        row.call(cache);
        EXPECT_EQ(tree(), (Tree{{"beside/", ""}, {"beside/x", "x"}, {"cache/", ""}, {"disk/", ""},
                              {"disk/folder/", ""}}));
        EXPECT_TRUE(QFileInfo(path("cache")).isSymLink());
        EXPECT_THAT(mLog.records(), IsEmpty());
    }
}
#endif

TEST_F(CacheTest, WarnsOfAPathThatCannotBeAFolder)
{
    const std::string file = path("file%2").toStdString();
    const struct {
        QString path;
        std::string line, message;
    } rows[] = {
        {{}, "68", "The cache folder name is empty. Cache will be disabled."},
        {path("file%2"), "84",
            "Cannot create cache folder because a file with the same path already exists."},
        {path("file%2/cache%1"), "78",
            "Could not create cache folder (<cache%1> in <" + file + "> for <" + file +
                "/cache%1>). Cache will be disabled."},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.message);
        startAnew();
        make({{"file%2", "x"}, {"cache/", ""}});
        Cache cache(path("cache"));
        cache.resetCacheFolder(row.path);
        EXPECT_EQ(cache.cacheFolderPath(), row.path);
        EXPECT_EQ(tree(), (Tree{{"file%2", "x"}}));
        EXPECT_THAT(
            mLog.take(), ElementsAre(Record{1,
                             "Support: GenericCacheController.cpp:" + row.line +
                                 " Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()",
                             row.message}));
    }
}

} // namespace
} // namespace Vyn::Test
