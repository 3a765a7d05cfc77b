// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

using FileNames = Test::FolderTest;

TEST_F(FileNames, KnowsTheFileNamesOfWindows)
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

TEST_F(FileNames, GivesUniqueNames)
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

TEST_F(FileNames, FindsTheFirstFreeNameAmongMany)
{
    const auto unique = [&](const QString &baseName = u"img"_s) {
        return QDir(mFolder.path())
            .relativeFilePath(FileUtils::getUniqueFileName(mFolder.path(), baseName, u"png"_s));
    };
    makeFolder("sub");
    for (const QString &stem : {u"img"_s, u"sub/img"_s}) {
        FileUtils::touch(mFolder.filePath(stem + u".png"_s));
        for (int i = 1; i <= 300; ++i) {
            const QString digits = QString::number(i).rightJustified(3, u'0');
            FileUtils::touch(mFolder.filePath(stem + u'_' + digits + u".png"_s));
        }
    }
    for (const char *alike : {"img_0301.png", "img_301.png.x", "xmg_301.png", "img_3x1.png"}) {
        write(alike);
    }
    EXPECT_EQ(unique(), u"img_301.png"_s);
    EXPECT_EQ(unique(u"img_200"_s), u"img_301.png"_s);
    EXPECT_EQ(unique(u"sub/img"_s), u"sub/img_301.png"_s);

    QFile::remove(path("img_250.png"));
    EXPECT_EQ(unique(), u"img_250.png"_s);
    EXPECT_EQ(unique(u"img_260"_s), u"img_301.png"_s);
    makeFolder("img_250.png");
    EXPECT_EQ(unique(), u"img_250.png"_s);
#ifndef Q_OS_WIN
    QDir().rmdir(path("img_250.png"));
    link("img.png", "img_250.png");
    EXPECT_EQ(unique(), u"img_301.png"_s);
    QFile::remove(path("img_250.png"));
    link("nowhere", "img_250.png");
    EXPECT_EQ(unique(), u"img_250.png"_s);
#endif
}

} // namespace
} // namespace Vyn::OvraBase
