// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Cache.h"
#include "support/FolderTest.h"

namespace Vyn::Test {
namespace {

using CacheTest = FolderTest;

TEST_F(CacheTest, RemovesNothingOutsideItsFolder)
{
    const std::string linked =
        "beside/x=x, disk/deep/.hidden, disk/.hidden, disk/link->beside, cache->disk";
    const std::string emptied = "beside/, beside/x=x, cache->disk, disk/";
    const Rows<void (Cache::*)(), const char *, std::string, std::string> rows{
        {"clear removes files that are not hidden", &Cache::clear, "cache",
            "beside, cache/.hidden, cache/a", "beside, cache/, cache/.hidden"},
        {"clear removes a folder with a sub-folder", &Cache::clear, "cache",
            "cache/.hidden, cache/a, cache/s/", ""},
        {"purge removes a folder", &Cache::purge, "cache", "cache/deep/.hidden", ""},
        {"purge keeps a file", &Cache::purge, "file", "file", "file"},
        {"clear does nothing without a path", &Cache::clear, "", "a, s/, s/a", "a, s/, s/a"},
        {"purge does nothing without a path", &Cache::purge, "", "a, s/, s/a", "a, s/, s/a"},
#ifndef Q_OS_WIN
        {"clear of a link keeps the link", &Cache::clear, "cache", linked, emptied},
        {"purge of a link keeps the link", &Cache::purge, "cache", linked, emptied},
        {"purge of a link with a slash keeps the link", &Cache::purge, "cache/", linked, emptied},
#endif
        {"reset makes a new folder", &Cache::reset, "cache", "cache/a", "cache/"},
        {"reset makes its parents", &Cache::reset, "new/deep/", "", "new/, new/deep/"},
    };
    forEach(rows, [&](auto call, auto folder, auto before, auto after) {
        make(before);
        hideFileOnWindows(path("cache/.hidden"));
        const auto current = inFolder(mFolder.path());
        Cache cache(QString::fromLatin1(folder));
        (cache.*call)();
        EXPECT_EQ(tree(), after);
    });
}

TEST_F(CacheTest, WarnsOfAPathThatCannotBeAFolder)
{
    const std::string file = path("file%2").toStdString();
    const Rows<QString, std::string, std::string> rows{
        {"no path", {}, "68", "The cache folder name is empty. Cache will be disabled."},
        {"path of a file", path("file%2"), "84",
            "Cannot create cache folder because a file with the same path already exists."},
        {"path below a file", path("file%2/cache%1"), "78",
            "Could not create cache folder (<cache%1> in <" + file + "> for <" + file +
                "/cache%1>). Cache will be disabled."},
    };
    forEach(rows, [&](const QString &folder, const auto &line, const auto &message) {
        make("file%2=x, cache/");
        Cache cache(path("cache"));
        cache.resetCacheFolder(folder);
        EXPECT_EQ(tree(), "file%2=x");
        EXPECT_THAT(
            mLog.take(), ElementsAre(Record{1,
                             "Support: GenericCacheController.cpp:" + line +
                                 " Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()",
                             message}));
    });
}

} // namespace
} // namespace Vyn::Test
