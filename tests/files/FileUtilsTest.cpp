// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMetaMethod>
#include <QTemporaryDir>
#include <QUrl>

#include <gmock/gmock.h>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;
using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(FileUtils, MetaObjectOffersThreeMethods)
{
    const FileUtils utils;
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
    QString result;
    FileUtils called;
    EXPECT_TRUE(QMetaObject::invokeMethod(&called, "getFilePathExtension",
        Q_RETURN_ARG(QString, result), Q_ARG(QString, u"a.tar.gz"_s)));
    EXPECT_EQ(result, u"gz"_s);
}

TEST(FileUtils, AddsPathsToAList)
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

TEST(FileUtils, TakesPathsApart)
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

TEST(FileUtils, RefusesExtensionsWithALoggedError)
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
    RecordedLog log;
    for (const auto &row : rows) {
        EXPECT_THAT(
            [&] { FileUtils::changeFilePathExtension(text(row.path), text(row.extension)); },
            testing::ThrowsMessage<Exception::InvalidArgumentException>(row.message));
        EXPECT_THAT(log.take(), ElementsAre(Record{2,
                                    "Debug: FileUtils.cpp:" + std::to_string(row.line) +
                                        " Vyn::OvraBase::FileUtils::changeFilePathExtension()",
                                    row.message}));
    }
}

TEST(FileUtils, TellsTheKindOfAPathAndOfALocalUrl)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"data.tar.gz"_s);
    const QString subFolder = folder.filePath(u"data.d"_s);
    const QString missing = folder.filePath(u"missing.txt"_s);
    FileUtils::touch(file);
    ASSERT_TRUE(FileUtils::makeFolder(subFolder));

    struct {
        QString path;
        bool exists, isFile, isFolder, isReadable, isWritable, both, isNonEmpty;
    } const rows[] = {
        {folder.path(), true, false, true, true, true, true, true},
        {file, true, true, false, true, true, true, false},
        {subFolder, true, false, true, true, true, true, false},
        {missing, false, false, false, false, true, false, false},
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
    }
    EXPECT_EQ(FileUtils::getFileSuffix(file), u"tar.gz"_s);
    EXPECT_EQ(FileUtils::getFileSuffix(subFolder), QString());
    EXPECT_EQ(FileUtils::getFileSuffix(missing), QString());

    FileUtils::touch(subFolder + u"/.hidden"_s);
    FileUtils::hideFileOnWindows(subFolder + u"/.hidden"_s);
    EXPECT_FALSE(FileUtils::isNonEmptyFolder(subFolder));
}

TEST(FileUtils, WhatIsMissingIsAsWritableAsItsNearestAncestor)
{
    EXPECT_EQ(FileUtils::isWritable(QDir::rootPath() + u"nonexistent/deeper/file.txt"_s),
        QFileInfo(QDir::rootPath()).isWritable());
    EXPECT_EQ(FileUtils::isWritable(QDir::rootPath() + QString(5'000, u'a') + u"/file"_s),
        QFileInfo(QDir::rootPath()).isWritable());
    EXPECT_TRUE(FileUtils::isWritable(u"missing/below/the/current/folder"_s));
    EXPECT_FALSE(FileUtils::isWritable(QString()));
#ifdef Q_OS_WIN
    EXPECT_FALSE(FileUtils::isWritable(u"Q:/no/such/drive"_s));
#endif
}

TEST(FileUtils, KnowsRelativeUrls)
{
    for (const char *url : {"", "a/b", "/a", "file:a", "../x"}) {
        EXPECT_TRUE(FileUtils::isRelativeFilePath(QUrl(text(url)))) << url;
    }
    for (const char *url : {"file:///a", "http:a", "qrc:/a"}) {
        EXPECT_FALSE(FileUtils::isRelativeFilePath(QUrl(text(url)))) << url;
    }
}

TEST(FileUtils, ComparesModificationTimes)
{
    const QTemporaryDir folder;
    const QString older = folder.filePath(u"older"_s);
    const QString newer = folder.filePath(u"newer"_s);
    const QString missing = folder.filePath(u"missing"_s);
    const QDateTime time = QDateTime::fromSecsSinceEpoch(1'000'000'000);
    for (const QString &path : {older, newer}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.setFileTime(
            path == older ? time : time.addSecs(1), QFileDevice::FileModificationTime));
    }
    EXPECT_TRUE(FileUtils::isFileMoreRecentThan(newer, older));
    EXPECT_FALSE(FileUtils::isFileMoreRecentThan(older, newer));
    EXPECT_FALSE(FileUtils::isFileMoreRecentThan(newer, newer));
    EXPECT_FALSE(FileUtils::isFileMoreRecentThan(newer, missing));
    EXPECT_FALSE(FileUtils::isFileMoreRecentThan(missing, older));
}

TEST(FileUtils, ClassifiesExtensions)
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

TEST(FileUtils, KnowsTheFileNamesOfWindows)
{
    struct {
        QString name, valid;
    } const rows[] = {
        {u"a:b"_s, u"axb"_s},
        {u"\"<>|:*?\\/\t\u001F"_s, u"xxxxxxxxxxx"_s},
        {u"nul.txt"_s, u"_nul.txt"_s},
        {u"con"_s, u"_con"_s},
        {u"LPT0"_s, u"_LPT0"_s},
        {u"Com0.x"_s, u"_Com0.x"_s},
    };
    for (const auto &row : rows) {
        EXPECT_FALSE(FileUtils::isValidFileName(row.name)) << row.name.toStdString();
        EXPECT_EQ(FileUtils::ensureValidFileName(row.name), row.valid);
    }
    for (const QString &name :
        {u"CONSOLE"_s, u"CON.tar.gz"_s, u"CON "_s, u".."_s, u"h\u00E9 ~.x"_s, u"LPT10"_s, u" "_s}) {
        EXPECT_TRUE(FileUtils::isValidFileName(name)) << name.toStdString();
        EXPECT_EQ(FileUtils::ensureValidFileName(name), name);
    }
    EXPECT_TRUE(FileUtils::isValidFileName(QString()));
    EXPECT_EQ(FileUtils::ensureValidFileName(QString()), u"file"_s);

    const QString withNul = u"a"_s + QChar(u'\0') + u":"_s;
    EXPECT_TRUE(FileUtils::isValidFileName(withNul));
    EXPECT_EQ(FileUtils::ensureValidFileName(withNul), u"a"_s);
}

TEST(FileUtils, GivesUniqueNames)
{
    const QTemporaryDir folder;
    const auto unique = [&](const QString &baseName, const QString &extension = u"png"_s) {
        return QDir(folder.path())
            .relativeFilePath(FileUtils::getUniqueFileName(folder.path(), baseName, extension));
    };
    EXPECT_EQ(unique(u"img_041"_s), u"img.png"_s);
    EXPECT_EQ(unique(u"img_12"_s), u"img_12.png"_s);
    EXPECT_EQ(unique(u"img_1234"_s), u"img_1234.png"_s);
    EXPECT_EQ(unique(u"img_\u0661\u0662\u0663"_s), u"img_\u0661\u0662\u0663.png"_s);
    EXPECT_EQ(unique(u"%1"_s), u"%1.png"_s);
    EXPECT_EQ(unique(u"n"_s, {}), u"n."_s);

    ASSERT_TRUE(FileUtils::makeFolder(folder.filePath(u"dir.png"_s)));
    EXPECT_EQ(unique(u"dir"_s), u"dir.png"_s);

    for (const auto &[baseName, expected] :
        {std::pair{u"img"_s, u"img.png"_s}, {u"img"_s, u"img_001.png"_s},
            {u"img_041"_s, u"img_042.png"_s}, {u"img_009"_s, u"img_010.png"_s},
            {u"img_999"_s, u"img_1000.png"_s}, {u"img_999"_s, u"img_1001.png"_s},
            {u"_123"_s, u".png"_s}, {u"_123"_s, u"_124.png"_s}}) {
        EXPECT_EQ(unique(baseName), expected);
        FileUtils::touch(folder.filePath(expected));
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

TEST(FileUtils, AnswersForStrangePaths)
{
    const QTemporaryDir folder;
    const RecordedLog log;
    for (const QString &path : strangePaths(folder)) {
        SCOPED_TRACE(path.left(80).toStdString());
        EXPECT_FALSE(FileUtils::exists(path));
        EXPECT_FALSE(FileUtils::isFile(path));
        EXPECT_FALSE(FileUtils::isFolder(path));
        EXPECT_FALSE(FileUtils::isNonEmptyFolder(path));
        EXPECT_FALSE(FileUtils::isReadable(path));
        EXPECT_FALSE(FileUtils::isReadableAndWritable(path));
        EXPECT_EQ(FileUtils::isWritable(path), !path.isEmpty());
        EXPECT_FALSE(FileUtils::checkFileCanBeOpened(path));
        EXPECT_FALSE(FileUtils::isFileMoreRecentThan(path, path));
        EXPECT_EQ(FileUtils::getFileSuffix(path), QString());
        EXPECT_FALSE(FileUtils::isImageExt(path));
        EXPECT_TRUE(FileUtils::isValidFileName(FileUtils::ensureValidFileName(path)));
        EXPECT_TRUE(path.startsWith(FileUtils::getFilePathWithoutExtension(path)));
        // Soft or hard, the operations answer too.
        EXPECT_FALSE(FileUtils::copyRecursively(path, folder.filePath(u"copy"_s)));
        EXPECT_TRUE(FileUtils::folderParseFiles(path, {}, Recursion::Recursive).empty());
        EXPECT_NO_THROW(FileUtils::removeDirRecursiveIfItExists(path));
        EXPECT_THROW(FileUtils::loadBinaryFile(path), Exception::InvalidArgumentException);
        EXPECT_THROW(FileUtils::fileDataToHash(path), Exception::InvalidArgumentException);
    }
    EXPECT_TRUE(FileUtils::exists(folder.filePath(u"file"_s)));
}

} // namespace
} // namespace Vyn::OvraBase
