// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/OrdinaryUser.h"
#include "support/Threads.h"

#include <ovrabase/errors/Exception.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QResource>
#include <QStandardPaths>

#ifdef Q_OS_LINUX
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using Test::onThreads;
#ifdef Q_OS_LINUX
using Test::OrdinaryUser;
#endif
using testing::ElementsAre;
using testing::Pair;

/// What stood in the cache before there was an application object.
const QString kEarlyApplicationDir = FileUtils::safeApplicationDirPath();

/// The folder of a test is also the system's temporary folder meanwhile.
class ApplicationFolders : public Test::FolderTest {
protected:
    void SetUp() override
    {
        for (const char *variable : {"TMPDIR", "TMP"}) {
            mBefore[variable] = qgetenv(variable);
            qputenv(variable, path("tmp").toLocal8Bit());
        }
        makeFolder("tmp");
        QCoreApplication::setApplicationName(u"an app"_s);
    }

    void TearDown() override
    {
        for (const auto &[variable, value] : mBefore) {
            qputenv(variable, value);
        }
    }

private:
    std::map<const char *, QByteArray> mBefore;
};

TEST_F(ApplicationFolders, TemporaryFoldersGoWithTheirObjectOrWhenCleared)
{
    QString gone;
    {
        const QTemporaryDir folder = FileUtils::createTemporaryDir(u"nameXXXXXX"_s);
        gone = folder.path();
        EXPECT_TRUE(FileUtils::isFolder(gone));
        EXPECT_TRUE(gone.startsWith(path("tmp/an app/name"))) << gone.toStdString();
        EXPECT_NE(FileUtils::createTemporaryDir().path(), FileUtils::createTemporaryDir().path());
    }
    EXPECT_FALSE(FileUtils::exists(gone));

    const QString made = FileUtils::createApplicationTemporaryDir(u"name"_s);
    EXPECT_TRUE(FileUtils::isFolder(made));
    EXPECT_EQ(FileUtils::createApplicationTemporaryDir(QFileInfo(made).fileName()), made);
    EXPECT_TRUE(FileUtils::isFolder(FileUtils::createApplicationTemporaryDir()));
    write("tmp/beside", "x");

    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("tmp")));
    FileUtils::clearApplicationTemporaryDir();
    FileUtils::clearApplicationTemporaryDir(); // where there is none, nothing else goes
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_THAT(tree("tmp"), ElementsAre(Pair("beside", "x")));

    QCoreApplication::setApplicationName(u"../tmp"_s); // no folder of its own
    FileUtils::clearApplicationTemporaryDir();
    EXPECT_THAT(tree("tmp"), ElementsAre(Pair("beside", "x")));
}

TEST_F(ApplicationFolders, TemporaryFolderThatCannotBeIsAnError)
{
    write("tmp/an app", "a file in the way");
    const QString message = u"Could not create temporary dir"_s;
    const char *const position = "677 Vyn::OvraBase::FileUtils::createTemporaryDir";
    using Exception::FolderCreationException;
    expectFailure<FolderCreationException>(
        [] { FileUtils::createTemporaryDir(); }, position, message, path("tmp/an app/XXXXXX"));
    expectFailure<FolderCreationException>(
        [] { FileUtils::createApplicationTemporaryDir(u"name"_s); }, position, message,
        path("tmp/an app/name"));
    const auto bringToDisk = [] { FileUtils::ensureFileIsOnDisk(u"qrc:/a"_s); };
    expectFailure<FolderCreationException>(
        bringToDisk, position, message, path("tmp/an app/external_files"));
#ifdef Q_OS_LINUX
    qputenv("TMPDIR", path("missing").toLocal8Bit()); // then there is none, not even "/"
    expectFailure<FolderCreationException>(
        [] { FileUtils::createApplicationTemporaryDir(); }, position, message, {});
    expectFailure<FolderCreationException>(bringToDisk, position, message, {});
#endif
}

#ifdef Q_OS_LINUX
unsigned modeOf(const QString &path)
{
    struct stat entry {};
    ::stat(QFile::encodeName(path).constData(), &entry);
    return entry.st_mode & 07777;
}

TEST_F(ApplicationFolders, TemporaryFolderIsForItsUserAlone)
{
    for (const unsigned before : {0700U, 0755U}) { // made now, or by a process with another mask
        FileUtils::createApplicationTemporaryDir(u"a"_s);
        EXPECT_EQ(modeOf(path("tmp/an app")), 0700);
        ::chmod(QFile::encodeName(path("tmp/an app")).constData(), before);
    }
}

TEST_F(ApplicationFolders, NothingThatOthersPlantedIsUsed)
{
    const struct {
        const char *name;
        bool isAnothers;
        void (*plant)(const char *path);
    } rows[] = {
        {"link", false, [](const char *path) { EXPECT_EQ(::symlink("..", path), 0); }},
        {"folder for all", false,
            [](const char *path) { EXPECT_EQ(::mkdir(path, 0) | ::chmod(path, 0777), 0); }},
        {"folder of another user", true, [](const char *path) { EXPECT_EQ(::mkdir(path, 0), 0); }},
        {"file of another user", true,
            [](const char *path) { EXPECT_EQ(::close(::creat(path, 0666)), 0); }},
    };
    ASSERT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    for (const auto &[name, isAnothers, plant] : rows) {
        SCOPED_TRACE(name);
        const QDir tmp(path(name));
        makeFolder(name);
        qputenv("TMPDIR", tmp.path().toLocal8Bit());
        if (isAnothers) {
            plant(QFile::encodeName(tmp.filePath(u"an app"_s)).constData());
        }
        const OrdinaryUser user{mFolder.path(), tmp.path()};
        if (isAnothers && !user.isAnother()) {
            std::cout << "Not tested, because only root can be two users: " << name << '\n';
            continue;
        }
        if (!isAnothers) {
            plant(QFile::encodeName(tmp.filePath(u"an app"_s)).constData());
        }
        const QString own = tmp.filePath(u"an app-%1"_s.arg(geteuid()));

        EXPECT_EQ(
            FileUtils::createTemporaryDir(u"aXXXXXX"_s).path().left(own.size() + 2), own + u"/a"_s);
        EXPECT_EQ(FileUtils::ensureFileIsOnDisk(u"qrc:/ovrabase-test/resources.qrc"_s),
            own + u"/external_files/resources.qrc"_s);
        EXPECT_EQ(modeOf(own), 0700);
        FileUtils::clearApplicationTemporaryDir();
        EXPECT_FALSE(QFileInfo::exists(own));
        EXPECT_EQ(::symlink("..", QFile::encodeName(own).constData()), 0); // planted, too
        EXPECT_THROW(FileUtils::createTemporaryDir(), Exception::FolderCreationException);
        FileUtils::clearApplicationTemporaryDir();
        EXPECT_EQ(tmp.count(), 4U); // with "." and ".."
    }
}
#endif

TEST_F(ApplicationFolders, WhatIsOnDiskAlreadyComesBackUnchanged)
{
    for (const QString &text :
        {u""_s, u"a/b"_s, u"/a/b"_s, u"file:///x.png"_s, u"://x"_s, u"::/x"_s, u"qrc:a"_s}) {
        EXPECT_EQ(FileUtils::ensureFileIsOnDisk(text), text);
    }
    EXPECT_FALSE(exists("tmp/an app"));
}

TEST_F(ApplicationFolders, BringsOtherFilesOntoTheDisk)
{
    // A drive letter reads like a scheme; here it is a folder of that name.
#ifdef Q_OS_WIN
    const QString source = path("c/a.tar.gz");
#else
    const QString source = u"c:/a.tar.gz"_s;
#endif
    write(source.startsWith(u"c:/"_s) ? "c:/a.tar.gz" : "c/a.tar.gz", "content");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(mFolder.path()));
    onThreads(4, [&](int) { FileUtils::ensureFileIsOnDisk(source); });
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_THAT(tree("tmp/an app/external_files"),
        ElementsAre(Pair("a.gz", "content"), Pair("a_001.gz", "content"),
            Pair("a_002.gz", "content"), Pair("a_003.gz", "content")));

    ASSERT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    const QString copy = FileUtils::ensureFileIsOnDisk(u"qrc:/ovrabase-test/resources.qrc"_s);
    EXPECT_EQ(FileUtils::loadBinaryFile(copy),
        FileUtils::loadBinaryFile(u":/ovrabase-test/resources.qrc"_s));
    EXPECT_TRUE(copy.startsWith(path("tmp/an app/external_files/"))) << copy.toStdString();

    for (const QString &missing : {u"http://host/a%1.png"_s, u"qrc:/missing.png"_s}) {
        expectFailure<Exception::FileCopyException>([&] { FileUtils::ensureFileIsOnDisk(missing); },
            "479 Vyn::OvraBase::FileUtils::ensureFileIsOnDisk", u"Failed to copy non-local file"_s,
            missing);
    }
}

TEST_F(ApplicationFolders, CopiesTakeTheFirstNameThatIsFree)
{
    ASSERT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    const QString folder = path("tmp/an app/external_files/");
    const auto expectNext = [&](const QString &name) {
        EXPECT_EQ(
            FileUtils::ensureFileIsOnDisk(u"qrc:/ovrabase-test/resources.qrc"_s), folder + name);
    };
    for (int i = 0; i < 3; ++i) {
        for (const QString &name :
            {u"resources.qrc"_s, u"resources_001.qrc"_s, u"resources_002.qrc"_s}) {
            expectNext(name);
        }
        QFile second(folder + u"resources_001.qrc"_s);
        second.setPermissions(QFile::ReadOwner | QFile::WriteOwner); // a resource is read-only
        EXPECT_TRUE(second.remove());
        expectNext(u"resources_001.qrc"_s);
        FileUtils::touch(folder + u"resources_003.qrc"_s);
        expectNext(u"resources_004.qrc"_s);
        FileUtils::clearApplicationTemporaryDir();
    }
}

TEST_F(ApplicationFolders, KnowsTheFoldersOfTheApplication)
{
    EXPECT_EQ(kEarlyApplicationDir, QString());
    EXPECT_EQ(FileUtils::safeApplicationDirPath(), QCoreApplication::applicationDirPath());
    const auto location = [](QStandardPaths::StandardLocation of) {
        return QStandardPaths::writableLocation(of);
    };
    const QString data = location(QStandardPaths::AppDataLocation) + u"/a/b"_s;
    EXPECT_EQ(FileUtils::getAppDataAbsolutePath(u"a/b"_s), data);
    EXPECT_EQ(FileUtils::getDocumentsAbsolutePath(u"a"_s),
        location(QStandardPaths::DocumentsLocation) + u"/an app/a"_s); // no organisation
    QCoreApplication::setApplicationName(u"another"_s);                // comes too late
    EXPECT_EQ(FileUtils::getAppDataAbsolutePath(u"a/b"_s), data);
    const QString absolute = QDir::rootPath() + u"x/../y"_s;
    EXPECT_EQ(FileUtils::getAppDataAbsolutePath(absolute), absolute);
}

} // namespace
} // namespace Vyn::OvraBase
