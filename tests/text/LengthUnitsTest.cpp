// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/LengthUnits.h>

#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <limits>
#include <optional>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

constexpr double kFoot = 0.30479999999999996;
constexpr double kInch = 0.0254;

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

struct ParseRow {
    const char *name;
    const char16_t *text;
    std::optional<double> meters;
    const char *locale = "C";
    const char16_t *unit = u"m";
};

TEST(ParseLength, TakesTheWholeTextOrNothing)
{
    const std::optional<double> nothing;
    const ParseRow rows[] = {
        {"number and unit", u"12.5 cm", 12.5 * 0.01},
        {"no space", u"3ft", 3 * kFoot},
        {"spaces around", u"\t 2\u00A0\u00A0km ", 2000},
        {"default unit", u"7", 7 * kInch, "C", u"in"},
        {"unknown default that is not needed", u"7 m", 7, "C", u"parsecs"},
        {"unknown default", u"7", nothing, "C", u"parsecs"},
        {"empty", u"", nothing},
        {"space", u" ", nothing},
        {"a unit alone", u"cm", nothing},
        {"words in front", u"about 5 m", nothing},
        {"words behind", u"5 m long", nothing},
        {"other case", u"5 CM", nothing},
        {"a longer word", u"5 metres", nothing},
        {"an area", u"12 m2", nothing},
        // units
        {"prime signs", u"5\u2032 7\u2033", 5 * kFoot + 7 * kInch},
        {"prime signs without a space", u"5\u20327\u2033", 5 * kFoot + 7 * kInch},
        {"quotation marks", u"5' 7\"", 5 * kFoot + 7 * kInch},
        {"three quotation marks", u"12'''", 12 * 0.0021166666666666664},
        {"two words", u"2 Nautical  mile", 3704},
        {"three words", u"1 Copper x unit 1 m", 1.002076993e-13 + 1},
        {"name and abbreviation begin alike", u"2\u6B65 - B\u00F9 1\u6B65", 2 * 1.6 + 1.6},
        // terms
        {"sum", u"3 ft 6 in", 3 * kFoot + 6 * kInch},
        {"sum without spaces", u"3ft6in", 3 * kFoot + 6 * kInch},
        {"last unit missing", u"5'7", 5 * kFoot + 7 * kInch, "C", u"in"},
        {"last unit missing after a letter", u"5 ft 7", 5 * kFoot + 7 * kInch, "C", u"in"},
        {"first unit missing", u"5 7 in", nothing},
        {"comma between terms", u"3 ft, 6 in", nothing},
        // signs
        {"plus", u"+5 km", 5000},
        {"minus holds for the sum", u"-3 ft 6 in", -3 * kFoot - 6 * kInch},
        {"minus zero holds for the sum", u"-0 ft 6 in", -6 * kInch},
        {"sign inside", u"3 ft -6 in", nothing},
        {"two signs", u"--5 m", nothing},
        {"sign alone", u"-", nothing},
        // numbers
        {"exponent", u"1e3 m", 1000},
        {"exponent with a sign", u"1E-3km", 1},
        {"exponent without digits", u"2e", nothing},
        {"exponent without digits, unit", u"2e m", nothing},
        {"exponent with a sign only", u"2e- m", nothing},
        {"leading point", u".5 m", 0.5},
        {"trailing point", u"5.m", 5},
        {"point alone", u".", nothing},
        {"two points", u"1.2.3 m", nothing},
        {"hexadecimal", u"0x10 m", nothing},
        {"infinity", u"inf m", nothing},
        {"too large", u"1e400 m", nothing},
        {"too large in metres", u"1e308 km", nothing},
        {"too large as a sum", u"1.7e308 m 1.7e308 m", nothing},
        // locales
        {"groups", u"1,234.5 m", 1234.5},
        {"misplaced group", u"12,5 cm", nothing},
        {"German", u"1.234,5 m", 1234.5, "de_DE"},
        {"German misplaced group", u"12.5 cm", nothing, "de_DE"},
        {"Swiss group", u"1\u2019234 m", 1234, "de_CH"},
        {"foot and not a group", u"1'234\"", kFoot + 234 * kInch, "de_CH"},
        {"French, no-break space", u"1\u00A0234,5 m", 1234.5, "fr_FR"},
        {"French, narrow no-break space", u"1\u202F234,5 m", 1234.5, "fr_FR"},
        {"French, space", u"1 234,5 m 1 000 mm", 1235.5, "fr_FR"},
        {"French, misplaced space", u"12 34 m", nothing, "fr_FR"},
        {"Swedish minus", u"\u22125 m", -5, "sv_SE"},
        {"Arabic digits", u"\u0665\u066B\u0665 m", 5.5, "ar_EG"},
        {"Arabic digits elsewhere", u"\u0665 m", nothing},
        {"digits of two units", u"\U0001E955 m", 5, "ff_Adlm_GN"},
    };
    for (const ParseRow &row : rows) {
        const QLocale locale(QLatin1String(row.locale));
        EXPECT_EQ(parseLength(QString::fromUtf16(row.text), QString::fromUtf16(row.unit), locale),
            row.meters)
            << row.name;
    }
}

TEST(ParseLength, ReadsEverySpellingAsStringToMeterDoes)
{
    for (const QString &name : availableLengthUnits()) {
        for (const QString &spelling : abbrevations(name) + QList{name}) {
            EXPECT_EQ(parseLength(u"-1.7 "_s + spelling, {}), stringToMeter(u"-1.7"_s, spelling))
                << spelling.toStdString();
        }
    }
}

TEST(ParseLength, TakesLongTexts)
{
    const auto many = [](QStringView part) { return part.toString().repeated(100'000); };
    EXPECT_EQ(parseLength(many(u"1 m "), {}), 100'000);
    EXPECT_EQ(parseLength(many(u"0") + u"1 km"_s, {}), 1000);
    EXPECT_EQ(parseLength(u'2' + many(u"  ") + u"km"_s, {}), 2000);
    for (const QStringView part : {u"1", u"1 ", u"1,", u"e1", u"'", u"-", u"\xD83A"}) {
        EXPECT_EQ(parseLength(many(part), u"m"_s, QLocale(u"fr_FR"_s)), std::nullopt);
    }
}

} // namespace
} // namespace Vyn::OvraBase
