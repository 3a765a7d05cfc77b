// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::Test {
namespace {

using ReadingAndWriting = FolderTest;

TEST_F(ReadingAndWriting, DecodeTextByItsByteOrderMark)
{
    const Rows<QByteArray, QString> rows{{"empty", {}, {}},
        {"UTF-8", "h\xC3\xA9\r\nb\n", u"h\u00E9\nb\n"_s}, {"not UTF-8", "\xFF", u"\uFFFD"_s},
        {"UTF-16", {"\xFF\xFEx\0\r\0\n\0", 8}, u"x\n"_s}};
    forEach(rows, [&](const QByteArray &bytes, const QString &text) {
        write(u"text"_s, bytes);
        EXPECT_EQ(loadTextFileToQString(path("text")), text);
        EXPECT_EQ(loadBinaryFile(path("text")), bytes);
    });
}

TEST_F(ReadingAndWriting, SaveTextAsUtf8OrSayThatItIsNotSaved)
{
    make("text=what was there before");
    EXPECT_TRUE(saveTextToFile(u"two\nlines \u4E2D\U0001F600"_s, path("text")));
    std::vector<QString> refused{path("missing/file"), mFolder.path(), {}, path("file") + u"\0x"_s};
#ifdef Q_OS_LINUX
    ASSERT_EQ(mkfifo(native("pipe").c_str(), 0600), 0);
    touch(path("pipe")); // must not wait for a reader
    refused.insert(refused.end(), {path("pipe"), u"/dev/full"_s});
#endif
    for (const QString &file : refused) {
        for (const int size : {1, 100'000}) {
            EXPECT_FALSE(saveTextToFile(QString(size, u'x'), file)) << file.toStdString();
        }
    }
    const std::string lineEnd = QDir::separator() == u'/' ? "\n" : "\r\n";
    const std::string saved = "text=two" + lineEnd + "lines \xE4\xB8\xAD\xF0\x9F\x98\x80";
    EXPECT_THAT(tree(), testing::AnyOf(saved, "pipe, " + saved));
}

TEST_F(ReadingAndWriting, FailWithALoggedErrorWhenTheyCannotLoad)
{
    const Rows<void (*)(const QString &)> rows{
        {"bytes", [](const QString &path) { loadBinaryFile(path); }},
        {"text", [](const QString &path) { loadTextFileToQString(path); }},
        {"hash", [](const QString &path) { fileDataToHash(path); }}};
    forEach(rows, [&](auto load) {
        for (const QString &missing : {path("missing%1"), mFolder.path()}) {
            expectFailure<Exception::InvalidArgumentException>(
                "136 Vyn::OvraBase::verifyAccessToFile", u"File <%1> does not exist"_s.arg(missing),
                {}, [&] { load(missing); });
        }
#ifdef Q_OS_LINUX
        const QString unreadable = u"/proc/self/mem"_s; // address 0 is not mapped
        expectFailure<Exception::FileReadingException>("150 Vyn::OvraBase::verifyReading",
            u"Error reading file <%1> : %2"_s.arg(unreadable, qt_error_string(EIO)), unreadable,
            [&] { load(unreadable); });
        make("file%2=x");
        const QString closed = path("file%2");
        expectFailure<Exception::FileOpenException>("142 Vyn::OvraBase::verifyAccessToFile",
            u"Error opening file <%1> : %2"_s.arg(closed, qt_error_string(EMFILE)), closed, [&] {
                const auto limit = withOpenFiles(0);
                load(closed);
            });
#endif
    });
}

TEST_F(ReadingAndWriting, MakeMissingFilesAndFolders)
{
    make("old=content");
    for (const QString &touched : {path("new"), path("old"), path("missing/file"), QString()}) {
        touch(touched);
    }
    for (const QString &folder : {path("a/b/c/"), path("a/b"), QString()}) {
        EXPECT_TRUE(makeFolder(folder));
    }
    for (const QString &refused : {path("old"), path("old/below"), path("a/") + u"b\0c"_s}) {
        EXPECT_FALSE(makeFolder(refused));
    }
    EXPECT_EQ(tree(), "a/, a/b/, a/b/c/, new, old=content");
}

TEST_F(ReadingAndWriting, FindFilesByWildcards)
{
    const Rows<QStringList, Recursion, std::vector<QString>> rows{
        {"one wildcard", {u"*.png"_s}, Recursion::NonRecursive, {path("a.png"), path("b.PNG")}},
        {"two wildcards", {u"*.txt"_s, u"e*"_s}, Recursion::Recursive,
            {path("c.txt"), path("sub/e.png")}},
        {"no wildcard, unknown recursion", {}, Recursion(2),
            {path("a.png"), path("b.PNG"), path("c.txt")}}};
    forEach(rows, [&](auto filters, auto recursion, auto expected) {
        make("a.png, b.PNG, c.txt, .d.png, sub/e.png, .hidden/f.png");
        hideFileOnWindows(path(".d.png"));
        hideFileOnWindows(path(".hidden"));
        EXPECT_THAT(folderParseFiles(mFolder.path(), filters, recursion),
            testing::UnorderedElementsAreArray(expected));
    });
}

} // namespace
} // namespace Vyn::Test
