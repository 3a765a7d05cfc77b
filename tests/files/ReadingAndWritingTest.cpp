// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/OpenFiles.h"

#include <ovrabase/errors/Exception.h>

#include <set>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
#ifdef Q_OS_LINUX
using Test::withoutOpenFiles;
#endif
using testing::ElementsAre;
using testing::Pair;

using ReadingAndWriting = Test::FolderTest;

TEST_F(ReadingAndWriting, TextComesBackWhateverItsEncoding)
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

TEST_F(ReadingAndWriting, TextThatDoesNotArriveIsNotSaved)
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

TEST_F(ReadingAndWriting, LoadingFailsWithALoggedError)
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

TEST_F(ReadingAndWriting, TouchMakesFilesAndLeavesContent)
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
    EXPECT_THAT(tree("."), ElementsAre(Pair("new", ""), Pair("old", "content")));
}

TEST_F(ReadingAndWriting, FindsFilesByWildcards)
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

TEST_F(ReadingAndWriting, MakesFolders)
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

} // namespace
} // namespace Vyn::OvraBase
