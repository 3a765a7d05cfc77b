// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

#include <ovrabase/files/UrlUtils.h>

#include <QRegularExpression>
#include <QUrl>

namespace Vyn::Test {
namespace {

using namespace OvraBase::UrlUtils;

using UrlUtils = FolderTest;

TEST_F(UrlUtils, AFolderNameIsInvalidIfItIsEmptyOrContainsASlash)
{
    EXPECT_TRUE(isValidFolderName(u"a\\b:*?"_s));
    EXPECT_FALSE(isValidFolderName(u"a/b"_s) || isValidFolderName({}));
}

TEST_F(UrlUtils, BaseNameIsTheDecodedFileNameUpToItsFirstDot)
{
    EXPECT_EQ(getFileBaseNameFromUrl(QUrl(u"file:///x/archive.tar.gz"_s)), u"archive"_s);
    EXPECT_EQ(getFileBaseNameFromUrl(QUrl(u"http://host/a%20b.png?q=1#f"_s)), u"a b"_s);
    EXPECT_EQ(getFileBaseNameFromUrl(QUrl(u"http://host/folder/"_s)), u""_s);
}

TEST_F(UrlUtils, UniqueUrlHoldsANewUuid)
{
    const QString url = uniqueUrl(u"tmp"_s).toString();
    static const QRegularExpression form(u"^tmp:[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}$"_s);
    EXPECT_TRUE(form.match(url).hasMatch()) << url.toStdString();
    EXPECT_NE(url, uniqueUrl(u"tmp"_s).toString());
}

TEST_F(UrlUtils, FindsAnImageAmongPaths)
{
    EXPECT_FALSE(urlsContainsImages({u"png"_s, u"a.png.txt"_s, u"b.NEF"_s}));
    EXPECT_TRUE(urlsContainsImages({u"a.txt"_s, u"x/b.tar.PNG"_s}));
}

TEST_F(UrlUtils, NativePathIsLoggedIfItLosesCharacters)
{
    const QString encodable = u"/a/h\u00E9%1.txt"_s;
    EXPECT_EQ(toNativePath(encodable), encodable.toLocal8Bit().toStdString());
    EXPECT_EQ(toNativePath(QUrl(u"file:///a/b"_s)), "/a/b");
    EXPECT_EQ(toNativePath(QUrl(u"http://host/a"_s)), "");

    const QString halfSurrogate = u"/a/%1"_s + QChar(0xD800); // no encoding has it
    const std::string native = toNativePath(halfSurrogate);
    EXPECT_TRUE(native.starts_with("/a/%1")) << native;
    const QString message = u"Trying to access file <"_s + halfSurrogate +
                            u"> which translates in local text encoding as <"_s +
                            QString::fromLocal8Bit(native) + u'>';
    EXPECT_THAT(mLog.take(),
        ElementsAre(Record{1, "Support: UrlUtils.cpp:62 Vyn::OvraBase::UrlUtils::toNativePath()",
            message.toStdString()}));
}

} // namespace
} // namespace Vyn::Test
