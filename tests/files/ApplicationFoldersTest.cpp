// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/Guards.h"
#include "support/OrdinaryUser.h"
#include "support/Threads.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QResource>
#include <QStandardPaths>

#ifdef Q_OS_LINUX
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Vyn::Test {
namespace {

using Exception::FolderCreationException;

/// The answer before there was an application object.
const QString kEarlyApplicationDir = FileUtils::safeApplicationDirPath();

const QString kResource = u"qrc:/ovrabase-test/resources.qrc"_s;

/// The system's temporary folder is "tmp" in the folder of the test.
class ApplicationFolders : public FolderTest {
protected:
    ApplicationFolders()
    {
        make("tmp/");
        QCoreApplication::setApplicationName(u"an app"_s);
        EXPECT_TRUE(QResource::registerResource(QStringLiteral(TEST_RESOURCES)));
    }
    ~ApplicationFolders() override { QCoreApplication::setApplicationName({}); }

    Guard mOnLinux = withVariable("TMPDIR", path("tmp").toLocal8Bit());
    Guard mOnWindows = withVariable("TMP", path("tmp").toLocal8Bit());
};

TEST_F(ApplicationFolders, RemovesATemporaryFolderWithItsObject)
{
    {
        const QTemporaryDir folder = createTemporaryDir(u"nameXXXXXX"_s);
        EXPECT_TRUE(folder.path().startsWith(path("tmp/an app/name")) && folder.isValid());
    }
    EXPECT_EQ(tree("tmp"), "an app/");
}

TEST_F(ApplicationFolders, ClearsTheApplicationsTemporaryFolderAndNothingElse)
{
    const QString made = createApplicationTemporaryDir(u"name"_s);
    EXPECT_EQ(createApplicationTemporaryDir(QFileInfo(made).fileName()), made);
    EXPECT_TRUE(isFolder(made) && isFolder(createApplicationTemporaryDir()));
    make("tmp/beside=x");
    const auto current = inFolder(path("tmp"));
    for (const QString &name : {u"an app"_s, u"missing"_s, u"../tmp"_s}) { // the last is no own one
        QCoreApplication::setApplicationName(name);
        clearApplicationTemporaryDir();
        EXPECT_EQ(tree("tmp"), "beside=x") << name.toStdString();
    }
}

TEST_F(ApplicationFolders, FailWhereTheTemporaryFolderCannotBeMade)
{
    const auto expectNotMade = [&](const auto &call, const QString &subject) {
        expectFailure<FolderCreationException>(call,
            "677 Vyn::OvraBase::FileUtils::createTemporaryDir", u"Could not create temporary dir"_s,
            subject);
    };
    const auto makeNamed = [] { createApplicationTemporaryDir(u"name"_s); };
    const auto bringToDisk = [] { ensureFileIsOnDisk(kResource); };
    make("tmp/an app=a file");
    expectNotMade([] { createTemporaryDir(); }, path("tmp/an app/XXXXXX"));
    expectNotMade(makeNamed, path("tmp/an app/name"));
    expectNotMade(bringToDisk, path("tmp/an app/external_files"));
#ifdef Q_OS_LINUX
    const auto missing = withVariable("TMPDIR", path("missing").toLocal8Bit());
    expectNotMade(makeNamed, {}); // not in "/"
    expectNotMade(bringToDisk, {});
#endif
}

#ifdef Q_OS_LINUX
unsigned modeOf(const QString &path)
{
    struct stat entry {};
    ::stat(QFile::encodeName(path).constData(), &entry);
    return entry.st_mode & 07777;
}

TEST_F(ApplicationFolders, KeepTheTemporaryFolderToItsUser)
{
    for (int i = 0; i < 2; ++i) {
        createApplicationTemporaryDir(u"a"_s);
        EXPECT_EQ(modeOf(path("tmp/an app")), 0700);
        ::chmod(QFile::encodeName(path("tmp/an app")).constData(), 0755); // by another program
    }
}

TEST_F(ApplicationFolders, UseNothingThatOthersCanChange)
{
    const struct {
        const char *name;
        bool isAnothers;
        int (*plant)(const char *path);
    } rows[] = {
        {"link", false, [](const char *path) { return ::symlink("..", path); }},
        {"folder for all", false,
            [](const char *path) { return ::mkdir(path, 0) | ::chmod(path, 0777); }},
        {"folder of another user", true, [](const char *path) { return ::mkdir(path, 0); }},
        {"file of another user", true, [](const char *path) { return ::mknod(path, S_IFREG, 0); }},
    };
    forEach(rows, [&](const auto &row) {
        const auto &[name, isAnothers, plant] = row;
        make("tmp/");
        EXPECT_EQ(plant(QFile::encodeName(path("tmp/an app")).constData()), 0);
        const OrdinaryUser user{
            mFolder.path(), path("tmp"), path(isAnothers ? "tmp" : "tmp/an app")};
        if (isAnothers && !user.isAnother()) {
            std::cout << "Not tested, because only root can be two users: " << name << '\n';
            return;
        }
        const QString own = path("tmp/an app-" + std::to_string(geteuid()));

        EXPECT_EQ(ensureFileIsOnDisk(kResource), own + u"/external_files/resources.qrc"_s);
        EXPECT_EQ(modeOf(own), 0700);
        clearApplicationTemporaryDir();
        EXPECT_FALSE(QFileInfo::exists(own));
        EXPECT_EQ(::symlink("..", QFile::encodeName(own).constData()), 0); // planted, too
        EXPECT_THROW(createTemporaryDir(), FolderCreationException);
        clearApplicationTemporaryDir();
        EXPECT_EQ(QDir(path("tmp")).count(), 4U); // with "." and ".."
    });
}
#endif

TEST_F(ApplicationFolders, ReturnWhatIsOnDiskUnchanged)
{
    for (const QString &text :
        {u""_s, u"a/b"_s, u"/a/b"_s, u"file:///x.png"_s, u"://x"_s, u"::/x"_s, u"qrc:a"_s}) {
        EXPECT_EQ(ensureFileIsOnDisk(text), text);
    }
    EXPECT_FALSE(exists(path("tmp/an app")));
}

TEST_F(ApplicationFolders, CopyOtherFilesUnderFreeNames)
{
    const bool hasDrives = QDir::rootPath() != u'/'; // else a folder has such a name
    const QString source = hasDrives ? path("a.tar.gz") : u"c:/a.tar.gz"_s;
    make(hasDrives ? "a.tar.gz=content" : "c:/a.tar.gz=content");
    const auto current = inFolder(mFolder.path());
    onThreads(4, [&](int) { ensureFileIsOnDisk(source); });
    EXPECT_EQ(tree("tmp/an app/external_files"),
        "a.gz=content, a_001.gz=content, a_002.gz=content, a_003.gz=content");

    EXPECT_TRUE(loadBinaryFile(ensureFileIsOnDisk(kResource)).startsWith("<RCC>"));
    for (const QString &missing : {u"http://host/a%1.png"_s, u"qrc:/missing.png"_s}) {
        expectFailure<Exception::FileCopyException>([&] { ensureFileIsOnDisk(missing); },
            "479 Vyn::OvraBase::FileUtils::ensureFileIsOnDisk", u"Failed to copy non-local file"_s,
            missing);
    }
}

TEST_F(ApplicationFolders, TakeTheFirstNameThatIsFree)
{
    const QString folder = path("tmp/an app/external_files/");
    const auto expectNext = [&](const QString &name) {
        EXPECT_EQ(ensureFileIsOnDisk(kResource), folder + name);
    };
    for (int i = 0; i < 2; ++i) {
        expectNext(u"resources.qrc"_s);
        expectNext(u"resources_001.qrc"_s);
        expectNext(u"resources_002.qrc"_s);
        QFile second(folder + u"resources_001.qrc"_s);
        second.setPermissions(QFile::ReadOwner | QFile::WriteOwner); // a resource is read-only
        EXPECT_TRUE(second.remove());
        expectNext(u"resources_001.qrc"_s);
        touch(folder + u"resources_003.qrc"_s);
        expectNext(u"resources_004.qrc"_s);
        clearApplicationTemporaryDir();
    }
}

TEST_F(ApplicationFolders, KnowTheFoldersOfTheApplication)
{
    EXPECT_EQ(kEarlyApplicationDir, QString());
    EXPECT_EQ(safeApplicationDirPath(), QCoreApplication::applicationDirPath());
    const auto location = QStandardPaths::writableLocation;
    const QString data = location(QStandardPaths::AppDataLocation) + u"/a/b"_s;
    EXPECT_EQ(getAppDataAbsolutePath(u"a/b"_s), data);
    EXPECT_EQ(getDocumentsAbsolutePath(u"a"_s),
        location(QStandardPaths::DocumentsLocation) + u"/an app/a"_s); // no organisation
    QCoreApplication::setApplicationName(u"another"_s);                // comes too late
    EXPECT_EQ(getAppDataAbsolutePath(u"a/b"_s), data);
    const QString absolute = QDir::rootPath() + u"x/../y"_s;
    EXPECT_EQ(getAppDataAbsolutePath(absolute), absolute);
}

} // namespace
} // namespace Vyn::Test
