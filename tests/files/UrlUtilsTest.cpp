// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/RecordedLog.h"

#include <ovrabase/files/UrlUtils.h>

#include <QRegularExpression>
#include <QUrl>

#include <gmock/gmock.h>

namespace Vyn::OvraBase::UrlUtils {
namespace {

using namespace Qt::StringLiterals;
using Test::Record;
using Test::RecordedLog;

TEST(UrlUtils, OnlyASlashMakesAFolderNameInvalid)
{
    EXPECT_TRUE(isValidFolderName(u"a\\b:*?"_s));
    EXPECT_FALSE(isValidFolderName(u"a/b"_s) || isValidFolderName({}));
}

TEST(UrlUtils, BaseNameIsTheDecodedFileNameUpToItsFirstDot)
{
    const std::pair<QString, QString> rows[] = {{u"file:///x/archive.tar.gz"_s, u"archive"_s},
        {u"http://host/a%20b.png?q=1#f"_s, u"a b"_s}, {u"http://host/folder/"_s, u""_s},
        {u"http://host"_s, u""_s}, {u"file:///x/.hidden"_s, u""_s}, {u"plain"_s, u"plain"_s}};
    for (const auto &[url, expected] : rows) {
        EXPECT_EQ(getFileBaseNameFromUrl(QUrl(url)), expected) << url.toStdString();
    }
}

TEST(UrlUtils, UniqueUrlHoldsANewUuid)
{
    const QString url = uniqueUrl(u"tmp"_s).toString();
    static const QRegularExpression form(u"^tmp:[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$"_s);
    EXPECT_TRUE(form.match(url).hasMatch()) << url.toStdString();
    EXPECT_NE(url, uniqueUrl(u"tmp"_s).toString());
}

TEST(UrlUtils, FindsAnImageAmongPaths)
{
    EXPECT_FALSE(urlsContainsImages({u"png"_s, u"a.png.txt"_s, u"b.NEF"_s}));
    EXPECT_TRUE(urlsContainsImages({u"a.txt"_s, u"x/b.tar.PNG"_s}));
}

TEST(UrlUtils, NativePathIsLoggedIfItLosesCharacters)
{
    const RecordedLog log;
    const QString encodable = u"/a/h\u00E9%1.txt"_s;
    EXPECT_EQ(toNativePath(encodable), encodable.toLocal8Bit().toStdString());
    EXPECT_EQ(toNativePath(QUrl(u"file:///a/b"_s)), "/a/b");
    EXPECT_EQ(toNativePath(QUrl(u"http://host/a"_s)), "");
    EXPECT_THAT(log.records(), testing::IsEmpty());

    const QString halfSurrogate = u"/a/%1"_s + QChar(0xD800); // in no encoding
    const std::string native = toNativePath(halfSurrogate);

    EXPECT_TRUE(native.starts_with("/a/%1")) << native;
    const std::string readBack = QString::fromLocal8Bit(native.c_str()).toStdString();
    EXPECT_THAT(log.records(),
        testing::ElementsAre(
            Record{1, "Support: UrlUtils.cpp:62 Vyn::OvraBase::UrlUtils::toNativePath()",
                "Trying to access file <" + halfSurrogate.toStdString() +
                    "> which translates in local text encoding as <" + readBack + ">"}));
}

} // namespace
} // namespace Vyn::OvraBase::UrlUtils
