// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/LengthUnits.h>

#include <QCryptographicHash>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <optional>

namespace Vyn::OvraBase {
namespace {

using namespace Qt::StringLiterals;

constexpr double kFoot = 0.30479999999999996;
constexpr double kInch = 0.0254;

TEST(LengthUnits, HaveTheirOrderAbbreviationsAndFactorsToTheBit)
{
    QString units;
    for (const QString &name : availableLengthUnits()) {
        const double factor = stringToMeter(u"1"_s, name);
        const QString exact = QString::number(factor, 'g', QLocale::FloatingPointShortest);
        units += name + u'|' + abbrevations(name).join(u' ') + u'|' + exact + u'\n';
        for (const QString &spelling : abbrevations(name) + QList{name}) {
            SCOPED_TRACE(spelling.toStdString());
            EXPECT_EQ(stringToMeter(u"1"_s, spelling), factor);
            EXPECT_EQ(fromMeter(-4 * factor, spelling), -4);
            EXPECT_EQ(parseLength(u"-1.7 "_s + spelling, {}), -1.7 * factor);
        }
    }
    // The second of the 38 lines is "Barleycorn|Bc|0.008466666666666666".
    const QByteArray text = units.toUtf8();
    EXPECT_EQ(QCryptographicHash::hash(text, QCryptographicHash::Md5).toHex().toStdString(),
        "ae2a2019db70bf203dc465855745fa0e")
        << text.constData();
}

TEST(LengthUnits, AreUnknownInAnySpellingButTheirOwn)
{
    for (const QString &unknown : {u"M"_s, u"inch"_s, QString()}) {
        EXPECT_EQ(fromMeter(1, unknown), 0) << unknown.toStdString();
    }
    EXPECT_TRUE(abbrevations(u"in"_s).isEmpty()) << "takes names only";
}

TEST(LengthUnits, StringToMeterReadsTheFirstLengthOfAText)
{
    const struct {
        const char16_t *text, *defaultUnit;
        double meters;
    } rows[] = {{u"12.5 cm", u"m", 0.125}, {u"3ft", u"", kFoot * 3}, {u"7", u"in", 7 * kInch},
        {u"7", u"parsecs", 7}, {u"-1.5e3 mm", u"m", -1.5}, {u"", u"m", 0},
        // before the number, and between number and unit
        {u"about -+5 km, 7 m", u"m", 5000}, {u"٣ 5\t\n\v\f\r km", u"m", 5000},
        {u"5\u00A0km", u"m", 5}, {u"1,5 km", u"m", 1}, {u"\xD800 5\xD800km", u"m", 5},
        // numbers
        {u".5", u"m", 0.5}, {u"1.2.3 km", u"m", 0}, {u"1e400", u"m", 0},
        {u"1e308 km", u"m", std::numeric_limits<double>::infinity()}, {u"2E+3km", u"m", 2e6},
        {u"2e km", u"mm", 0.002}, // "e" is the unit
        {u"2e-km", u"mm", 0.002},
        // units
        {u"2 Nautical mile", u"m", 2}, {u"2'", u"m", 2}, {u"2 尺", u"m", 0.64},
        {u"2 m*", u"km", 2000}, {u"2 m2", u"km", 2},
        {u"2 m\u030A", u"km", 2000},      // a combining mark
        {u"2 m\U0001D426", u"km", 2000}}; // a letter of two UTF-16 units
    for (const auto &row : rows) {
        const QString text = QString::fromUtf16(row.text);
        EXPECT_EQ(stringToMeter(text, QString::fromUtf16(row.defaultUnit)), row.meters)
            << text.toStdString();
    }
    EXPECT_TRUE(std::signbit(stringToMeter(u"-0 km"_s, QString())));
}

TEST(LengthUnits, ParseLengthTakesTheWholeTextOrNothing)
{
    const std::optional<double> nothing;
    const struct {
        const char *name;
        const char16_t *text;
        std::optional<double> meters;
        const char16_t *defaultUnit = u"m";
        const char *locale = "C";
    } rows[] = {{"spaces", u"\t 12.5\u00A0\u00A0cm ", 12.5 * 0.01},
        {"default unit", u"7", 7 * kInch, u"in"}, {"unknown default", u"7", nothing, u"parsecs"},
        {"words in front", u"about 5 m", nothing}, {"words behind", u"5 m long", nothing},
        {"other case", u"5 CM", nothing}, {"an area", u"12 m2", nothing},
        {"prime signs", u"5\u20327\u2033", 5 * kFoot + 7 * kInch},
        {"three quotation marks", u"12'''", 12 * 0.0021166666666666664},
        // terms
        {"sum without spaces", u"3ft6in", 3 * kFoot + 6 * kInch},
        {"last unit missing", u"5'7", 5 * kFoot + 7 * kInch, u"in"},
        {"last unit missing after a letter", u"5 ft 7", 5 * kFoot + 7 * kInch, u"in"},
        {"first unit missing", u"5 7 in", nothing},
        // signs
        {"plus", u"+5 km", 5000, u"parsecs"},
        {"minus of the sum", u"-3 ft 6 in", -3 * kFoot - 6 * kInch},
        {"minus zero", u"-0 ft 6 in", -6 * kInch}, {"sign inside", u"3 ft -6 in", nothing},
        // numbers
        {"exponent", u"1E-3km", 1}, {"exponent without digits", u"2e", nothing},
        {"exponent of a sign", u"2e- m", nothing}, {"leading point", u".5 m", 0.5},
        {"point alone", u".", nothing}, {"too large", u"1.7e308 m 1.7e308 m", nothing},
        // locales
        {"groups", u"1,234.5 m", 1234.5}, {"Swiss group", u"1\u2019234 m", 1234, u"m", "de_CH"},
        {"foot and not a group", u"1'234\"", kFoot + 234 * kInch, u"m", "de_CH"},
        {"French spaces", u"1 234,5 m 1\u202F000 mm", 1235.5, u"m", "fr_FR"},
        {"Swedish minus", u"\u22125 m", -5, u"m", "sv_SE"},
        {"Arabic digits", u"\u0665\u066B\u0665 m", 5.5, u"m", "ar_EG"},
        {"digits of two units", u"\U0001E955 m", 5, u"m", "ff_Adlm_GN"}};
    for (const auto &row : rows) {
        const auto parsed = parseLength(QString::fromUtf16(row.text),
            QString::fromUtf16(row.defaultUnit), QLocale(QLatin1String(row.locale)));
        EXPECT_EQ(parsed, row.meters) << row.name;
    }
}

TEST(LengthUnits, BothFunctionsReadLongTextsInLinearTime)
{
    const auto many = [](QStringView part) { return part.toString().repeated(100'000); };
    const struct {
        QString text;
        double meters;
        std::optional<double> parsed;
    } rows[] = {{many(u"1"), 0, {}}, {many(u"0") + u"1 km"_s, 1000, 1000},
        {many(u".") + u"5 km"_s, 0, {}}, {u"2e"_s + many(u"0") + u"1 km"_s, 20000, 20000},
        {u'2' + many(u" ") + u"km"_s, 2000, 2000}, {u"2 "_s + many(u"k"), 2, {}},
        {many(u"+") + u'2', 2, {}}, {many(u"1 m "), 1, 100'000}, {many(u"1 "), 1, {}},
        {many(u"1,"), 1, {}}, {many(u"e1"), 10, {}}, {many(u"'"), 0, {}}, {many(u"\xD83A"), 0, {}}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text.first(5).toStdString());
        EXPECT_EQ(stringToMeter(row.text, u"m"_s), row.meters);
        EXPECT_EQ(parseLength(row.text, u"m"_s, QLocale(u"fr_FR"_s)), row.parsed);
    }
}

} // namespace
} // namespace Vyn::OvraBase
