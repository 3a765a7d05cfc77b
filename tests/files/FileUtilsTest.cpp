// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/errors/Exception.h>

#include <QDateTime>
#include <QFileInfo>
#include <QMetaMethod>
#include <QUrl>

#include <tuple>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using Test::Record;
using testing::ElementsAre;

using FileUtilsTest = Test::FolderTest;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
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

TEST_F(FileUtilsTest, AddsPathsToAList)
{
    QString paths;
    for (const auto &[added, expected] :
        {std::pair{"", ""}, {"a", "a"}, {"", "a"}, {"b", "a;b"}, {"b;", "a;b;b;"}}) {
        FileUtils::addPathToPaths(paths, text(added));
        EXPECT_EQ(paths, text(expected));
    }
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

TEST_F(FileUtilsTest, TakesPathsApart)
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

TEST_F(FileUtilsTest, RefusesExtensionsWithALoggedError)
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

TEST_F(FileUtilsTest, TellsTheKindOfAPathAndOfALocalUrl)
{
    write("data.tar.gz");
    makeFolder("data.d");
    struct {
        QString path;
        bool exists, isFile, isFolder, isReadable, isWritable, both, isNonEmpty;
    } const rows[] = {
        {mFolder.path(), true, false, true, true, true, true, true},
        {path("data.tar.gz"), true, true, false, true, true, true, false},
        {path("data.d"), true, false, true, true, true, true, false},
        {path("missing.txt"), false, false, false, false, true, false, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.path.toStdString());
        const auto expectSame = [](bool (*ofPath)(const QString &), bool (*ofUrl)(const QUrl &),
                                    const QString &path, bool expected) {
            EXPECT_EQ(ofPath(path), expected);
            EXPECT_EQ(ofUrl(QUrl::fromLocalFile(path)), expected);
            EXPECT_FALSE(ofUrl(QUrl(u"http://host"_s + path)));
            EXPECT_FALSE(ofUrl(QUrl(path))); // no scheme
        };
        using F = FileUtils;
        expectSame(F::exists, F::exists, row.path, row.exists);
        expectSame(F::isFile, F::isFile, row.path, row.isFile);
        expectSame(F::isFolder, F::isFolder, row.path, row.isFolder);
        expectSame(F::isReadable, F::isReadable, row.path, row.isReadable);
        expectSame(F::isWritable, F::isWritable, row.path, row.isWritable);
        expectSame(F::isReadableAndWritable, F::isReadableAndWritable, row.path, row.both);
        expectSame(F::isNonEmptyFolder, F::isNonEmptyFolder, row.path, row.isNonEmpty);
        EXPECT_EQ(F::checkFileCanBeOpened(row.path), row.isFile);
        EXPECT_EQ(F::getFileSuffix(row.path), row.isFile ? u"tar.gz"_s : QString());
    }
    write("data.d/.hidden");
    FileUtils::hideFileOnWindows(path("data.d/.hidden"));
    EXPECT_FALSE(FileUtils::isNonEmptyFolder(path("data.d")));
}

TEST_F(FileUtilsTest, WhatIsMissingIsAsWritableAsItsNearestAncestor)
{
    const QFileInfo root(QDir::rootPath());
    for (const QString &path : {u"nonexistent/deeper/file"_s, QString(5'000, u'a') + u"/file"_s}) {
        EXPECT_EQ(FileUtils::isWritable(QDir::rootPath() + path), root.isWritable());
    }
    EXPECT_TRUE(FileUtils::isWritable(u"missing/below/the/current/folder"_s));
    EXPECT_FALSE(FileUtils::isWritable(QString()));
#ifdef Q_OS_WIN
    EXPECT_FALSE(FileUtils::isWritable(u"Q:/no/such/drive"_s));
#else
    EXPECT_FALSE(FileUtils::isWritable(u"/proc/sys/missing/file"_s));
#endif
}

TEST_F(FileUtilsTest, KnowsRelativeUrls)
{
    for (const auto &[url, isRelative] : {std::pair{"", true}, {"a/b", true}, {"/a", true},
             {"file:a", true}, {"file:///a", false}, {"http:a", false}, {"qrc:/a", false}}) {
        EXPECT_EQ(FileUtils::isRelativeFilePath(QUrl(text(url))), isRelative) << url;
    }
}

TEST_F(FileUtilsTest, ComparesModificationTimes)
{
    write("older");
    write("newer");
    QFile file(path("newer"));
    ASSERT_TRUE(
        file.open(QFile::Append) && file.setFileTime(QDateTime::fromSecsSinceEpoch(4'000'000'000),
                                        QFile::FileModificationTime));
    for (const auto &[one, other, expected] :
        {std::tuple{"newer", "older", true}, {"older", "newer", false}, {"newer", "newer", false},
            {"newer", "missing", false}, {"missing", "older", false}}) {
        EXPECT_EQ(FileUtils::isFileMoreRecentThan(path(one), path(other)), expected)
            << one << ' ' << other;
    }
}

TEST_F(FileUtilsTest, ClassifiesExtensions)
{
    struct Kind {
        const char *name;
        bool (*is)(const QString &);
        std::vector<const char *> yes, no;
    } const kinds[] = {
        {"mesh", FileUtils::isMeshExt, {"usd", "usda", "usdc", "usdz", "obj", "fbx", "gltf", "GLB"},
            {"", ".obj", "objx"}},
        {"slvar", FileUtils::isSLVARExt, {"slvar", "SLVar"}, {"", "slva"}},
        {"filter", FileUtils::isVSKFilterExt, {"vskfilter", "OvraFilter"}, {"filter"}},
        {"quick action", FileUtils::isQuickActionExt, {"ovqa", "OVQA"}, {"ovq"}},
        {"supported", FileUtils::isImageFormatSupported, {"png", "DNG", "Nef", ""}, {"dng", "nef"}},
        {"image", FileUtils::isImageExt, {"png", "JPG", "jpeg", "tif", "exr", "cr2", "svg", "SVG"},
            {"", "txt", "dng", "DNG", "Nef", "svgz", "png\xE4\xB8\xAD"}},
    };
    for (const Kind &kind : kinds) {
        SCOPED_TRACE(kind.name);
        for (const char *ext : kind.yes) {
            EXPECT_TRUE(kind.is(text(ext))) << ext;
        }
        for (const char *ext : kind.no) {
            EXPECT_FALSE(kind.is(text(ext))) << ext;
        }
    }
}

TEST_F(FileUtilsTest, KnowsTheFileNamesOfWindows)
{
    const std::pair<QString, QString> rows[] = {{u"a:b"_s, u"axb"_s},
        {u"\"<>|:*?\\/\t\u001F"_s, u"xxxxxxxxxxx"_s}, {u"con"_s, u"_con"_s},
        {u"CONSOLE"_s, u"CONSOLE"_s}, {u"CON.tar.gz"_s, u"CON.tar.gz"_s}, {u"CON "_s, u"CON "_s},
        {u".."_s, u".."_s}, {u"h\u00E9 ~.x"_s, u"h\u00E9 ~.x"_s}, {u"LPT10"_s, u"LPT10"_s},
        {u" "_s, u" "_s}};
    for (const auto &[name, valid] : rows) {
        EXPECT_EQ(FileUtils::isValidFileName(name), name == valid) << name.toStdString();
        EXPECT_EQ(FileUtils::ensureValidFileName(name), valid);
    }
    EXPECT_TRUE(FileUtils::isValidFileName(QString()));
    EXPECT_EQ(FileUtils::ensureValidFileName(QString()), u"file"_s);
    QStringList devices{u"Con"_s, u"PRN"_s, u"aux"_s, u"nul"_s};
    for (int i = 0; i < 10; ++i) {
        devices << u"Com%1"_s.arg(i) << u"LPT%1"_s.arg(i);
    }
    for (const QString &device : devices) {
        EXPECT_EQ(FileUtils::ensureValidFileName(device + u".x"_s), u'_' + device + u".x"_s);
    }
    for (char16_t control = 1; control < u' '; ++control) {
        EXPECT_FALSE(FileUtils::isValidFileName(QChar(control))) << int{control};
    }

    const QString withNul = u"a"_s + QChar(u'\0') + u":"_s;
    EXPECT_TRUE(FileUtils::isValidFileName(withNul));
    EXPECT_EQ(FileUtils::ensureValidFileName(withNul), u"a"_s);
    EXPECT_EQ(FileUtils::ensureValidFileName(withNul.sliced(1)), QString());
}

TEST_F(FileUtilsTest, GivesUniqueNames)
{
    const auto unique = [&](const QString &baseName, const QString &extension = u"png"_s) {
        return QDir(mFolder.path())
            .relativeFilePath(FileUtils::getUniqueFileName(mFolder.path(), baseName, extension));
    };
    EXPECT_EQ(unique(u"n"_s, {}), u"n."_s);
    makeFolder("dir.png"); // is no file
    EXPECT_EQ(unique(u"img_041"_s), u"img.png"_s);
    for (const auto &[baseName, expected] : {std::pair{u"dir"_s, u"dir.png"_s},
             {u"img_12"_s, u"img_12.png"_s}, {u"img_1234"_s, u"img_1234.png"_s},
             {u"img_\u0661\u0662\u0663"_s, u"img_\u0661\u0662\u0663.png"_s}, {u"%1"_s, u"%1.png"_s},
             {u"img"_s, u"img.png"_s}, {u"img"_s, u"img_001.png"_s},
             {u"img_041"_s, u"img_042.png"_s}, {u"img_009"_s, u"img_010.png"_s},
             {u"img_999"_s, u"img_1000.png"_s}, {u"img_999"_s, u"img_1001.png"_s},
             {u"_123"_s, u".png"_s}, {u"_123"_s, u"_124.png"_s}}) {
        EXPECT_EQ(unique(baseName), expected);
        FileUtils::touch(mFolder.filePath(expected));
    }
}

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
