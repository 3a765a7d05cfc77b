// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <QCoreApplication>
#include <QTranslator>

#include <gmock/gmock.h>

#include <cctype>
#include <map>
#include <string>
#include <vector>

namespace Vyn::OvraBase::StringUtils {
namespace {

using namespace Qt::StringLiterals;
using namespace testing;

constexpr int kMega = 1'000'000;

struct Row {
    const char16_t *from;
    const char16_t *to;
};

template<class Function>
void expectRows(Function function, std::initializer_list<Row> rows)
{
    for (const Row &row : rows) {
        const QString from = QString::fromUtf16(row.from);
        EXPECT_EQ(function(from).toStdString(), QString::fromUtf16(row.to).toStdString())
            << "from " << from.toStdString();
    }
}

TEST(GetCopyName, CountsOn)
{
    expectRows(getCopyName,
        {{u"Wall", u"Wall copy"}, {u"Wall copy", u"Wall copy 2"}, {u"Wall copy 2", u"Wall copy 3"},
            {u"A copy 9", u"A copy 10"}, {u"A copy 007", u"A copy 8"},
            {u"A copy 1 copy 4", u"A copy 1 copy 5"}, {u"Wall Copy", u"Wall Copy copy"},
            {u"", u" copy"}, {u"copy", u"copy copy"}, {u" copy", u" copy 2"},
            {u" copy 1", u" copy 2"}, {u"copy 3", u"copy 3 copy"},
            {u"A copy 2 ", u"A copy 2  copy"}, {u"A copy ", u"A copy  copy"},
            {u"A copy  2", u"A copy  2 copy"}, {u"A copy -2", u"A copy -2 copy"},
            {u"A copy ٣", u"A copy ٣ copy"}, // a digit, but not an ASCII one
            {u"%2%1 copy 1", u"%2%1 copy 2"}, {u"%1", u"%1 copy"},
            {u"\xD800 copy 1", u"\xD800 copy 2"}});
    // Counts beyond 32 bits, but does not read them.
    expectRows(getCopyName,
        {{u"A copy 2147483646", u"A copy 2147483647"}, {u"A copy 2147483647", u"A copy 2147483648"},
            {u"A copy 2147483648", u"A copy 1"}, {u"A copy 99999999999", u"A copy 1"}});
    // Takes a line feed for the end of a name.
    expectRows(getCopyName, {{u"A copy 1\n", u"A copy 2"}, {u"A copy 1\n\n", u"A copy 1\n\n copy"},
                                {u"A\nB copy 1", u"A\nB copy 1 copy"},
                                {u"A\rB copy 1", u"A\rB copy 2"}, {u"A copy\n", u"A copy\n copy"}});
}

TEST(GetCopyName, TranslatesTheWord)
{
    struct Translator : QTranslator {
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *text, const char *, int) const override
        {
            const bool isWord = QByteArrayView(context).isEmpty() && QByteArrayView(text) == "copy";
            return isWord ? u"(neue) Kopie"_s : QString();
        }
    } translator;
    QCoreApplication::installTranslator(&translator);
    expectRows(getCopyName,
        {{u"Wand", u"Wand (neue) Kopie"}, {u"Wand (neue) Kopie", u"Wand (neue) Kopie 2"},
            {u"Wand (neue) Kopie 2", u"Wand (neue) Kopie 3"},
            {u"Wand copy", u"Wand copy (neue) Kopie"}});
    QCoreApplication::removeTranslator(&translator);
}

TEST(GetCopyName, TakesLongNames)
{
    const QString name = u" copy 1"_s.repeated(kMega);
    EXPECT_TRUE(getCopyName(name) == name.chopped(1) + u'2');
    EXPECT_TRUE(getCopyName(name + u'x') == name + u"x copy"_s);
    const QString digits(kMega, u'1');
    EXPECT_EQ(getCopyName(u"A copy "_s + digits), u"A copy 1"_s);
}

TEST(MakeValidXmlTag, KeepsWhatAnElementNameMayHold)
{
    expectRows(
        makeValidXMLTag, {{u"3d model", u"dmodel"}, {u"XmLnode", u"node"}, {u".-9", u""},
                             {u"._-", u"_-"}, {u"a b.c", u"ab.c"}, {u"xml123xmlTag", u"Tag"},
                             {u"xm l-x m l.TagXml", u"TagXml"}, {u"x\u00E9ml", u""},
                             {u"aé尺😀٣-1_\xD800.z", u"a-1_.z"}, {u"_xml", u"_xml"}, {u"", u""}});
    EXPECT_EQ(makeValidXMLTag(u"xml"_s.repeated(kMega) + u"Tag xml"_s), u"Tagxml"_s);
    EXPECT_EQ(makeValidXMLTag(u"1xml"_s.repeated(kMega)), QString());
}

TEST(Escapes, AreThoseOfTheForm)
{
    const std::map<char, std::string> escapes{{7, "\\a"}, {8, "\\b"}, {9, "\\t"}, {10, "\\n"},
        {11, "\\v"}, {12, "\\f"}, {13, "\\r"}, {34, "\\\""}, {92, "\\\\"}};
    for (const std::size_t around : {0U, 64U}) { // alone, and among those that are taken at once
        const std::string x(around, 'x');
        for (char c = 0; c < 0x7F; ++c) {
            const std::string plain = x + c + x;
            const std::string escaped = escapes.contains(c) ? x + escapes.at(c) + x : plain;
            EXPECT_EQ(
                asStringLiteral(QString::fromStdString(plain)).toStdString(), '"' + escaped + '"');
            EXPECT_EQ(escapeJSON(plain), c == 7 || c == 11 ? plain : escaped);
        }
    }
    EXPECT_EQ(
        asStringLiteral(u"é\u0122\u015C\u0A0A尺😀\xD800"_s), u"\"é\u0122\u015C\u0A0A尺😀\xD800\""_s);
    EXPECT_EQ(escapeJSON("é\xFF\x89"), "é\xFF\x89");
    EXPECT_EQ(asStringLiteral(QString()), u"\"\""_s);
    EXPECT_EQ(escapeJSON(""), "");
    EXPECT_EQ(escapeJSON(std::string(300, '"')).size(), 600U);
}

TEST(Escapes, StandWhereTheirCharactersStood)
{
    // Lengths around those that are taken at once, an escape at every place, alone and in pairs.
    for (const std::size_t size : {1U, 2U, 63U, 64U, 65U, 128U, 200U}) {
        for (std::size_t first = 0; first < size; ++first) {
            for (const std::size_t second : {first, size / 2, size - 1}) {
                std::string text(size, 'x');
                text[first] = '\n';
                text[second] = '\n';
                QString escaped = QString::fromStdString(text);
                const QString literal = asStringLiteral(escaped);
                escaped.replace(u'\n', u"\\n"_s);
                ASSERT_EQ(literal, u'"' + escaped + u'"');
                ASSERT_EQ(escapeJSON(text), escaped.toStdString());
            }
        }
    }
}

TEST(ParseInput, FindsTheOptionsFromTheRight)
{
    const std::vector<std::string> ab{"a", "b"};
    using Pairs = std::vector<std::pair<std::string, std::string>>;
    const struct {
        const char *input, *text;
        Pairs pairs;
    } rows[] = {{"", "", {}}, {"-", "-", {}}, {"free - text", "free - text", {}},
        {"hello --a 1 --b", "hello", {{"b", ""}, {"a", "1"}}}, {"--a", "", {{"a", ""}}},
        {"x --a  two  words ", "x", {{"a", " two  words "}}}, {"x --a ", "x", {{"a", ""}}},
        {"x --c 1 --B", "x", {{"Invalid option", "B"}, {"Invalid option", "c"}}},
        {"x --", "x", {{"Invalid syntax", "--"}}},
        {"x -- y z", "x", {{"Invalid syntax", "-- y z"}}},
        {"x--a", "", {{"a", ""}}}, // the character in front goes, whatever it is
        {"xy,--a 1;--b", "xy", {{"b", ""}, {"a", "1"}}}, {"---a", "", {{"a", ""}}},
        {"----a", "-", {{"a", ""}}}, {"--a 1--2", "", {{"Invalid option", "2"}, {"a", ""}}}};
    for (const auto &row : rows) {
        EXPECT_THAT(parseInput(row.input, ab), Pair(row.text, row.pairs)) << row.input;
    }
    EXPECT_THAT(parseInput("x --a", {}).second, ElementsAre(Pair("Invalid option", "a")));
    EXPECT_THAT(parseInput("x -- y", {""}).second, ElementsAre(Pair("Invalid syntax", "-- y")));
}

TEST(CharacterClasses, AreThoseOfCAndEndWithAscii)
{
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const bool isIn = unit < 0x80;
        const QChar c(unit);
        ASSERT_EQ(isAscii(c), isIn) << unit;
        ASSERT_EQ(isAsciiDigit(c), isIn && std::isdigit(unit)) << unit;
        ASSERT_EQ(isAsciiLetter(c), isIn && std::isalpha(unit)) << unit;
        ASSERT_EQ(isAsciiLetterOrDigit(c), isIn && std::isalnum(unit)) << unit;
        ASSERT_EQ(isAsciiPrint(c), isIn && std::isprint(unit)) << unit;
    }
}

} // namespace
} // namespace Vyn::OvraBase::StringUtils
