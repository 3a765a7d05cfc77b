// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/UrlUtils_p.h"
#include "support/RecordedLog.h"

#include <ovrabase/files/UrlUtils.h>

#include <QRegularExpression>
#include <QUrl>

#include <gmock/gmock.h>

namespace Vyn::OvraBase::UrlUtils {
namespace {

using Test::Record;
using Test::RecordedLog;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(UrlUtils, BaseNameIsTheDecodedFileNameUpToItsFirstDot)
{
    const std::pair<const char *, const char *> rows[] = {{"file:///x/archive.tar.gz", "archive"},
        {"http://host/a%20b.png?q=1#f", "a b"}, {"http://host/folder/", ""}, {"", ""},
        {"http://host", ""}, {"file:///x/.hidden", ""}, {"plain", "plain"}};
    for (const auto &[url, expected] : rows) {
        EXPECT_EQ(getFileBaseNameFromUrl(QUrl(QString::fromUtf8(url))).toStdString(), expected)
            << url;
    }
}

TEST(UrlUtils, OnlyASlashMakesAFolderNameInvalid)
{
    EXPECT_TRUE(isValidFolderName(QStringLiteral("a\\b:*?")));
    EXPECT_FALSE(isValidFolderName(QStringLiteral("a/b")));
    EXPECT_FALSE(isValidFolderName({}));
}

TEST(UrlUtils, UniqueUrlHoldsANewUuid)
{
    const QUrl url = uniqueUrl(QStringLiteral("tmp"));
    static const QRegularExpression form(
        QStringLiteral("^tmp:[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$"));
    EXPECT_TRUE(form.match(url.toString()).hasMatch()) << url.toString().toStdString();
    EXPECT_NE(url, uniqueUrl(QStringLiteral("tmp")));
}

TEST(UrlUtils, FindsAnImageAmongPaths)
{
    EXPECT_FALSE(urlsContainsImages({}));
    EXPECT_FALSE(urlsContainsImages(
        {QStringLiteral("png"), QStringLiteral("a.png.txt"), QStringLiteral("b.NEF")}));
    EXPECT_TRUE(urlsContainsImages({QStringLiteral("a.txt"), QStringLiteral("x/b.tar.PNG")}));
}

TEST(UrlUtils, NativePathOfAsciiNeedsNoWarning)
{
    const RecordedLog log;
    EXPECT_EQ(toNativePath(QStringLiteral("/a/b%1.txt")), "/a/b%1.txt");
    EXPECT_EQ(toNativePath(QUrl(QStringLiteral("file:///a/b"))), "/a/b");
    EXPECT_EQ(toNativePath(QUrl(QStringLiteral("http://host/a"))), "");
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(UrlUtils, NativePathThatLosesCharactersGetsAWarning)
{
    const RecordedLog log;
    const QString halfSurrogate = QStringLiteral("/a/%1") + QChar(0xD800); // in no encoding
    const std::string native = toNativePath(halfSurrogate);

    EXPECT_TRUE(native.starts_with("/a/%1")) << native;
    const std::string readBack = QString::fromLocal8Bit(native.c_str()).toStdString();
    EXPECT_THAT(log.records(),
        ElementsAre(Record{1, "Support: UrlUtils.cpp:62 Vyn::OvraBase::UrlUtils::toNativePath()",
            "Trying to access file <" + halfSurrogate.toStdString() +
                "> which translates in local text encoding as <" + readBack + ">"}));
}

TEST(UrlUtils, NativePathInAnEncodingThatLacksCharacters)
{
    const auto encode = [](const QString &text) { return text.toLatin1(); };
    const auto decode = [](const QByteArray &bytes) { return QString::fromLatin1(bytes); };

    const NativePath kept = convertToNative(QStringLiteral("/h\u00E9"), encode, decode);
    EXPECT_EQ(kept.bytes, "/h\xE9");
    EXPECT_TRUE(kept.warning.isNull());

    const NativePath lossy = convertToNative(QStringLiteral("/%2\u4E2D"), encode, decode);
    EXPECT_EQ(lossy.bytes, "/%2?");
    EXPECT_EQ(lossy.warning,
        QStringLiteral("Trying to access file </%2\u4E2D> which translates in local text encoding "
                       "as </%2?>"));
}

} // namespace
} // namespace Vyn::OvraBase::UrlUtils
