// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/errors/Exception.h>

#include <QMetaMethod>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

using FileUtilsTest = Test::FolderTest;

/// Paths at which nothing is, in a folder that holds a file "file" and links.
std::vector<QString> strangePaths(const QTemporaryDir &folder)
{
    const QString base = folder.path() + u'/';
    FileUtils::touch(base + u"file"_s);
    std::vector<QString> paths{QString(), base + u"a\0b"_s, base + QString(100'000, u'a'),
        base + u"a/"_s.repeated(50'000), base + QChar(0xD800), base + QChar(0xDC00) + u"/x"_s,
        base + u"file/below"_s, base + u"missing///"_s};
#ifndef Q_OS_WIN
    QFile::link(base + u"nowhere"_s, base + u"dangling"_s);
    QFile::link(base + u"circle"_s, base + u"circle"_s);
    for (const QString &path : {u"dangling"_s, u"circle/x"_s, u"..."_s}) {
        paths.push_back(base + path);
    }
#endif
    return paths;
}

TEST_F(FileUtilsTest, MetaObjectOffersThreeMethods)
{
    FileUtils utils;
    const QMetaObject *meta = utils.metaObject();
    EXPECT_STREQ(meta->className(), "Vyn::OvraBase::FileUtils");
    std::vector<std::string> methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        methods.push_back(method.typeName() + (" " + method.methodSignature()).toStdString() + " " +
                          method.parameterNames().join(',').toStdString());
    }
    EXPECT_THAT(methods, ElementsAre("QString getFilePathExtension(QString) filePath",
                             "QString getFilePathWithoutExtension(QString) filePath",
                             "QString getDocumentsAbsolutePath(QString) path"));
}

TEST_F(FileUtilsTest, AnswersForStrangePaths)
{
    for (const QString &path : strangePaths(mFolder)) {
        SCOPED_TRACE(path.left(80).toStdString());
        using F = FileUtils;
        const std::initializer_list<bool (*)(const QString &)> kinds{F::exists, F::isFile,
            F::isFolder, F::isNonEmptyFolder, F::isReadable, F::isReadableAndWritable,
            F::checkFileCanBeOpened, F::isImageExt};
        for (const auto is : kinds) {
            EXPECT_FALSE(is(path));
        }
        EXPECT_EQ(FileUtils::isWritable(path), !path.isEmpty());
        EXPECT_FALSE(FileUtils::isFileMoreRecentThan(path, path));
        EXPECT_EQ(FileUtils::getFileSuffix(path), QString());
        EXPECT_TRUE(FileUtils::isValidFileName(FileUtils::ensureValidFileName(path)));
        EXPECT_TRUE(path.startsWith(FileUtils::getFilePathWithoutExtension(path)));
        // Soft or hard, the operations answer too.
        EXPECT_FALSE(FileUtils::copyRecursively(path, mFolder.filePath(u"copy"_s)));
        EXPECT_TRUE(FileUtils::folderParseFiles(path, {}, Recursion::Recursive).empty());
        EXPECT_NO_THROW(FileUtils::removeDirRecursiveIfItExists(path));
        EXPECT_THROW(FileUtils::loadBinaryFile(path), Exception::InvalidArgumentException);
        EXPECT_THROW(FileUtils::fileDataToHash(path), Exception::InvalidArgumentException);
    }
    EXPECT_TRUE(exists("file"));
}

} // namespace
} // namespace Vyn::OvraBase
