// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/LengthUnits.h>

#include <QHash>
#include <QStringView>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace Vyn::OvraBase {
namespace {

struct LengthUnit {
    QStringView name;
    QStringView abbreviations[4]; ///< empty after the last one
    double metersPerUnit;
};

// The order is the order for display. Each factor has exactly the bits that the definition of the
// unit gives when it is computed in double: a foot is 12 * 0.0254, which is not the double 0.3048.
// clang-format off
constexpr LengthUnit kUnits[] = {
    {u"Ångström", {u"Å", u"A"}, 1e-10},
    {u"Barleycorn", {u"Bc"}, 0.008466666666666666},
    {u"步 - Bù", {u"步"}, 1.6},
    {u"Cable", {u"cb"}, 219.45599999999996},
    {u"Centimeter", {u"cm"}, 0.01},
    {u"Chain", {u"ch"}, 20.116799999999998},
    {u"尺 - Chǐ", {u"尺"}, 0.32},
    {u"寸 - Cùn", {u"寸"}, 0.032},
    {u"Decimeter", {u"dm"}, 0.1},
    {u"Fathom", {u"ftm"}, 1.8287999999999998},
    {u"分 - Fēn", {u"分"}, 0.0032},
    {u"Foot", {u"ft", u"′", u"'"}, 0.30479999999999996},
    {u"Furlong", {u"fur"}, 201.16799999999998},
    {u"Hand", {u"h", u"hh"}, 0.1016},
    {u"毫 - Háo", {u"毫"}, 3.2e-05},
    {u"Inch", {u"in", u"\"", u"″"}, 0.0254},
    {u"Kilometer", {u"km"}, 1000.0},
    {u"League", {u"lea"}, 4828.031999999999},
    {u"厘 - Lí", {u"厘", u"釐"}, 0.00032},
    {u"里 - Lǐ", {u"里"}, 576.0},
    {u"Light-year", {u"ly"}, 9460730472580800.0},
    {u"Line", {u"L", u"lin", u"‴", u"'''"}, 0.0021166666666666664},
    {u"Link", {u"li", u"lnk"}, 0.20116799999999999},
    {u"Meter", {u"m"}, 1.0},
    {u"Micrometer", {u"µm"}, 1e-06},
    {u"Mile", {u"mi"}, 1609.3439999999998},
    {u"Millimeter", {u"mm"}, 0.001},
    {u"Nanometer", {u"nm"}, 1e-09},
    {u"Nautical mile", {u"nmi"}, 1852.0},
    {u"Parsec", {u"pc"}, 3.085677581491367e+16},
    {u"Planck length", {u"ℓP", u"lP"}, 1.61625518e-35},
    {u"Rack unit", {u"U"}, 0.044449999999999996},
    {u"Rod", {u"rd"}, 5.0291999999999994},
    {u"Thou", {u"th"}, 2.5399999999999997e-05},
    {u"Copper x unit", {u"xu"}, 1.002076993e-13},
    {u"Yard", {u"yd"}, 0.9143999999999999},
    {u"引 - Yǐn", {u"引"}, 32.0},
    {u"丈 - Zhàng", {u"丈"}, 3.2},
};
// clang-format on

/// Returns the metres per \a unit, a name or an abbreviation. Returns nothing for an unknown unit.
std::optional<double> factorOf(QStringView unit)
{
    // Never destroyed: destructors of static objects may convert lengths.
    static const auto &index = *new const QHash<QStringView, double>([] {
        QHash<QStringView, double> factors;
        for (const LengthUnit &known : kUnits) {
            factors.insert(known.name, known.metersPerUnit);
            for (const QStringView abbreviation : known.abbreviations) {
                if (!abbreviation.isEmpty()) {
                    factors.insert(abbreviation, known.metersPerUnit);
                }
            }
        }
        return factors;
    }());
    const auto found = index.constFind(unit);
    return found == index.cend() ? std::nullopt : std::optional(*found);
}

/// A length as it is found in a text.
struct Length {
    QStringView number; ///< empty if there is none
    QStringView unit;   ///< empty if there is none
};

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isDigitOrPoint(QChar c)
{
    return isDigit(c) || c == u'.';
}

bool isSign(QChar c)
{
    return c == u'+' || c == u'-';
}

bool isSpace(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

/// Returns the end of the exponent that begins at \a at, or \a at if there is none.
const QChar *skipExponent(const QChar *at, const QChar *end)
{
    if (at == end || (*at != u'e' && *at != u'E')) {
        return at;
    }
    const QChar *digits = at + 1;
    if (digits != end && isSign(*digits)) {
        ++digits;
    }
    const QChar *const digitsEnd = std::find_if_not(digits, end, isDigit);
    return digitsEnd == digits ? at : digitsEnd;
}

/// Returns the end of the letters, combining marks and asterisks that begin at \a at.
const QChar *skipUnit(const QChar *at, const QChar *end)
{
    while (at != end) {
        const bool isPair = at->isHighSurrogate() && at + 1 != end && at[1].isLowSurrogate();
        const char32_t c = isPair ? QChar::surrogateToUcs4(at[0], at[1]) : at->unicode();
        if (c != U'*' && !QChar::isLetter(c) && !QChar::isMark(c)) {
            break;
        }
        at += isPair ? 2 : 1;
    }
    return at;
}

/// Finds the first match of "([+-]?[\d.]+(?:[eE][-+]?\d+)?)\s*([\pL\pM*]+)?". One pass is enough:
/// no repetition is ever shortened, and an "e" that begins no exponent belongs to the unit.
/// QRegularExpression is not used: it finds no match in texts with unpaired surrogates.
Length findLength(QStringView text)
{
    const QChar *const end = text.end();
    const QChar *const digits = std::find_if(text.begin(), end, isDigitOrPoint);
    if (digits == end) {
        return {};
    }
    const bool hasSign = digits != text.begin() && isSign(digits[-1]);
    const QChar *const numberEnd = skipExponent(std::find_if_not(digits, end, isDigitOrPoint), end);
    const QChar *const unit = std::find_if_not(numberEnd, end, isSpace);
    return {{hasSign ? digits - 1 : digits, numberEnd}, {unit, skipUnit(unit, end)}};
}

/// Finds the end of a number that is written in the form of a locale.
class NumberSyntax {
public:
    /// The functions expect texts in which each sequence of white space is one U+0020.
    explicit NumberSyntax(const QLocale &locale)
        : mPoint(locale.decimalPoint())
        , mGroup(locale.groupSeparator())
        , mExponential(locale.exponential())
    {
        if (mGroup.trimmed().isEmpty()) {
            mGroup = QStringLiteral(" ");
        }
    }

    bool startsNumber(QStringView text) const
    {
        return digitSize(text) > 0 || sizeOf(mPoint, text) > 0;
    }

    /// Returns the size of \a text up to the end of its first number. Text in front of the number
    /// is included, because QLocale decides whether it is a sign.
    qsizetype numberEnd(QStringView text) const
    {
        qsizetype end = 0;
        while (end < text.size() && !startsNumber(text.sliced(end))) {
            ++end;
        }
        while (const qsizetype size = partSize(text.sliced(end))) {
            end += size;
        }
        return end;
    }

private:
    /// Returns the size of the digit at the start of \a text, or 0. A digit of some scripts is a
    /// surrogate pair.
    static qsizetype digitSize(QStringView text)
    {
        if (text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate()) {
            return QChar::isDigit(QChar::surrogateToUcs4(text[0], text[1])) ? 2 : 0;
        }
        return !text.isEmpty() && text[0].isDigit() ? 1 : 0;
    }

    /// Returns the size of \a part if \a text starts with it in any letter case, else 0.
    static qsizetype sizeOf(QStringView part, QStringView text)
    {
        return text.startsWith(part, Qt::CaseInsensitive) ? part.size() : 0;
    }

    /// Returns the size of the next part of a number at the start of \a text, or 0. A part is a
    /// digit, a decimal point, a group separator with the digit after it, or the start of an
    /// exponent with its first digit.
    qsizetype partSize(QStringView text) const
    {
        if (startsNumber(text)) {
            return std::max(digitSize(text), sizeOf(mPoint, text));
        }
        if (const qsizetype group = sizeOf(mGroup, text)) {
            const qsizetype digit = digitSize(text.sliced(group));
            return digit > 0 ? group + digit : 0;
        }
        const qsizetype letter = std::max(sizeOf(mExponential, text), sizeOf(u"e", text));
        if (letter == 0) {
            return 0;
        }
        const QStringView exponent = text.sliced(letter);
        const qsizetype sign =
            !exponent.isEmpty() && QStringView(u"+-\u2212").contains(exponent[0]) ? 1 : 0;
        const qsizetype digit = digitSize(exponent.sliced(sign));
        return digit > 0 ? letter + sign + digit : 0;
    }

    QString mPoint;
    QString mGroup;
    QString mExponential;
};

/// Returns the longest name or abbreviation of a unit at the start of \a text. Empty if there is
/// none.
QStringView unitAtStart(QStringView text)
{
    static constexpr qsizetype kLongest = std::max_element(
        std::begin(kUnits), std::end(kUnits), [](const LengthUnit &a, const LengthUnit &b) {
            return a.name.size() < b.name.size();
        })->name.size();
    QStringView unit = text.first(std::min(kLongest, text.size()));
    while (!unit.isEmpty() && !factorOf(unit)) {
        unit.chop(1);
    }
    return unit;
}

/// Returns \a text without its first \a size code units, and without one space after them.
QStringView after(QStringView text, qsizetype size)
{
    const QStringView rest = text.sliced(size);
    return rest.startsWith(u' ') ? rest.sliced(1) : rest;
}

} // namespace

QList<QString> availableLengthUnits()
{
    QList<QString> names;
    names.reserve(std::size(kUnits));
    for (const LengthUnit &unit : kUnits) {
        names.append(unit.name.toString());
    }
    return names;
}

QList<QString> abbrevations(const QString &unitName)
{
    QList<QString> abbreviations;
    const auto *const unit = std::find_if(std::begin(kUnits), std::end(kUnits),
        [&unitName](const LengthUnit &known) { return known.name == unitName; });
    if (unit != std::end(kUnits)) {
        for (const QStringView abbreviation : unit->abbreviations) {
            if (!abbreviation.isEmpty()) {
                abbreviations.append(abbreviation.toString());
            }
        }
    }
    return abbreviations;
}

double fromMeter(double meters, const QString &unit)
{
    const std::optional<double> factor = factorOf(unit);
    return factor ? meters / *factor : 0.0;
}

double stringToMeter(const QString &value, const QString &defaultUnit)
{
    const Length length = findLength(value);
    bool isNumber = false;
    const double converted = length.number.toDouble(&isNumber);
    const double number = isNumber ? converted : 0.0; // an overflow gives infinity and false
    std::optional<double> factor = factorOf(length.unit);
    if (!factor) {
        factor = factorOf(defaultUnit);
    }
    return factor ? number * *factor : number;
}

std::optional<double> parseLength(
    const QString &text, const QString &defaultUnit, const QLocale &locale)
{
    // White space at both ends is removed, and each other sequence of it becomes one U+0020. Some
    // names of units contain a U+0020, and QLocale accepts it in place of a group separator that is
    // another kind of space.
    const QString line = text.simplified();
    const NumberSyntax syntax(locale);
    double sum = 0;
    double sign = 0; // 0 before the first term
    QStringView rest = line;
    do {
        const qsizetype numberEnd = syntax.numberEnd(rest);
        bool isNumber = false;
        const double number = locale.toDouble(rest.first(numberEnd), &isNumber);
        const bool isFirst = sign == 0;
        if (!isNumber || !(isFirst || syntax.startsNumber(rest))) {
            return {};
        }
        // "12 m2" is an area. It must not be read as 12 m and 2 of the default unit.
        const bool needsUnit = !isFirst && rest.data()[-1].isLetter();
        rest = after(rest, numberEnd);

        const QStringView unit = unitAtStart(rest);
        if (unit.isEmpty() && (needsUnit || !rest.isEmpty())) {
            return {};
        }
        const std::optional<double> factor = factorOf(unit.isEmpty() ? defaultUnit : unit);
        if (!factor) {
            return {};
        }
        rest = after(rest, unit.size());

        if (isFirst) {
            sign = std::signbit(number) ? -1 : 1;
            sum = number * *factor;
        } else {
            sum += sign * number * *factor;
        }
    } while (!rest.isEmpty());
    return std::isfinite(sum) ? std::optional(sum) : std::nullopt;
}

} // namespace Vyn::OvraBase
