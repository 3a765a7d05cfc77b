// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StdUtils.h>

#include <gmock/gmock.h>

#include <limits>
#include <locale>

namespace Vyn::OvraBase::StdUtils {
namespace {

TEST(FloatToString, WritesSixDigitsBehindThePoint)
{
    EXPECT_EQ(floatToString(1.5F), "1.500000");
    EXPECT_EQ(floatToString(1e10F), "10000000000.000000");
    EXPECT_EQ(floatToString(-0.0F), "-0.000000");
    EXPECT_EQ(floatToString(4e-7F), "0.000000");
    EXPECT_EQ(floatToString(std::numeric_limits<float>::max()),
        "340282346638528859811704183484516925440.000000");
}

TEST(FloatToString, IgnoresTheGlobalLocale)
{
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    EXPECT_EQ(floatToString(1234567.0F), "1234567.000000");
    std::locale::global(before);
}

TEST(SubstituteInString, ReplacesKeysByTheirValues)
{
    const std::map<std::string, std::string> values{{"name", "World"}, {"", "nothing"},
        {" name ", "spaced"}, {"a", "{{name}}"}, {"a{{b", "inner"}, {"{c", "brace"}};
    const std::pair<const char *, const char *> rows[] = {{"", ""},
        {"no { keys } }} here", "no { keys } }} here"}, {"Hello {{name}}", "Hello World"},
        {"Hello {{Name}}", "Hello "}, {"{{name}}{{name}}!", "WorldWorld!"}, {"{{}}", "nothing"},
        {"{{ name }}", "spaced"}, {"{{a}}}", "{{name}}}"}, {"{{a{{b}}", "inner"},
        {"{{{c}}", "brace"}, {"{{name}} {{name", "World {{name"}, {"}} {{name}}", "}} World"},
        {"{{}", "{{}"}};
    for (const auto &[text, expected] : rows) {
        EXPECT_EQ(substituteInString(text, values), expected) << text;
    }
    EXPECT_EQ(substituteInString("Hello {{name}}", {}), "Hello ");
}

TEST(ToLowerString, ChangesAsciiOnly)
{
    std::string text = "AZaz[@ É \xC0";
    toLowerString(text);
    EXPECT_EQ(text, "azaz[@ É \xC0");
}

TEST(TrimString, RemovesTheSetFromBothEnds)
{
    const struct {
        const char *text, *characters, *expected;
    } rows[] = {{"--a-b--", "-", "a-b"}, {" \t a ", "\t ", "a"}, {"a", "", "a"},
        {"a", nullptr, "a"}, {"----", "-", ""}, {"", "-", ""},
        {"\xFF\x80 a\xFF", "\x80\xFF", " a"}};
    for (const auto &row : rows) {
        std::string text = row.text;
        trimString(text, row.characters);
        EXPECT_EQ(text, row.expected) << row.text;
    }
}

} // namespace
} // namespace Vyn::OvraBase::StdUtils
