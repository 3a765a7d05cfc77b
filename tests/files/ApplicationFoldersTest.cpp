// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/Threads.h"

#include <QCoreApplication>
#include <QResource>
#include <QStandardPaths>

namespace Vyn::Test {
namespace {

/// The folder that is returned while no application object exists.
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

    /// Expects that \a call fails, because the temporary folder \a subject cannot be made.
    template<class Call>
    void expectNotMade(const QString &subject, Call call)
    {
        expectFailure<Exception::FolderCreationException>(
            "677 Vyn::OvraBase::FileUtils::createTemporaryDir", u"Could not create temporary dir"_s,
            subject, call);
    }

    Guard mOnLinux = withVariable("TMPDIR", path("tmp").toLocal8Bit());
    Guard mOnWindows = withVariable("TMP", path("tmp").toLocal8Bit());
};

TEST_F(ApplicationFolders, RemoveTemporaryFoldersWithTheirObjectsOrAllAtOnceButNothingElse)
{
    EXPECT_TRUE(createTemporaryDir(u"nameXXXXXX"_s).path().startsWith(path("tmp/an app/name")));
    EXPECT_EQ(tree("tmp"), "an app/");
    const QString made = createApplicationTemporaryDir(u"name"_s);
    EXPECT_EQ(createApplicationTemporaryDir(made.section(u'/', -1)), made);
    EXPECT_TRUE(isFolder(made) && isFolder(createApplicationTemporaryDir()));
    make("tmp/beside=x");
    const auto current = inFolder(path("tmp"));
    // With the name "../tmp", the application's folder is the system's temporary folder itself.
    for (const QString &name : {u"an app"_s, u"missing"_s, u"../tmp"_s}) {
        QCoreApplication::setApplicationName(name);
        clearApplicationTemporaryDir();
        EXPECT_EQ(tree("tmp"), "beside=x") << name.toStdString();
    }
}

TEST_F(ApplicationFolders, FailWhereTheTemporaryFolderCannotBeMade)
{
    const Rows<void (*)(), std::string> rows{
        {"folder of an object", [] { createTemporaryDir(); }, "XXXXXX"},
        {"folder with a name", [] { createApplicationTemporaryDir(u"name"_s); }, "name"},
        {"folder for a file", [] { ensureFileIsOnDisk(kResource); }, "external_files"}};
    forEach(rows, [&](auto call, const auto &folder) {
        make("tmp/an app=a file");
        expectNotMade(path("tmp/an app/" + folder), call);
#ifdef Q_OS_LINUX
        const auto missing = withVariable("TMPDIR", path("missing").toLocal8Bit());
        expectNotMade({}, call); // makes no folder in "/"
#endif
    });
}

#ifdef Q_OS_LINUX
TEST_F(ApplicationFolders, KeepTheTemporaryFolderPrivateToItsUser)
{
    const Rows<bool, std::string, fs::perms> rows{{"link", false, "->.", fs::perms::owner_all},
        {"folder for all", false, "/", fs::perms::all},
        {"folder of another user", true, "/", fs::perms::owner_all},
        {"file of another user", true, "=x", fs::perms::owner_all}};
    forEach(rows, [&](bool isAnothers, const auto &planted, auto permissions) {
        make("tmp/, tmp/an app" + planted);
        fs::permissions(native("tmp/an app"), permissions);
        if (isAnothers && geteuid() != 0) {
            GTEST_SKIP() << "NOT TESTED, because only root can be two users";
        }
        const auto user =
            asOrdinaryUser({mFolder.path(), path("tmp"), path(isAnothers ? "tmp" : "tmp/an app")});
        const std::string own = "tmp/an app-" + std::to_string(geteuid());

        createTemporaryDir();
        fs::permissions(native(own), fs::perms{0755}); // by another program
        EXPECT_EQ(ensureFileIsOnDisk(kResource), path(own + "/external_files/resources.qrc"));
        EXPECT_EQ(fs::status(native(own)).permissions(), fs::perms::owner_all);
        clearApplicationTemporaryDir();
        EXPECT_FALSE(exists(path(own)));
        fs::create_symlink("..", native(own)); // as another user might
        expectNotMade(path(own + "/XXXXXX"), [] { createTemporaryDir(); });
        clearApplicationTemporaryDir();
        EXPECT_EQ(QDir(path("tmp")).count(), 4U); // with "." and ".."
    });
}
#endif

TEST_F(ApplicationFolders, CopyWhatIsNotOnDiskUnderFreeNames)
{
    for (const QString &text :
        {u""_s, u"a/b"_s, u"/a/b"_s, u"file:///x.png"_s, u"://x"_s, u"::/x"_s, u"qrc:a"_s}) {
        EXPECT_EQ(ensureFileIsOnDisk(text), text);
    }
    EXPECT_EQ(tree("tmp"), "");

    const bool hasDrives = QDir::rootPath() != u'/'; // otherwise a folder is named "c:"
    const QString drive = hasDrives ? path("c/") : u"c:/"_s;
    make(hasDrives ? "c/a.tar.gz=text, c/a_041.gz" : "c:/a.tar.gz=text, c:/a_041.gz");
    const auto current = inFolder(mFolder.path());
    onThreads(3, [&](int) { ensureFileIsOnDisk(drive + u"a.tar.gz"_s); });
    ensureFileIsOnDisk(drive + u"a_041.gz"_s);
    ensureFileIsOnDisk(drive + u"a.tar.gz"_s);
    EXPECT_EQ(tree("tmp/an app/external_files"),
        "a.gz=text, a_001.gz=text, a_002.gz=text, a_003.gz=text, a_042.gz");

    EXPECT_TRUE(loadBinaryFile(ensureFileIsOnDisk(kResource)).startsWith("<RCC>"));
    for (const QString &missing : {u"http://host/a%1.png"_s, u"qrc:/missing.png"_s}) {
        expectFailure<Exception::FileCopyException>(
            "479 Vyn::OvraBase::FileUtils::ensureFileIsOnDisk", u"Failed to copy non-local file"_s,
            missing, [&] { ensureFileIsOnDisk(missing); });
    }
}

TEST_F(ApplicationFolders, TakeTheFirstNameThatIsFree)
{
    const std::string copy = "tmp/an app/external_files/resources";
    for (const std::string end : {".qrc", "_001.qrc", "_002.qrc", "_001.qrc", "_004.qrc"}) {
        EXPECT_EQ(ensureFileIsOnDisk(kResource), path(copy + end));
        if (end == "_002.qrc") { // another program frees a name and takes the next one
            fs::rename(native(copy + "_001.qrc"), native(copy + "_003.qrc"));
        }
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
