// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"
#include "support/Guards.h"

#include <set>

namespace Vyn::Test {
namespace {

using ReadingAndWriting = FolderTest;

TEST_F(ReadingAndWriting, DecodeTextByItsByteOrderMark)
{
    const struct {
        const char *name;
        QByteArray bytes;
        QString text;
    } rows[] = {{"empty", "", u""_s}, {"UTF-8", "h\xC3\xA9\r\nb\n", u"h\u00E9\nb\n"_s},
        {"not UTF-8", "\xFF", u"\uFFFD"_s}, {"UTF-16", {"\xFF\xFEx\0\r\0\n\0", 8}, u"x\n"_s}};
    for (const auto &[name, bytes, text] : rows) {
        SCOPED_TRACE(name);
        write(u"text"_s, bytes);
        EXPECT_EQ(loadTextFileToQString(path("text")), text);
        EXPECT_EQ(loadBinaryFile(path("text")), bytes);
    }
}

TEST_F(ReadingAndWriting, SaveTextAsUtf8)
{
    make("text=what was there before");
    EXPECT_TRUE(saveTextToFile(u"two\nlines \u4E2D\U0001F600"_s, path("text")));
#ifdef Q_OS_WIN
    EXPECT_EQ(tree(), "text=two\r\nlines \xE4\xB8\xAD\xF0\x9F\x98\x80");
#else
    EXPECT_EQ(tree(), "text=two\nlines \xE4\xB8\xAD\xF0\x9F\x98\x80");
#endif
}

TEST_F(ReadingAndWriting, SayThatTextIsNotSaved)
{
    for (const QString &refused :
        {path("missing/file"), mFolder.path(), QString(), path("file") + u"\0x"_s}) {
        EXPECT_FALSE(saveTextToFile(u"x"_s, refused));
    }
    EXPECT_EQ(tree(), "");
#ifdef Q_OS_LINUX
    for (const int size : {1, 100'000}) {
        EXPECT_FALSE(saveTextToFile(QString(size, u'x'), u"/dev/full"_s));
    }
#endif
}

TEST_F(ReadingAndWriting, FailWithALoggedErrorWhenTheyCannotLoad)
{
    make("file%2=x");
    for (const auto load : {+[](const QString &path) { loadBinaryFile(path); },
             +[](const QString &path) { loadTextFileToQString(path); },
             +[](const QString &path) { fileDataToHash(path); }}) {
        for (const QString &missing : {path("missing%1"), mFolder.path()}) {
            expectFailure<Exception::InvalidArgumentException>([&] { load(missing); },
                "136 Vyn::OvraBase::verifyAccessToFile",
                u"File <%1> does not exist"_s.arg(missing));
        }
#ifdef Q_OS_LINUX
        const QString closed = path("file%2");
        expectFailure<Exception::FileOpenException>(
            [&] {
                const auto limit = withOpenFiles(0);
                load(closed);
            },
            "142 Vyn::OvraBase::verifyAccessToFile",
            u"Error opening file <%1> : %2"_s.arg(closed, qt_error_string(EMFILE)), closed);

        const QString unreadable = u"/proc/self/mem"_s; // nothing is mapped at 0
        expectFailure<Exception::FileReadingException>([&] { load(unreadable); },
            "150 Vyn::OvraBase::verifyReading",
            u"Error reading file <%1> : %2"_s.arg(unreadable, qt_error_string(EIO)), unreadable);
#endif
    }
}

TEST_F(ReadingAndWriting, TouchMakesAFileThatIsMissing)
{
    make("old=content");
    for (const QString &touched : {path("new"), path("old"), path("missing/file"), QString()}) {
        touch(touched);
    }
    EXPECT_EQ(tree(), "new, old=content");
}

#ifndef Q_OS_WIN
TEST_F(ReadingAndWriting, DoNotWaitForAReaderOfAPipe)
{
    ASSERT_EQ(mkfifo(path("pipe").toLocal8Bit().constData(), 0600), 0);
    touch(path("pipe"));
    EXPECT_FALSE(saveTextToFile(u"x"_s, path("pipe")));
}
#endif

TEST_F(ReadingAndWriting, FindFilesByWildcards)
{
    make("a.png, b.PNG, c.txt, .d.png, sub/e.png, .hidden/f.png");
    hideFileOnWindows(path(".d.png"));
    hideFileOnWindows(path(".hidden"));
    const struct {
        QStringList filters;
        Recursion recursion;
        std::set<QString> found;
    } rows[] = {{{u"*.png"_s}, Recursion::NonRecursive, {path("a.png"), path("b.PNG")}},
        {{u"*.txt"_s, u"e*"_s}, Recursion::Recursive, {path("c.txt"), path("sub/e.png")}},
        {{}, Recursion(2), {path("a.png"), path("b.PNG"), path("c.txt")}}};
    for (const auto &[filters, recursion, found] : rows) {
        const auto files = folderParseFiles(mFolder.path(), filters, recursion);
        EXPECT_EQ(std::set(files.begin(), files.end()), found);
    }
}

TEST_F(ReadingAndWriting, MakeFolders)
{
    make("file");
    for (const QString &folder : {path("a/b/c/"), path("a/b"), QString()}) {
        EXPECT_TRUE(makeFolder(folder));
    }
    for (const QString &refused : {path("file"), path("file/below"), path("a/") + u"b\0c"_s}) {
        EXPECT_FALSE(makeFolder(refused));
    }
    EXPECT_EQ(tree(), "a/, a/b/, a/b/c/, file");
}

} // namespace
} // namespace Vyn::Test
