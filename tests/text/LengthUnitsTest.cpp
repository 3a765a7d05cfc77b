// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/LengthUnits.h>

#include <QCryptographicHash>

#include <gmock/gmock.h>

#include <cmath>

namespace {

using namespace Vyn::OvraBase;
using namespace Qt::StringLiterals;

constexpr double kFoot = 0.30479999999999996;
constexpr double kInch = 0.0254;

TEST(LengthUnits, HaveTheirOrderAbbreviationsAndFactorsToTheBitAndNoOtherSpelling)
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
    EXPECT_EQ(fromMeter(1, u"M"_s), 0);
    EXPECT_TRUE(abbrevations(u"in"_s).isEmpty()) << "takes names only";
}

TEST(LengthUnits, StringToMeterReadsTheFirstLengthAndParseLengthTheWholeTextOrNothing)
{
    const std::optional<double> nothing;
    const auto many = [](QStringView part) { return part.toString().repeated(100'000); };
    const struct {
        QString text;
        double first;
        std::optional<double> whole;
        QString defaultUnit = u"m"_s;
        QLocale locale = QLocale::c();
    } rows[] = {{u"12.5 cm"_s, 0.125, 0.125}, {u"3ft"_s, 3 * kFoot, 3 * kFoot, u""_s},
        {u"7"_s, 7 * kInch, 7 * kInch, u"in"_s}, {u"7"_s, 7, nothing, u"parsecs"_s},
        // text and spaces
        {u"about -+5 km, 7 m"_s, 5000, nothing}, {u"5 m long"_s, 5, nothing},
        {u"٣ 5\t\n\v\f\r km"_s, 5000, nothing}, {u"\t 5\u00A0\u00A0km "_s, 5, 5000},
        {u"\xD800 5\xD800km"_s, 5, nothing}, {u"5 km\xDC00"_s, 5000, nothing}, {u""_s, 0, nothing},
        // numbers
        {u".5"_s, 0.5, 0.5}, {u"."_s, 0, nothing}, {u"1.2.3 km"_s, 0, nothing},
        {u"1e400"_s, 0, nothing}, {u"1.7e308 m 1.7e308 m"_s, 1.7e308, nothing},
        {u"1e308 km"_s, INFINITY, nothing}, {u"-1.5e3 mm"_s, -1.5, -1.5}, {u"2E+3km"_s, 2e6, 2e6},
        {u"1E-3km"_s, 1, 1},
        // numbers with the unknown unit "e"
        {u"2e"_s, 2, nothing}, {u"2e km"_s, 0.002, nothing, u"mm"_s},
        {u"2e-km"_s, 0.002, nothing, u"mm"_s},
        // units
        {u"+5 km"_s, 5000, 5000, u"parsecs"_s}, {u"5 CM"_s, 5, nothing},
        {u"2 Nautical mile"_s, 2, 3704}, {u"2'"_s, 2, 2 * kFoot}, {u"2 尺"_s, 0.64, 0.64},
        {u"12'''"_s, 12, 12 * 0.0021166666666666664},
        // not the unit "m": an area (but stringToMeter() ignores the last "2"), and "m" with an
        // asterisk, a combining mark or a letter of two UTF-16 units (unknown units)
        {u"2 m2"_s, 2, nothing, u"km"_s}, {u"2 m*"_s, 2000, nothing, u"km"_s},
        {u"2 m\u030A"_s, 2000, nothing, u"km"_s}, {u"2 m\U0001D426"_s, 2000, nothing, u"km"_s},
        // several terms
        {u"3ft6in"_s, 3 * kFoot, 3 * kFoot + 6 * kInch}, {u"3 ft -6 in"_s, 3 * kFoot, nothing},
        {u"5'7"_s, 5 * kInch, 5 * kFoot + 7 * kInch, u"in"_s},
        {u"5 ft 7"_s, 5 * kFoot, 5 * kFoot + 7 * kInch, u"in"_s}, {u"5 7 in"_s, 5, nothing},
        {u"-3 ft 6 in"_s, -3 * kFoot, -3 * kFoot - 6 * kInch}, {u"-0 ft 6 in"_s, 0, -6 * kInch},
        // locales
        {u"1,5 km"_s, 1, nothing}, {u"1,234.5 m"_s, 1, 1234.5},
        {u"1\u2019234 m"_s, 1, 1234, u"m"_s, QLocale(u"de_CH"_s)},
        {u"1'234\""_s, 1, kFoot + 234 * kInch, u"m"_s, QLocale(u"de_CH"_s)}, // ' for feet
        {u"1 234,5 m 1\u202F000 mm"_s, 1, 1235.5, u"m"_s, QLocale(u"fr_FR"_s)},
        {u"\u22125 m"_s, 5, -5, u"m"_s, QLocale(u"sv_SE"_s)},
        {u"\u0665\u066B\u0665 m"_s, 0, 5.5, u"m"_s, QLocale(u"ar_EG"_s)},
        {u"\U0001E955 m"_s, 0, 5, u"m"_s, QLocale(u"ff_Adlm_GN"_s)}, // a digit of two UTF-16 units
        // in linear time
        {many(u"1"), 0, nothing}, {many(u".") + u"5 km"_s, 0, nothing},
        {u"2e"_s + many(u"0") + u"1 km"_s, 20000, 20000}, {u'2' + many(u" ") + u"km"_s, 2000, 2000},
        {u"2 "_s + many(u"k"), 2, nothing}, {many(u"+") + u'2', 2, nothing},
        {many(u"1 m "), 1, 100'000}, {many(u"1 "), 1, nothing, u"m"_s, QLocale(u"fr_FR"_s)},
        {many(u"e1"), 10, nothing}, {many(u"'"), 0, nothing}, {many(u"\xD83A"), 0, nothing}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text.left(80).toStdString() + " in " + row.locale.name().toStdString());
        EXPECT_EQ(stringToMeter(row.text, row.defaultUnit), row.first);
        EXPECT_EQ(parseLength(row.text, row.defaultUnit, row.locale), row.whole);
    }
    EXPECT_TRUE(std::signbit(stringToMeter(u"-0 km"_s, QString())));
}

} // namespace
