// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <QCoreApplication>
#include <QTranslator>

#include <gmock/gmock.h>

#include <cctype>

namespace {

using namespace Vyn::OvraBase::StringUtils;
using namespace Qt::StringLiterals;
using namespace std::string_literals;

constexpr int kMega = 1'000'000;

void expectRows(auto *function, std::initializer_list<std::pair<QString, QString>> rows)
{
    for (const auto &[from, to] : rows) {
        EXPECT_TRUE(function(from) == to)
            << from.left(80).toStdString() << " gives " << function(from).left(80).toStdString();
    }
}

TEST(StringUtils, GetCopyNameCountsOnAfterTheTranslatedWord)
{
    expectRows(getCopyName,
        {{"Wall copy", "Wall copy 2"}, {"A copy 007", "A copy 8"}, {"Wall Copy", "Wall Copy copy"},
            {"copy", "copy copy"}, {" copy", " copy 2"}, {" copy 1", " copy 2"},
            {"copy 3", "copy 3 copy"}, {"A copy ", "A copy  copy"},
            {"A copy ٣", "A copy ٣ copy"}, // a digit, but not an ASCII one
            {"%2%1 copy 1", "%2%1 copy 2"}, {u"\xD800 copy 1"_s, u"\xD800 copy 2"_s},
            // writes a number that exceeds a signed 32-bit integer, but does not read one
            {"A copy 2147483647", "A copy 2147483648"}, {"A copy 2147483648", "A copy 1"},
            // increases a number only in a single line; one line feed may follow the number
            {"A copy 1\n", "A copy 2"}, {"A copy 1\n\n", "A copy 1\n\n copy"},
            {"A\nB copy 1", "A\nB copy 1 copy"}, {"A\rB copy 1", "A\rB copy 2"},
            {"A copy\n", "A copy\n copy"},
            // in linear time
            {u" copy 1"_s.repeated(kMega), u" copy 1"_s.repeated(kMega).chopped(1) + u'2'},
            {u"A copy "_s + QString(kMega, u'1'), "A copy 1"}});

    struct Translator : QTranslator {
        bool isEmpty() const override { return false; }
        QString translate(const char *context, const char *text, const char *, int) const override
        {
            return std::string(context) + text == "copy" ? u"(neue) Kopie"_s : QString();
        }
    } translator; // its destructor removes it
    QCoreApplication::installTranslator(&translator);
    expectRows(getCopyName,
        {{"Wand (neue) Kopie 2", "Wand (neue) Kopie 3"}, {"Wand copy", "Wand copy (neue) Kopie"}});
}

TEST(StringUtils, MakeValidXmlTagKeepsTheAsciiOfElementNames)
{
    expectRows(
        makeValidXMLTag, {{"3d model", "dmodel"}, {"XmLnode", "node"}, {".-9", ""}, {"._-", "_-"},
                             {"xml123xmlTag", "Tag"}, {"xm l-x m l.TagXml", "TagXml"},
                             {u"aé尺😀٣-1_\xD800.z"_s, "a-1_.z"}, {"_xml", "_xml"}, {"", ""},
                             {u"1xml"_s.repeated(kMega) + "Tag xml", "Tagxml"}});
}

TEST(StringUtils, EscapesStandInThePlaceOfTheirCharacters)
{
    const std::string text = "\"\0\6\a\b\t\n\v\f\r\16 !\"#[\\]/z\177é\u0089"s;
    const std::string literal = "\\\"\0\6\\a\\b\\t\\n\\v\\f\\r\16 !\\\"#[\\\\]/z\177é\u0089"s;
    const std::string json = "\\\"\0\6\a\\b\\t\\n\v\\f\\r\16 !\\\"#[\\\\]/z\177é\u0089"s;
    // The functions process blocks of 64 characters. Each character gets every place in a block.
    for (std::string x; x.size() < 64; x += 'x') {
        ASSERT_EQ(asStringLiteral(QString::fromStdString(x + text + x)).toStdString(),
            '"' + x + literal + x + '"');
        ASSERT_EQ(escapeJSON(x + text + x), x + json + x);
    }
    EXPECT_EQ(asStringLiteral(u"\u0122\u015C\u0A0A😀\xD800"_s), u"\"\u0122\u015C\u0A0A😀\xD800\""_s);
    EXPECT_EQ(asStringLiteral(QString()), u"\"\""_s);
    EXPECT_EQ(escapeJSON(""), "");
    EXPECT_EQ(escapeJSON(std::string(300, '"')).size(), 600U);
}

TEST(StringUtils, ParseInputFindsTheOptionsFromTheRight)
{
    const struct {
        const char *input, *text;
        std::vector<std::pair<std::string, std::string>> pairs;
    } rows[] = {{"", "", {}}, {"free - text-", "free - text-", {}},
        {"hello --a 1 --b", "hello", {{"b", ""}, {"a", "1"}}}, {"--a", "", {{"a", ""}}},
        {"x --a  two  words ", "x", {{"a", " two  words "}}}, {"x --a ", "x", {{"a", ""}}},
        {"x --c 1 --B", "x", {{"Invalid option", "B"}, {"Invalid option", "c"}}},
        {"x -- y z", "x", {{"Invalid syntax", "-- y z"}}},
        {"xy,--a 1;--b", "xy", {{"b", ""}, {"a", "1"}}}, // the character in front is dropped
        {"----a", "-", {{"a", ""}}}, {"--a 1--2", "", {{"Invalid option", "2"}, {"a", ""}}}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.input);
        EXPECT_THAT(parseInput(row.input, {"a", "b", ""}), testing::Pair(row.text, row.pairs));
    }
}

TEST(StringUtils, CharacterClassesAreThoseOfCAndEndWithAscii)
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
