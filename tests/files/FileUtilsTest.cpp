// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <QMetaMethod>

namespace Vyn::Test {
namespace {

using FileUtilsTest = FolderTest;

TEST_F(FileUtilsTest, OffersThreeMethodsThroughItsMetaObject)
{
    const QMetaObject *meta = FileUtils().metaObject();
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

TEST_F(FileUtilsTest, AnswersForPathsAtWhichNothingIs)
{
    make("file");
    std::vector<QString> paths{path("a") + u"\0b"_s, path("x") + QString(100'000, u'a'),
        path("x") + u"a/"_s.repeated(50'000), path("x") + QChar(0xD800),
        path("x") + QChar(0xDC00) + u"/x"_s, path("file/below"), path("missing///"), {}};
#ifndef Q_OS_WIN
    link("nowhere", "dangling");
    link("circle", "circle");
    paths.insert(paths.end(), {path("dangling"), path("circle/x"), path("...")});
#endif
    for (const QString &missing : paths) {
        SCOPED_TRACE(missing.left(80).toStdString());
        using F = FileUtils;
        const std::initializer_list<bool (*)(const QString &)> kinds{F::exists, F::isFile,
            F::isFolder, F::isNonEmptyFolder, F::isReadable, F::isReadableAndWritable,
            F::checkFileCanBeOpened, F::isImageExt};
        for (const auto is : kinds) {
            EXPECT_FALSE(is(missing));
        }
        EXPECT_EQ(F::isWritable(missing), !missing.isEmpty());
        EXPECT_FALSE(F::isFileMoreRecentThan(missing, missing));
        EXPECT_EQ(F::getFileSuffix(missing), QString());
        EXPECT_TRUE(F::isValidFileName(F::ensureValidFileName(missing)));
        EXPECT_TRUE(missing.startsWith(F::getFilePathWithoutExtension(missing)));
        EXPECT_FALSE(F::copyRecursively(missing, path("copy")));
        EXPECT_TRUE(F::folderParseFiles(missing, {}, Recursion::Recursive).empty());
        F::removeDirRecursiveIfItExists(missing);
        EXPECT_THROW(F::loadBinaryFile(missing), Exception::InvalidArgumentException);
    }
    EXPECT_TRUE(exists(path("file")));
}

} // namespace
} // namespace Vyn::Test
