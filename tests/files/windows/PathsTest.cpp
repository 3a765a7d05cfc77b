// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/files/UrlUtils.h>

#include <qt_windows.h>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

using WindowsPaths = Test::FolderTest;

TEST_F(WindowsPaths, OfMoreThan260CharactersAreTakenByEveryOperation)
{
    const QString deep = path("all/") + QString(120, u'a') + u'/' + QString(120, u'\u4E2D');
    const struct {
        const char *name;
        QString folder;
    } rows[] = {{"with slashes", deep}, {"native", QDir::toNativeSeparators(deep)},
        {"verbatim", u"\\\\?\\"_s + QDir::toNativeSeparators(deep)}};
    for (const auto &[name, folder] : rows) {
        SCOPED_TRACE(name);
        const QString file = folder + folder.at(folder.size() - 121) + u"file.png"_s;
        ASSERT_TRUE(FileUtils::makeFolder(folder));
        ASSERT_TRUE(FileUtils::saveTextToFile(u"old"_s, file));
        write("new", "new");
        EXPECT_TRUE(FileUtils::isFile(file) && FileUtils::isFolder(folder));
        EXPECT_TRUE(FileUtils::isWritable(file) && FileUtils::checkFileCanBeOpened(file));
        EXPECT_TRUE(FileUtils::isNonEmptyFolder(folder));
        EXPECT_TRUE(FileUtils::copyWithBackup(path("new"), file));
        EXPECT_EQ(FileUtils::loadBinaryFile(file), "new");
        EXPECT_EQ(FileUtils::loadBinaryFile(file + u".bak"_s), "old");
        EXPECT_FALSE(FileUtils::fileDataToHash(file).isEmpty());
        FileUtils::removeFileIfItExists(file);
        EXPECT_FALSE(FileUtils::isFile(file));
        FileUtils::removeDirRecursiveIfItExists(path("all"));
        EXPECT_FALSE(exists("all"));
    }
    EXPECT_THAT(mLog.records(), testing::IsEmpty());
}

TEST_F(WindowsPaths, AFileThatIsHiddenIsNotReadOnlyAnyMore)
{
    write("file");
    const std::wstring file = path("file").toStdWString();
    ASSERT_TRUE(::SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    FileUtils::hideFileOnWindows(path("file"));
    constexpr DWORD kBoth = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_READONLY;
    EXPECT_EQ(::GetFileAttributesW(file.c_str()) & kBoth, DWORD{FILE_ATTRIBUTE_HIDDEN});
    FileUtils::hideFileOnWindows(path("missing")); // says nothing
    EXPECT_FALSE(exists("missing"));
    EXPECT_THAT(mLog.records(), testing::IsEmpty());
}

TEST_F(WindowsPaths, ThatTheCodePageLacksAreWarnedOf)
{
    // Western Europe has no letter of China, whatever this machine's code page.
    const QString inPage = u"C:/stra\u00DFe"_s;
    const QString beyond = u"C:/\u4E2D\u6587"_s;
    const bool isUtf8 = ::GetACP() == CP_UTF8;
    EXPECT_EQ(QString::fromLocal8Bit(UrlUtils::toNativePath(inPage).c_str()), inPage);
    EXPECT_EQ(UrlUtils::toNativePath(beyond), isUtf8 ? beyond.toStdString() : "C:/??");
    EXPECT_EQ(mLog.take().size(), isUtf8 ? 0U : 1U);
    EXPECT_EQ(UrlUtils::toNativePath(QUrl(u"file:///C:/a%20b"_s)), "C:/a b");
    EXPECT_EQ(UrlUtils::toNativePath(QUrl(u"file://host/share/a"_s)), "//host/share/a");
}

} // namespace
} // namespace Vyn::OvraBase
