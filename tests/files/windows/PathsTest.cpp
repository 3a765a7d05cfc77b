// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/files/UrlUtils.h>

#include <qt_windows.h>

namespace Vyn::Test {
namespace {

using WindowsPaths = FolderTest;

TEST_F(WindowsPaths, OfMoreThan260CharactersCanBeWrittenReadCopiedAndRemoved)
{
    const QString deep = path("all/") + QString(120, u'a') + u'/' + QString(120, u'\u4E2D');
    const Rows<QString> rows{{"with slashes", deep}, {"native", QDir::toNativeSeparators(deep)},
        {"verbatim", u"\\\\?\\"_s + QDir::toNativeSeparators(deep)}};
    forEach(rows, [&](const QString &folder) {
        const QString file = folder + folder.at(folder.size() - 121) + u"file.png"_s;
        ASSERT_TRUE(makeFolder(folder) && saveTextToFile(u"old"_s, file));
        make("new=new");
        EXPECT_TRUE(isNonEmptyFolder(folder) && isWritable(file) && checkFileCanBeOpened(file));
        EXPECT_TRUE(copyWithBackup(path("new"), file));
        EXPECT_EQ(loadBinaryFile(file), "new");
        EXPECT_EQ(loadBinaryFile(file + u".bak"_s), "old");
        EXPECT_EQ(fileDataToHash(file), dataToHash("new"));
        removeFileIfItExists(file);
        EXPECT_FALSE(isFile(file));
        removeDirRecursiveIfItExists(path("all"));
        EXPECT_EQ(tree(), "new=new");
    });
}

TEST_F(WindowsPaths, AFileThatIsHiddenIsNotReadOnlyAnyMore)
{
    make("file");
    const std::wstring file = path("file").toStdWString();
    ASSERT_TRUE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    hideFileOnWindows(path("file"));
    constexpr DWORD kBoth = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(::GetFileAttributesW(file.c_str()) & kBoth, DWORD{FILE_ATTRIBUTE_HIDDEN});
    hideFileOnWindows(path("missing")); // logs nothing
    EXPECT_EQ(tree(), "file");
}

TEST_F(WindowsPaths, WithCharactersThatTheCodePageLacksCauseAWarning)
{
    // Assumes that the code page is UTF-8 or one of Western Europe, which has no Chinese letters.
    const QString inPage = u"C:/stra\u00DFe"_s;
    const QString beyond = u"C:/\u4E2D\u6587"_s;
    const bool isUtf8 = ::GetACP() == CP_UTF8;
    EXPECT_EQ(QString::fromLocal8Bit(OvraBase::UrlUtils::toNativePath(inPage).c_str()), inPage);
    EXPECT_EQ(OvraBase::UrlUtils::toNativePath(beyond), isUtf8 ? beyond.toStdString() : "C:/??");
    EXPECT_EQ(mLog.take().size(), isUtf8 ? 0U : 1U);
    EXPECT_EQ(OvraBase::UrlUtils::toNativePath(QUrl(u"file:///C:/a%20b"_s)), "C:/a b");
    EXPECT_EQ(OvraBase::UrlUtils::toNativePath(QUrl(u"file://host/share/a"_s)), "//host/share/a");
}

} // namespace
} // namespace Vyn::Test
