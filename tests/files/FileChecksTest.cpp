// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <QDeadlineTimer>
#include <QUrl>

#include <thread>

namespace Vyn::Test {
namespace {

using FileChecks = FolderTest;

TEST_F(FileChecks, TellTheKindOfAPathAndOfALocalUrl)
{
    make("a.tar.gz, empty.d/");
    EXPECT_TRUE(checkFileCanBeOpened(path("a.tar.gz")) && !checkFileCanBeOpened(path("empty.d")));
    const Rows<bool (*)(const QString &), bool (*)(const QUrl &), QString> rows{
        {"exists", exists, exists, u"folder a.tar.gz empty.d"_s},
        {"isFile", isFile, isFile, u"a.tar.gz"_s},
        {"isFolder", isFolder, isFolder, u"folder empty.d"_s},
        {"isReadable", isReadable, isReadable, u"folder a.tar.gz empty.d"_s},
        {"isWritable", isWritable, isWritable, u"folder a.tar.gz empty.d missing.x"_s},
        {"isReadableAndWritable", isReadableAndWritable, isReadableAndWritable,
            u"folder a.tar.gz empty.d"_s},
        {"isNonEmptyFolder", isNonEmptyFolder, isNonEmptyFolder, u"folder"_s}};
    forEach(rows, [&](auto ofPath, auto ofUrl, const QString &expected) {
        make("folder/file, a.tar.gz, empty.d/.hidden");
        hideFileOnWindows(path("empty.d/.hidden"));
        for (const char *name : {"folder", "a.tar.gz", "empty.d", "missing.x"}) {
            EXPECT_EQ(ofPath(path(name)), expected.contains(QLatin1String(name))) << name;
            EXPECT_EQ(ofUrl(QUrl::fromLocalFile(path(name))), ofPath(path(name))) << name;
            EXPECT_FALSE(ofUrl(QUrl(u"http://host"_s + path(name))) || ofUrl(QUrl(path(name))));
        }
    });
}

TEST_F(FileChecks, AnswerForMissingAndInvalidPaths)
{
    make("file");
    std::vector<QString> paths{path("a") + u"\0b"_s, path("x") + QString(100'000, u'a'),
        path("x") + u"a/"_s.repeated(50'000), path("x") + QChar(0xD800),
        path("x") + QChar(0xDC00) + u"/x"_s, path("file/below"), path("missing///"), {}};
#ifndef Q_OS_WIN
    make("dangling->nowhere, circle->circle");
    paths.insert(paths.end(), {path("dangling"), path("circle/x"), path("...")});
#endif
    const std::initializer_list<bool (*)(const QString &)> kinds{exists, isFile, isFolder,
        isNonEmptyFolder, isReadable, isReadableAndWritable, checkFileCanBeOpened, isImageExt};
    for (const QString &missing : paths) {
        SCOPED_TRACE(missing.left(80).toStdString());
        for (const auto is : kinds) {
            EXPECT_FALSE(is(missing));
        }
        EXPECT_EQ(isWritable(missing), !missing.isEmpty());
        EXPECT_FALSE(isFileMoreRecentThan(missing, path("file")));
        EXPECT_FALSE(isFileMoreRecentThan(path("file"), missing));
        EXPECT_EQ(getFileSuffix(missing), QString());
        EXPECT_TRUE(isValidFileName(ensureValidFileName(missing)));
        EXPECT_TRUE(missing.startsWith(getFilePathWithoutExtension(missing)));
        EXPECT_FALSE(copyRecursively(missing, path("copy")));
        EXPECT_TRUE(folderParseFiles(missing, {}, Recursion::Recursive).empty());
        removeDirRecursiveIfItExists(missing);
        EXPECT_THROW(loadBinaryFile(missing), Exception::InvalidArgumentException);
    }
    EXPECT_EQ(mLog.take().size(), paths.size());
    EXPECT_TRUE(exists(path("file")));
}

TEST_F(FileChecks, CallAMissingPathAsWritableAsItsNearestAncestor)
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

#ifdef Q_OS_LINUX
TEST_F(FileChecks, RespectPermissions)
{
    const auto user = asOrdinaryUser({mFolder.path()});
    make("readable, writable, r/w/");
    fs::permissions(native("readable"), fs::perms::owner_read);
    fs::permissions(native("writable"), fs::perms::owner_write);
    fs::permissions(native("r"), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_TRUE(isReadable(path("readable")) && isWritable(path("writable")));
    EXPECT_TRUE(isWritable(path("r/w/missing/..")));
    for (const char *name : {"readable", "r", "r/missing"}) {
        EXPECT_FALSE(isWritable(path(name)) || isReadableAndWritable(path(name))) << name;
    }
    EXPECT_FALSE(isReadable(path("writable")) || isReadableAndWritable(path("writable")));
}
#endif

#ifndef Q_OS_WIN // there, an open file cannot be removed
TEST_F(FileChecks, DoNotCreateAFileThatIsRemovedMeanwhile)
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
    fs::last_write_time(native("newer"), fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_TRUE(isFileMoreRecentThan(path("newer"), path("older")));
    EXPECT_FALSE(isFileMoreRecentThan(path("older"), path("newer")));
    EXPECT_FALSE(isFileMoreRecentThan(path("newer"), path("newer")));
}

} // namespace
} // namespace Vyn::Test
