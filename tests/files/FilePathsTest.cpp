// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

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

TEST_F(FilePaths, AreTakenApart)
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
    EXPECT_TRUE(pathAreIdentical(u"a/b"_s, QDir::toNativeSeparators(u"a/b"_s)));
    EXPECT_FALSE(pathAreIdentical(u"a/b"_s, u"a/B"_s));
    EXPECT_FALSE(pathAreIdentical(u"a/b"_s, u"a/x/../b"_s));
}

TEST_F(FilePaths, RefuseInvalidExtensions)
{
    const QString separator = u"Extension contains some invalid characters: / or \\"_s;
    const struct {
        QString path, extension, message;
        std::string line;
    } rows[] = {{u""_s, u""_s, u"FilePath is empty."_s, "376"},
        {u"a"_s, u""_s, u"Extension is empty."_s, "380"}, {u"a"_s, u"b/c"_s, separator, "386"},
        {u"a"_s, u"\\"_s, separator, "386"}};
    for (const auto &row : rows) {
        expectFailure<Exception::InvalidArgumentException>(
            [&] { changeFilePathExtension(row.path, row.extension); },
            row.line + " Vyn::OvraBase::FileUtils::changeFilePathExtension", row.message);
    }
}

} // namespace
} // namespace Vyn::Test
