// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/files/GenericCacheController.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace Vyn::OvraBase {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

Record warning(int line, const std::string &message)
{
    return {1,
        "Support: GenericCacheController.cpp:" + std::to_string(line) +
            " Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()",
        message};
}

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

class CacheTest : public testing::Test {
protected:
    QString path(const char *name) const { return mFolder.filePath(QString::fromUtf8(name)); }
    void makeFile(const char *name) const
    {
        ASSERT_TRUE(FileUtils::saveTextToFile(QStringLiteral("text"), path(name)));
    }
    void makeFolder(const char *name) const { ASSERT_TRUE(FileUtils::makeFolder(path(name))); }
    bool exists(const char *name) const { return FileUtils::exists(path(name)); }

    QTemporaryDir mFolder;
    RecordedLog mLog;
};

TEST_F(CacheTest, ClearOfFilesKeepsTheFolderAndWhatIsHidden)
{
    makeFolder("cache");
    makeFile("cache/a");
    makeFile("cache/b");
    makeFile("cache/.hidden");
    FileUtils::hideFileOnWindows(path("cache/.hidden"));
    Cache(path("cache")).clear();
    EXPECT_FALSE(exists("cache/a") || exists("cache/b"));
    EXPECT_TRUE(exists("cache/.hidden"));
}

TEST_F(CacheTest, ClearWithASubFolderTakesTheWholeFolder)
{
    makeFolder("cache/s");
    makeFile("cache/a");
    makeFile("cache/.hidden");
    makeFile("beside");
    Cache(path("cache")).clear();
    EXPECT_FALSE(exists("cache"));
    EXPECT_TRUE(exists("beside"));
}

TEST_F(CacheTest, ClearAndPurgeWithoutAPathTouchNothing)
{
    makeFile("a");
    makeFolder("s");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(mFolder.path()));
    Cache({}).clear();
    Cache({}).purge();
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_TRUE(exists("a") && exists("s"));
}

TEST_F(CacheTest, PurgeTakesAFolderButNoFile)
{
    makeFolder("cache/deep/deeper");
    makeFile("cache/deep/.hidden");
    Cache(path("cache")).purge();
    EXPECT_FALSE(exists("cache"));

    makeFile("file");
    Cache(path("file")).purge();
    EXPECT_TRUE(exists("file"));
    Cache(path("missing")).purge();
    EXPECT_THAT(mLog.records(), IsEmpty());
}

#ifndef Q_OS_WIN
TEST_F(CacheTest, PurgeOfALinkLeavesItsTarget)
{
    makeFolder("target");
    makeFile("target/a");
    for (const char *spelling : {"cache", "cache/", "cache/."}) {
        ASSERT_TRUE(QFile::link(path("target"), path("cache")));
        Cache(path(spelling)).purge();
        EXPECT_TRUE(exists("target/a")) << spelling;
        EXPECT_FALSE(exists("cache")) << spelling;
    }
}
#endif

TEST_F(CacheTest, ResetToTheSamePathGivesANewFolder)
{
    makeFolder("cache");
    makeFile("cache/a");
    Cache cache(path("cache"));
    cache.resetCacheFolder(path("cache"));
    EXPECT_TRUE(exists("cache"));
    EXPECT_FALSE(exists("cache/a"));

    cache.resetCacheFolder(path("new/deep/"));
    EXPECT_TRUE(exists("new/deep"));
    EXPECT_FALSE(exists("cache"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(CacheTest, ResetToNoPathWarns)
{
    makeFolder("cache");
    Cache cache(path("cache"));
    cache.resetCacheFolder({});
    EXPECT_FALSE(exists("cache"));
    EXPECT_TRUE(cache.cacheFolderPath().isEmpty());
    EXPECT_THAT(mLog.records(),
        ElementsAre(warning(68, "The cache folder name is empty. Cache will be disabled.")));
}

TEST_F(CacheTest, ResetToAFileWarnsAndLeavesIt)
{
    makeFile("file");
    Cache({}).resetCacheFolder(path("file"));
    EXPECT_TRUE(FileUtils::isFile(path("file")));
    EXPECT_THAT(mLog.records(),
        ElementsAre(warning(
            84, "Cannot create cache folder because a file with the same path already exists.")));
}

TEST_F(CacheTest, ResetBelowAFileWarns)
{
    makeFile("file%2");
    Cache({}).resetCacheFolder(path("file%2/cache%1"));
    EXPECT_THAT(mLog.records(),
        ElementsAre(warning(78,
            "Could not create cache folder (<cache%1> in <" + path("file%2").toStdString() +
                "> for <" + path("file%2/cache%1").toStdString() + ">). Cache will be disabled.")));
}

} // namespace
} // namespace Vyn::OvraBase
