// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/errors/Exception.h>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using Test::Record;
using testing::ElementsAre;

using FilePaths = Test::FolderTest;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

struct Names {
    const char *path;
    const char *folder;
    const char *base;
    const char *extension;
    const char *completeExtension;
    const char *withoutExtension;
    const char *asPng;
};

TEST_F(FilePaths, AddsPathsToAList)
{
    QString paths;
    for (const auto &[added, expected] :
        {std::pair{"", ""}, {"a", "a"}, {"", "a"}, {"b", "a;b"}, {"b;", "a;b;b;"}}) {
        FileUtils::addPathToPaths(paths, text(added));
        EXPECT_EQ(paths, text(expected));
    }
}

TEST_F(FilePaths, TakesPathsApart)
{
    const Names rows[] = {
        {"a/b.tar.gz", "a", "b", "gz", "tar.gz", "a/b", "a/b.png"},
        {"a", ".", "a", "", "", "a", "a.png"},
        {"x/.hidden", "x", "", "hidden", "hidden", "x/", "x/.png"},
        {"x.d/name", "x.d", "name", "", "", "x.d/name", "x.d/name.png"},
        {"x.d/", "x.d", "", "", "", "x.d/", "x.d/.png"},
        {"name.", ".", "name", "", "", "name.", "name..png"},
        {"/", "/", "", "", "", "/", "/.png"},
    };
    for (const Names &row : rows) {
        SCOPED_TRACE(row.path);
        const QString path = text(row.path);
        EXPECT_EQ(FileUtils::extractFolderPath(path), text(row.folder));
        EXPECT_EQ(FileUtils::getBaseName(path), text(row.base));
        EXPECT_EQ(FileUtils::getFilePathExtension(path), text(row.extension));
        EXPECT_EQ(FileUtils::getFilePathCompleteExtension(path), text(row.completeExtension));
        EXPECT_EQ(FileUtils::getFilePathWithoutExtension(path), text(row.withoutExtension));
        EXPECT_EQ(FileUtils::changeFilePathExtension(path, u"png"_s), text(row.asPng));
    }
    EXPECT_EQ(FileUtils::changeFilePathExtension(u"a.b"_s, u".c"_s), u"a..c"_s);
    EXPECT_TRUE(FileUtils::pathAreIdentical(u"a/b"_s, QDir::toNativeSeparators(u"a/b"_s)));
    EXPECT_FALSE(FileUtils::pathAreIdentical(u"a/b"_s, u"a/B"_s));
    EXPECT_FALSE(FileUtils::pathAreIdentical(u"a/b"_s, u"a/x/../b"_s));
}

TEST_F(FilePaths, RefusesExtensionsWithALoggedError)
{
    struct {
        const char *path, *extension, *message;
        int line;
    } const rows[] = {
        {"", "", "FilePath is empty.", 376},
        {"a", "", "Extension is empty.", 380},
        {"a", "b/c", "Extension contains some invalid characters: / or \\", 386},
        {"a", "\\", "Extension contains some invalid characters: / or \\", 386},
    };
    for (const auto &row : rows) {
        EXPECT_THAT(
            [&] { FileUtils::changeFilePathExtension(text(row.path), text(row.extension)); },
            testing::ThrowsMessage<Exception::InvalidArgumentException>(row.message));
        EXPECT_THAT(mLog.take(), ElementsAre(Record{2,
                                     "Debug: FileUtils.cpp:" + std::to_string(row.line) +
                                         " Vyn::OvraBase::FileUtils::changeFilePathExtension()",
                                     row.message}));
    }
}

} // namespace
} // namespace Vyn::OvraBase
