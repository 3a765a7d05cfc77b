// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/FolderTest.h"

namespace Vyn::Test {
namespace {

class FileNames : public FolderTest {
protected:
    QString unique(const QString &baseName, const QString &extension = u"png"_s) const
    {
        return QDir(mFolder.path())
            .relativeFilePath(getUniqueFileName(mFolder.path(), baseName, extension));
    }
};

TEST_F(FileNames, LoseTheForbiddenCharactersAndDeviceNamesOfWindows)
{
    std::vector<std::tuple<QString, bool, QString>> rows{{u"a:b"_s, false, u"axb"_s},
        {u"\"<>|:*?\\/\u0001\u001F"_s, false, u"xxxxxxxxxxx"_s}, {u"CONSOLE"_s, true, u"CONSOLE"_s},
        {u"CON.tar.gz"_s, true, u"CON.tar.gz"_s}, {u"CON "_s, true, u"CON "_s},
        {u"con"_s, false, u"_con"_s}, {u".."_s, true, u".."_s},
        {u"h\u00E9 ~.x"_s, true, u"h\u00E9 ~.x"_s}, {u"LPT10"_s, true, u"LPT10"_s},
        {{}, true, u"file"_s}, {u"a\0:"_s, true, u"a"_s}, {u"\0:"_s, true, {}}};
    for (const QString &device : u"Con PRN aux nul"_s.split(u' ')) {
        rows.emplace_back(device + u".x"_s, false, u'_' + device + u".x"_s);
    }
    for (int i = 0; i < 10; ++i) {
        rows.emplace_back(u"Com%1.x"_s.arg(i), false, u"_Com%1.x"_s.arg(i));
        rows.emplace_back(u"LPT%1"_s.arg(i), false, u"_LPT%1"_s.arg(i));
    }
    for (const auto &[name, isValid, valid] : rows) {
        EXPECT_EQ(isValidFileName(name), isValid) << name.toStdString();
        EXPECT_EQ(ensureValidFileName(name), valid);
    }
}

TEST_F(FileNames, AreNumberedUntilOneIsFree)
{
    EXPECT_EQ(unique(u"n"_s, {}), u"n."_s);
    const Rows<QString, const char *, QString> rows{
        {"a folder counts as free", u"dir"_s, "dir.png/", u"dir.png"_s},
        {"two digits", u"img_12"_s, "", u"img_12.png"_s},
        {"a letter among digits", u"img_x12"_s, "", u"img_x12.png"_s},
        {"four digits", u"img_1234"_s, "", u"img_1234.png"_s},
        {"Arabic digits", u"i_\u0661\u0662\u0663"_s, "", u"i_\u0661\u0662\u0663.png"_s},
        {"a place holder", u"%1"_s, "", u"%1.png"_s},
        {"only a number", u"_123"_s, ".png", u"_124.png"_s},
        {"the first number", u"img"_s, "img.png", u"img_001.png"_s},
        {"a number that is not needed", u"img_041"_s, "", u"img.png"_s},
        {"leading zeros", u"img_009"_s, "img.png", u"img_010.png"_s},
        {"beyond three digits", u"i_999"_s, "i.png, i_1000.png", u"i_1001.png"_s}};
    forEach(rows, [&](const auto &baseName, const auto &taken, const auto &expected) {
        make(taken);
        EXPECT_EQ(unique(baseName), expected);
    });
}

TEST_F(FileNames, TheFirstFreeOneIsFoundAmongMany)
{
    make("img.png, sub/img.png, img_0301.png, img_301.png.x, xmg_301.png, img_3x1.png");
    for (int i = 1; i <= 300; ++i) {
        write(u"img_%1.png"_s.arg(i, 3, 10, QChar(u'0')));
        write(u"sub/img_%1.png"_s.arg(i, 3, 10, QChar(u'0')));
    }
    for (const QString &baseName : {u"img"_s, u"img_200"_s, u"sub/img"_s}) {
        EXPECT_EQ(unique(baseName), baseName.section(u'_', 0, 0) + u"_301.png"_s);
    }
    QFile::remove(path("img_250.png"));
    make("img_250.png/");
    EXPECT_EQ(unique(u"img"_s), u"img_250.png"_s);
    EXPECT_EQ(unique(u"img_260"_s), u"img_301.png"_s);
#ifndef Q_OS_WIN
    QDir().rmdir(path("img_250.png"));
    make("img_250.png->nowhere");
    EXPECT_EQ(unique(u"img"_s), u"img_250.png"_s);
    make("nowhere");
    EXPECT_EQ(unique(u"img"_s), u"img_301.png"_s);
#endif
}

} // namespace
} // namespace Vyn::Test
