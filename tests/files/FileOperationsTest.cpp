// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/Threads.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/logging/logStr.h>

#include <QCoreApplication>
#include <QFileInfo>
#include <QResource>
#include <QStandardPaths>

#include <cstdio>
#include <set>

#ifndef Q_OS_WIN
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using Test::onThreads;
using Test::Record;
using testing::ElementsAre;
using testing::FieldsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

/// What stood in the cache before there was an application object.
const QString kEarlyApplicationDir = FileUtils::safeApplicationDirPath();

/// The folder of a test is also the system's temporary folder meanwhile.
class FileOperations : public Test::FolderTest {
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

    /// Expects that \a call throws an E with \a message and \a subject and logs it first.
    template<class E, class Call>
    void expectFailure(
        Call call, const char *position, const QString &message, const QString &subject)
    {
        try {
            call();
            ADD_FAILURE() << "nothing thrown at " << position;
        } catch (const E &failure) {
            EXPECT_EQ(failure.what(), message.toStdString());
            if constexpr (std::is_base_of_v<Exception::IOException, E>) {
                EXPECT_EQ(failure.subject(), subject);
            }
        }
        EXPECT_THAT(mLog.take(),
            ElementsAre(Record{
                2, "Debug: FileUtils.cpp:" + std::string(position) + "()", message.toStdString()}));
    }

    void expectNotCopied(std::vector<std::pair<QString, QString>> pairs)
    {
        std::vector<Record> expected;
        for (const auto &[from, to] : pairs) {
            expected.push_back(
                {1, "Support: FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()",
                    (u"Error while copying : "_s + from + u" to : "_s + to).toStdString()});
        }
        EXPECT_THAT(mLog.take(), testing::UnorderedElementsAreArray(expected));
    }

private:
    std::map<const char *, QByteArray> mBefore;
};

#ifdef Q_OS_LINUX
/// Calls when no file can be opened. Nobody is root enough to exceed the limit.
template<class Call>
auto withoutOpenFiles(Call call)
{
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_NOFILE, &before); });
    return call();
}
#endif

QString joined(const QString &folder, const QString &name)
{
    return folder + QDir::separator() + name;
}

// Copying folders

TEST_F(FileOperations, CopiesAFolderWithAllThatIsHidden)
{
    write("source/a.txt", "a");
    write("source/.b/.c/d", "d");
    makeFolder("source/empty");
    EXPECT_TRUE(FileUtils::copyRecursively(path("source"), path("new/deep")));
    EXPECT_EQ(tree("new/deep"), tree("source"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(FileOperations, FolderCopyReportsWhatItCannotCopyAndGoesOn)
{
    write("source/%1", "new");
    write("source/sub/b", "b");
    write("source/c", "c");
    write("copy/%1", "old");
    write("copy/sub", "a file in the way");
    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("copy")));
    EXPECT_THAT(tree("copy"),
        ElementsAre(Pair("%1", "old"), Pair("c", "c"), Pair("sub", "a file in the way")));
    expectNotCopied({{joined(path("source"), u"%1"_s), joined(path("copy"), u"%1"_s)},
        {joined(joined(path("source"), u"sub"_s), u"b"_s),
            joined(joined(path("copy"), u"sub"_s), u"b"_s)}});

    EXPECT_FALSE(FileUtils::copyRecursively({}, path("copy")));
    EXPECT_FALSE(FileUtils::copyRecursively(path("source/c"), path("copy")));
    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("new") + u"\0x"_s));
    EXPECT_FALSE(exists("new"));
    EXPECT_THAT(mLog.records(), IsEmpty());
}

TEST_F(FileOperations, FolderCopyIntoItselfTakesWhatWasThere)
{
    write("source/a", "a");
    write("source/copy/old", "old");
    EXPECT_TRUE(FileUtils::copyRecursively(path("source"), u"copy"_s)); // in the source
    EXPECT_THAT(tree("source"),
        ElementsAre(Pair("a", "a"), Pair("copy/", ""), Pair("copy/a", "a"), Pair("copy/copy/", ""),
            Pair("copy/copy/old", "old"), Pair("copy/old", "old")));
}

#ifndef Q_OS_WIN
TEST_F(FileOperations, FolderCopyFollowsLinksButNotBackUp)
{
    write("beside/x", "x");
    write("source/one/a", "a");
    write("source/two/b", "b");
    link("beside", "source/beside");
    link("source/two", "source/one/two");
    link("source/one", "source/two/one");
    link("source", "source/one/up");
    link(".", "source/above");
    link("nowhere", "source/dangling");
    link("source/circle", "source/circle");
    ASSERT_EQ(mkfifo(path("source/pipe").toLocal8Bit().constData(), 0600), 0);

    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("copy")));

    EXPECT_THAT(tree("copy"),
        ElementsAre(Pair("beside/", ""), Pair("beside/x", "x"), Pair("one/", ""),
            Pair("one/a", "a"), Pair("one/two/", ""), Pair("one/two/b", "b"), Pair("two/", ""),
            Pair("two/b", "b"), Pair("two/one/", ""), Pair("two/one/a", "a")));
    std::vector<std::pair<QString, QString>> left;
    for (const char *name : {"above", "circle", "dangling", "pipe", "one/up", "one/two/one",
             "two/one/two", "two/one/up"}) {
        left.emplace_back(
            path("source/") + QLatin1String(name), path("copy/") + QLatin1String(name));
    }
    expectNotCopied(left);
}
#endif

#ifdef Q_OS_LINUX
TEST_F(FileOperations, FolderCopyReportsWhatItCannotList)
{
    write("source/name", "x");
    EXPECT_FALSE(
        withoutOpenFiles([&] { return FileUtils::copyRecursively(path("source"), path("copy")); }));
    expectNotCopied({{path("source"), path("copy")}});
    const QByteArray name = path("source/name").toLocal8Bit();
    ASSERT_EQ(std::rename(name.constData(), (name + '\xE9').constData()), 0); // not UTF-8
    EXPECT_FALSE(FileUtils::copyRecursively(path("source"), path("copy")));
    EXPECT_EQ(std::remove((name + '\xE9').constData()), 0); // which Qt cannot
}
#endif

// Copying with a backup

TEST_F(FileOperations, BackupKeepsTheOldContent)
{
    write("new", "new");
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file"))); // nothing there yet
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "new"), Pair("new", "new"), Pair("tmp/", "")));

    write("file", "old");
    write("file.bak", "older");
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file")));
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "new"), Pair("file.bak", "old"),
                               Pair("new", "new"), Pair("tmp/", "")));

    write("folder/x", "x");
    write("folder.bak", "older");
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("folder")));
    EXPECT_THAT(tree("folder.bak"), ElementsAre(Pair("x", "x")));
    FileUtils::removeDirRecursiveIfItExists(path("folder.bak"));
    FileUtils::removeFileIfItExists(path("folder"));

    // Back to the old content: the source is the backup itself.
    EXPECT_TRUE(FileUtils::copyWithBackup(path("file.bak"), path("file")));
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "old"), Pair("file.bak", "new"),
                               Pair("new", "new"), Pair("tmp/", "")));
    EXPECT_THAT(mLog.records(), IsEmpty());
#ifdef Q_OS_LINUX
    for (const auto makeLink : {::link, ::symlink}) { // the backup is the file already
        FileUtils::removeFileIfItExists(path("file"));
        const QByteArray backup = path("file.bak").toLocal8Bit();
        ASSERT_EQ(makeLink(backup.constData(), path("file").toLocal8Bit().constData()), 0);
        EXPECT_TRUE(FileUtils::copyWithBackup(u"/proc/version"_s, path("file"))); // of no size
        EXPECT_EQ(FileUtils::loadBinaryFile(path("file.bak")), "new");
        EXPECT_NE(FileUtils::loadBinaryFile(path("file")), "");
    }
    FileUtils::removeFileIfItExists(path("file.bak"));
    link("file", "file.bak"); // the backup leads to the file
    EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), path("file")));
    EXPECT_NE(FileUtils::loadBinaryFile(path("file.bak")), "new");
    EXPECT_FALSE(FileUtils::copyWithBackup(u"/proc/self/mem"_s, path("file"))); // unreadable
    EXPECT_EQ(FileUtils::loadBinaryFile(path("file")), "new");
#endif
}

TEST_F(FileOperations, BackupThatFailsLosesNothing)
{
    write("file", "old");
    write("file.bak", "older");
    write("blocked", "old");
    write("blocked.bak/x", "a folder in the way");
    write("folder/x", "x");
    const auto before = tree(".");
    const QString withNul = path("file") + u"\0x"_s;
    EXPECT_FALSE(FileUtils::copyWithBackup(path("blocked"), withNul));
    EXPECT_FALSE(FileUtils::copyWithBackup(withNul, path("new")));
    EXPECT_FALSE(FileUtils::copyWithBackup(path("half ") + QChar(0xD800), path("file")));
    EXPECT_EQ(tree("."), before);
    mLog.take();
    const std::pair<const char *, const char *> calls[] = {{"missing", "file"}, {"", "file"},
        {"folder", "file"}, {"file", "file"}, {"file", "blocked"}, {"file", "folder/"},
        {"file", "missing/file"}, {"file", "file/below"}, {"missing%3", "%1%2"}};
    for (const auto &[source, destination] : calls) {
        const QString from = *source == '\0' ? QString() : path(source);
        EXPECT_FALSE(FileUtils::copyWithBackup(from, path(destination))) << source;
        EXPECT_EQ(tree("."), before) << source << ' ' << destination;
        const QString start =
            u"Failed to copy "_s + from + u" to "_s + path(destination) + u" because "_s;
        EXPECT_THAT(mLog.take(),
            ElementsAre(
                FieldsAre(1, "Debug: FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()",
                    StartsWith(start.toStdString()))));
    }
    EXPECT_FALSE(FileUtils::copyWithBackup(path("file"), {}));
    mLog.take();
    QFile missing(path("missing"));
    EXPECT_FALSE(FileUtils::copyWithBackup(missing.fileName(), path("new")));
    EXPECT_FALSE(missing.copy(path("new")));
    EXPECT_THAT(mLog.take().at(0).message, testing::EndsWith(missing.errorString().toStdString()));

    write("lost.bak", "old"); // a backup without its original is renamed back
    EXPECT_FALSE(FileUtils::copyWithBackup(path("missing"), path("lost")));
    EXPECT_EQ(FileUtils::loadBinaryFile(path("lost")), "old");
    EXPECT_FALSE(exists("lost.bak"));
}

// Reading and writing

TEST_F(FileOperations, TextComesBackWhateverItsEncoding)
{
    const std::pair<QByteArray, QString> rows[] = {{"", u""_s},
        {"h\xC3\xA9\r\nb\n", u"h\u00E9\nb\n"_s}, {"\xEF\xBB\xBFx", u"x"_s},
        {QByteArray("\xFF\xFEx\0\r\0\n\0", 8), u"x\n"_s},
        {QByteArray("\xFE\xFF\x4E\x2D", 4), u"\u4E2D"_s},
        {QByteArray("\xFF\xFE\0\0x\0\0\0", 8), u"x"_s}, {"\xFF", u"\uFFFD"_s}};
    for (const auto &[bytes, expected] : rows) {
        write("text", bytes);
        EXPECT_EQ(FileUtils::loadTextFileToQString(path("text")), expected);
        EXPECT_EQ(FileUtils::loadBinaryFile(path("text")), bytes);
    }
    const QString text = u"two\nlines \u4E2D\U0001F600"_s;
    EXPECT_TRUE(FileUtils::saveTextToFile(text, path("text")));
    EXPECT_EQ(FileUtils::loadTextFileToQString(path("text")), text);
#ifdef Q_OS_WIN
    EXPECT_TRUE(FileUtils::loadBinaryFile(path("text")).contains("\r\n"));
#endif
}

TEST_F(FileOperations, TextThatDoesNotArriveIsNotSaved)
{
    for (const QString &refused :
        {path("missing/file"), mFolder.path(), QString(), path("file") + u"\0x"_s}) {
        EXPECT_FALSE(FileUtils::saveTextToFile(u"x"_s, refused));
    }
    EXPECT_FALSE(exists("file"));
#ifdef Q_OS_LINUX
    for (const int size : {1, 100'000}) {
        EXPECT_FALSE(FileUtils::saveTextToFile(QString(size, u'x'), u"/dev/full"_s));
    }
#endif
}

TEST_F(FileOperations, LoadingFailsWithALoggedError)
{
    const auto loaders = {+[](const QString &path) { FileUtils::loadBinaryFile(path); },
        +[](const QString &path) { FileUtils::loadTextFileToQString(path); },
        +[](const QString &path) { FileUtils::fileDataToHash(path); }};
    write("file%2", "x");
    for (const auto load : loaders) {
        for (const QString &missing : {path("missing%1"), mFolder.path()}) {
            expectFailure<Exception::InvalidArgumentException>([&] { load(missing); },
                "136 Vyn::OvraBase::verifyAccessToFile",
                u"File <"_s + missing + u"> does not exist"_s, {});
        }
#ifdef Q_OS_LINUX
        const QString closed = path("file%2");
        expectFailure<Exception::FileOpenException>(
            [&] { withoutOpenFiles([&] { load(closed); }); },
            "142 Vyn::OvraBase::verifyAccessToFile",
            u"Error opening file <"_s + closed + u"> : "_s + qt_error_string(EMFILE), closed);

        const QString unreadable = u"/proc/self/mem"_s; // nothing is mapped at 0
        expectFailure<Exception::FileReadingException>([&] { load(unreadable); },
            "150 Vyn::OvraBase::verifyReading",
            u"Error reading file <"_s + unreadable + u"> : "_s + qt_error_string(EIO), unreadable);
#endif
    }
}

TEST_F(FileOperations, TouchMakesFilesAndLeavesContent)
{
    FileUtils::touch(path("new"));
    write("old", "content");
    FileUtils::touch(path("old"));
    FileUtils::touch(path("missing/file"));
    FileUtils::touch({});
#ifndef Q_OS_WIN
    ASSERT_EQ(mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    FileUtils::touch(path("pipe"));
    EXPECT_FALSE(FileUtils::saveTextToFile(u"x"_s, path("pipe")));
    FileUtils::removeFileIfItExists(path("pipe"));
#endif
    EXPECT_THAT(tree("."), ElementsAre(Pair("new", ""), Pair("old", "content"), Pair("tmp/", "")));
}

TEST_F(FileOperations, FindsFilesByWildcards)
{
    for (const char *name : {"a.png", "b.PNG", "c.txt", ".d.png", "sub/e.png", ".hidden/f.png"}) {
        write(name, {});
    }
    FileUtils::hideFileOnWindows(path(".d.png"));
    FileUtils::hideFileOnWindows(path(".hidden"));
    const auto find = [&](const QStringList &filters, Recursion recursion) {
        std::set<std::string> names;
        for (const QString &file :
            FileUtils::folderParseFiles(mFolder.path(), filters, recursion)) {
            names.insert(QDir(mFolder.path()).relativeFilePath(file).toStdString());
        }
        return names;
    };
    EXPECT_THAT(find({u"*.png"_s}, Recursion::NonRecursive), ElementsAre("a.png", "b.PNG"));
    EXPECT_THAT(
        find({u"*.txt"_s, u"e*"_s}, Recursion::Recursive), ElementsAre("c.txt", "sub/e.png"));
    EXPECT_THAT(find({}, static_cast<Recursion>(2)), ElementsAre("a.png", "b.PNG", "c.txt"));
}

// Making and removing

TEST_F(FileOperations, MakesFolders)
{
    write("file", {});
    EXPECT_TRUE(FileUtils::makeFolder(path("a/b/c/")));
    EXPECT_TRUE(FileUtils::isFolder(path("a/b/c")));
    EXPECT_TRUE(FileUtils::makeFolder(path("a/b")));
    EXPECT_TRUE(FileUtils::makeFolder({})); // the current one
    for (const QString &refused : {path("file"), path("file/below"), path("a/") + u"b\0c"_s}) {
        EXPECT_FALSE(FileUtils::makeFolder(refused));
    }
}

TEST_F(FileOperations, RemovesAFileButNoFolder)
{
    write("file", "x");
    for (const QString &removed : {path("file"), path("file"), QString()}) {
        FileUtils::removeFileIfItExists(removed);
        EXPECT_FALSE(exists("file"));
    }
    EXPECT_THAT(mLog.records(), IsEmpty());

    const QString folder = path("%1\u4E2D");
    ASSERT_TRUE(FileUtils::makeFolder(folder));
    expectFailure<Exception::FileDeletionException>(
        [&] { FileUtils::removeFileIfItExists(folder); },
        "718 Vyn::OvraBase::FileUtils::removeFileIfItExists",
        u"Could not remove: "_s + logStr(folder), folder);
}

TEST_F(FileOperations, RemovesAFolderButNoFile)
{
    write("folder/.hidden/x", "x");
    write("folder/read-only", "x");
    QFile::setPermissions(path("folder/read-only"), QFile::ReadOwner);
    write("file", "x");
    for (const char *name : {"folder", "file", "missing"}) {
        FileUtils::removeDirRecursiveIfItExists(path(name));
    }
    EXPECT_THAT(tree("."), ElementsAre(Pair("file", "x"), Pair("tmp/", "")));
#ifdef Q_OS_LINUX
    const QString lasting = u"/proc/self/fdinfo"_s;
    expectFailure<Exception::FolderDeletionException>(
        [&] { FileUtils::removeDirRecursiveIfItExists(lasting); },
        "731 Vyn::OvraBase::FileUtils::removeDirRecursiveIfItExists",
        u"The directory or some of its content could not be removed : "_s + logStr(lasting),
        lasting);
#endif
}

#ifndef Q_OS_WIN
TEST_F(FileOperations, RemovalOfALinkLeavesItsTarget)
{
    write("target/x", "x");
    write("folder/sub/y", "y");
    link("target", "folder/sub/link");
    link("nowhere", "folder/dangling");
    FileUtils::removeDirRecursiveIfItExists(path("folder"));
    for (const char *spelling : {"link", "link/", "link/.", "link/./"}) {
        link("target", "link");
        FileUtils::removeDirRecursiveIfItExists(path(spelling));
    }
    for (const char *target : {"target", "target/x", "nowhere"}) {
        link(target, "link");
        FileUtils::removeFileIfItExists(path("link"));
    }
    makeFolder("current/deep");
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path("current")));
    FileUtils::removeDirRecursiveIfItExists(u"."_s);
    ASSERT_TRUE(QDir::setCurrent(before));
    EXPECT_THAT(
        tree("."), ElementsAre(Pair("target/", ""), Pair("target/x", "x"), Pair("tmp/", "")));
}
#endif

// Application folders

TEST_F(FileOperations, TemporaryFoldersGoWithTheirObjectOrWhenCleared)
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

TEST_F(FileOperations, TemporaryFolderThatCannotBeIsAnError)
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

TEST_F(FileOperations, WhatIsOnDiskAlreadyComesBackUnchanged)
{
    for (const QString &text :
        {u""_s, u"a/b"_s, u"/a/b"_s, u"file:///x.png"_s, u"://x"_s, u"::/x"_s, u"qrc:a"_s}) {
        EXPECT_EQ(FileUtils::ensureFileIsOnDisk(text), text);
    }
    EXPECT_FALSE(exists("tmp/an app"));
}

TEST_F(FileOperations, BringsOtherFilesOntoTheDisk)
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

TEST_F(FileOperations, KnowsTheFoldersOfTheApplication)
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
