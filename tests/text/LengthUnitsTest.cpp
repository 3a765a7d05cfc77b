// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/LengthUnits.h>

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <limits>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

TEST(LengthUnits, HaveTheirOrderAndTheirFactorsToTheBit)
{
    static const struct {
        const char16_t *name;
        std::uint64_t bits;
    } kUnits[] = {{u"Ångström", 0x3DDB7CDFD9D7BDBB}, {u"Barleycorn", 0x3F8156F8C3840719},
        {u"步 - Bù", 0x3FF999999999999A}, {u"Cable", 0x406B6E978D4FDF3A},
        {u"Centimeter", 0x3F847AE147AE147B}, {u"Chain", 0x40341DE69AD42C3C},
        {u"尺 - Chǐ", 0x3FD47AE147AE147B}, {u"寸 - Cùn", 0x3FA0624DD2F1A9FC},
        {u"Decimeter", 0x3FB999999999999A}, {u"Fathom", 0x3FFD42C3C9EECBFA},
        {u"分 - Fēn", 0x3F6A36E2EB1C432D}, {u"Foot", 0x3FD381D7DBF487FC},
        {u"Furlong", 0x406925604189374B}, {u"Hand", 0x3FBA027525460AA6},
        {u"毫 - Háo", 0x3F00C6F7A0B5ED8D}, {u"Inch", 0x3F9A027525460AA6},
        {u"Kilometer", 0x408F400000000000}, {u"League", 0x40B2DC083126E978},
        {u"厘 - Lí", 0x3F34F8B588E368F1}, {u"里 - Lǐ", 0x4082000000000000},
        {u"Light-year", 0x4340CE3DFB912360}, {u"Line", 0x3F6156F8C3840719},
        {u"Link", 0x3FC9BFDF7E80389F}, {u"Meter", 0x3FF0000000000000},
        {u"Micrometer", 0x3EB0C6F7A0B5ED8D}, {u"Mile", 0x409925604189374B},
        {u"Millimeter", 0x3F50624DD2F1A9FC}, {u"Nanometer", 0x3E112E0BE826D695},
        {u"Nautical mile", 0x409CF00000000000}, {u"Parsec", 0x435B6804BE5727A2},
        {u"Planck length", 0x38B57BD4D5732988}, {u"Rack unit", 0x3FA6C226809D4951},
        {u"Rod", 0x40141DE69AD42C3C}, {u"Thou", 0x3EFAA242B58735E9},
        {u"Copper x unit", 0x3D3C34B9C87FF2E5}, {u"Yard", 0x3FED42C3C9EECBFA},
        {u"引 - Yǐn", 0x4040000000000000}, {u"丈 - Zhàng", 0x400999999999999A}};
    QList<QString> names;
    for (const auto &unit : kUnits) {
        const QString name = names.emplace_back(QString::fromUtf16(unit.name));
        for (const QString &spelling : abbrevations(name) + QList{name}) {
            EXPECT_EQ(std::bit_cast<std::uint64_t>(stringToMeter(u"1"_s, spelling)), unit.bits)
                << spelling.toStdString();
            EXPECT_EQ(fromMeter(std::bit_cast<double>(unit.bits), spelling), 1.0);
        }
    }
    EXPECT_EQ(availableLengthUnits(), names);
}

TEST(LengthUnits, HaveTheirAbbreviations)
{
    QString all;
    for (const QString &name : availableLengthUnits()) {
        all += abbrevations(name).join(u' ') + u'|';
    }
    EXPECT_EQ(all.toStdString(),
        "Å A|Bc|步|cb|cm|ch|尺|寸|dm|ftm|分|ft \u2032 '|fur|h hh|毫|in \" \u2033|km|lea|厘 釐|里|"
        "ly|L lin \u2034 '''|li lnk|m|\u00B5m|mi|mm|nm|nmi|pc|\u2113P lP|U|rd|th|xu|yd|引|丈|");
    for (const QString &unknown : {u"in"_s, u"inch"_s, u""_s}) {
        EXPECT_TRUE(abbrevations(unknown).isEmpty()) << unknown.toStdString();
    }
    for (const QString &unknown : {u"furlongs"_s, u"M"_s, QString()}) {
        EXPECT_EQ(fromMeter(1, unknown), 0) << unknown.toStdString();
    }
    EXPECT_EQ(fromMeter(-2500, u"km"_s), -2.5);
}

TEST(StringToMeter, ReadsTheFirstLength)
{
    constexpr double kFoot = 0.30479999999999996;
    const struct {
        const char16_t *value, *unit;
        double meters;
    } rows[] = {{u"12.5 cm", u"m", 0.125}, {u"3ft", u"", kFoot * 3}, {u"7", u"in", 7 * 0.0254},
        {u"7", u"parsecs", 7}, {u"-1.5e3 mm", u"m", -1.5}, {u"NaN", u"m", 0}, {u" nan 3", u"m", 3},
        {u"", u"m", 0}, {u"abc", u"km", 0},
        // what stands around, and between number and unit
        {u"about -+5 km, 7 m", u"m", 5000}, {u"5\t\n\v\f\r km", u"m", 5000},
        {u"5\u00A0km", u"m", 5}, {u"5_km", u"m", 5}, {u"5 - km", u"m", 5}, {u"1,5 km", u"m", 1},
        {u"\xD800 5\xD800km", u"m", 5}, {u"٣ 5km", u"m", 5000},
        // numbers
        {u".5", u"m", 0.5}, {u"5.", u"m", 5}, {u"+5", u"m", 5}, {u"1.2.3 km", u"m", 0},
        {u". 5", u"m", 0}, {u"1e400", u"m", 0}, {u"-1e400 km", u"m", 0}, {u"1e-400", u"m", 0},
        {u"1e308 km", u"m", std::numeric_limits<double>::infinity()}, {u"2e3", u"m", 2000},
        {u"2E+3km", u"m", 2e6}, {u"2e km", u"mm", 0.002}, // "e" is the unit
        {u"2e-km", u"mm", 0.002}, {u"2em", u"mm", 0.002}, {u"2e٣", u"m", 2},
        // units
        {u"2 Nautical mile", u"m", 2}, {u"2 Light-year", u"m", 2}, {u"2'", u"m", 2},
        {u"2", u"'", kFoot * 2}, {u"2 尺", u"m", 0.64}, {u"2 Å", u"m", 2e-10},
        {u"2 A\u030A", u"m", 2}, // decomposed, and so another spelling
        {u"2 \u2113P", u"m", 2 * 1.61625518e-35}, {u"2 m*", u"km", 2000},
        {u"2 m\U0001D426", u"km", 2000}, // a letter of two UTF-16 units
        {u"2 m2", u"km", 2}, {u"2 M", u"km", 2000}, {u"2 meter", u"?", 2}};
    for (const auto &row : rows) {
        const QString value = QString::fromUtf16(row.value);
        EXPECT_EQ(stringToMeter(value, QString::fromUtf16(row.unit)), row.meters)
            << value.toStdString();
    }
    EXPECT_TRUE(std::signbit(stringToMeter(u"-0 km"_s, QString())));
}

TEST(StringToMeter, TakesLongTexts)
{
    const auto many = [](QChar c) { return QString(1'000'000, c); };
    EXPECT_EQ(stringToMeter(many(u'1'), u"m"_s), 0);
    EXPECT_EQ(stringToMeter(many(u'0') + u"1 km"_s, u"m"_s), 1000);
    EXPECT_EQ(stringToMeter(many(u'.') + u"5 km"_s, u"m"_s), 0);
    EXPECT_EQ(stringToMeter(u"2e"_s + many(u'0') + u"1 km"_s, u"m"_s), 20000);
    EXPECT_EQ(stringToMeter(u'2' + many(u' ') + u"km"_s, u"m"_s), 2000);
    EXPECT_EQ(stringToMeter(u"2 "_s + many(u'k'), u"km"_s), 2000);
    EXPECT_EQ(stringToMeter(many(u'+') + u'2', u"km"_s), 2000);
    EXPECT_EQ(stringToMeter(many(u'x'), u"km"_s), 0);
}

} // namespace
} // namespace Vyn::OvraBase
