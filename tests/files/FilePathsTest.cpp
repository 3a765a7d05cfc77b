// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <QMetaMethod>

namespace Vyn::Test {
namespace {

using FilePaths = FolderTest;

TEST_F(FilePaths, AreAddedToAList)
{
    QString paths;
    for (const auto &[added, expected] :
        {std::pair{u""_s, u""_s}, {u"a"_s, u"a"_s}, {u""_s, u"a"_s}, {u"b;"_s, u"a;b;"_s}}) {
        addPathToPaths(paths, added);
        EXPECT_EQ(paths, expected);
    }
}

TEST_F(FilePaths, AreTakenApartAndGetAnotherExtension)
{
    const struct {
        QString path, folder, base, extension, completeExtension, withoutExtension, asPng;
    } rows[] = {
        {u"a/b.tar.gz"_s, u"a"_s, u"b"_s, u"gz"_s, u"tar.gz"_s, u"a/b"_s, u"a/b.png"_s},
        {u"x/.hidden"_s, u"x"_s, u""_s, u"hidden"_s, u"hidden"_s, u"x/"_s, u"x/.png"_s},
        {u"x.d/name"_s, u"x.d"_s, u"name"_s, u""_s, u""_s, u"x.d/name"_s, u"x.d/name.png"_s},
        {u"name."_s, u"."_s, u"name"_s, u""_s, u""_s, u"name."_s, u"name..png"_s},
        {u"/"_s, u"/"_s, u""_s, u""_s, u""_s, u"/"_s, u"/.png"_s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        EXPECT_EQ(extractFolderPath(row.path), row.folder);
        EXPECT_EQ(getBaseName(row.path), row.base);
        EXPECT_EQ(getFilePathExtension(row.path), row.extension);
        EXPECT_EQ(getFilePathCompleteExtension(row.path), row.completeExtension);
        EXPECT_EQ(getFilePathWithoutExtension(row.path), row.withoutExtension);
        EXPECT_EQ(changeFilePathExtension(row.path, u"png"_s), row.asPng);
    }
    EXPECT_EQ(changeFilePathExtension(u"a.b"_s, u".c"_s), u"a..c"_s);
    make("a.tar.gz, folder.d/");
    EXPECT_EQ(getFileSuffix(path("a.tar.gz")), u"tar.gz"_s);
    EXPECT_EQ(getFileSuffix(path("folder.d")), QString());
    EXPECT_TRUE(pathAreIdentical(u"a/b"_s, QDir::toNativeSeparators(u"a/b"_s)));
    EXPECT_FALSE(pathAreIdentical(u"a/b"_s, u"a/B"_s));
    EXPECT_FALSE(pathAreIdentical(u"a/b"_s, u"a/x/../b"_s));
}

TEST_F(FilePaths, TheMetaObjectHasTheFunctionsForCallsByName)
{
    const QMetaObject *meta = FileUtils().metaObject();
    EXPECT_STREQ(meta->className(), "Vyn::OvraBase::FileUtils");
    std::vector<QByteArray> methods;
    for (int i = meta->methodOffset(); i < meta->methodCount(); ++i) {
        const QMetaMethod method = meta->method(i);
        methods.push_back(method.typeName() + (' ' + method.methodSignature()) + ' ' +
                          method.parameterNames().join(','));
    }
    EXPECT_THAT(methods, ElementsAre("QString getFilePathExtension(QString) filePath",
                             "QString getFilePathWithoutExtension(QString) filePath",
                             "QString getDocumentsAbsolutePath(QString) path"));
}

TEST_F(FilePaths, RefuseInvalidExtensions)
{
    const QString separator = u"Extension contains some invalid characters: / or \\"_s;
    const Rows<QString, QString, std::string, QString> rows{
        {"no path", {}, {}, "376", u"FilePath is empty."_s},
        {"no extension", u"a"_s, {}, "380", u"Extension is empty."_s},
        {"slash", u"a"_s, u"b/c"_s, "386", separator},
        {"backslash", u"a"_s, u"\\"_s, "386", separator}};
    forEach(rows, [&](auto path, auto extension, auto line, auto message) {
        expectFailure<Exception::InvalidArgumentException>(
            line + " Vyn::OvraBase::FileUtils::changeFilePathExtension", message, {},
            [&] { changeFilePathExtension(path, extension); });
    });
}

} // namespace
} // namespace Vyn::Test
