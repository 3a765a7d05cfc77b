// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Guards.h"

#include <ovrabase/text/StdUtils.h>

#include <gmock/gmock.h>

#include <limits>
#include <locale>

namespace Vyn::OvraBase::StdUtils {
namespace {

TEST(StdUtils, FloatToStringWritesAPointAndSixDigitsUnderEveryGlobalLocale)
{
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    const auto comma = Vyn::Test::withLocale(std::locale(std::locale(), new Comma));
    EXPECT_EQ(floatToString(1234567.0F), "1234567.000000");
    EXPECT_EQ(floatToString(-0.0F), "-0.000000");
    EXPECT_EQ(floatToString(4e-7F), "0.000000");
    EXPECT_EQ(floatToString(std::numeric_limits<float>::max()),
        "340282346638528859811704183484516925440.000000");
}

TEST(StdUtils, SubstituteInStringReplacesKeysByTheirValues)
{
    const std::map<std::string, std::string> values{{"name", "World"}, {"", "nothing"},
        {" name ", "spaced"}, {"a", "{{name}}"}, {"a{{b", "inner"}, {"{c", "brace"}};
    const std::pair<const char *, const char *> rows[] = {{"", ""},
        {"no { keys } }} here", "no { keys } }} here"}, {"Hello {{Name}}", "Hello "},
        {"{{name}}{{name}}!", "WorldWorld!"}, {"{{}}", "nothing"}, {"{{ name }}", "spaced"},
        {"{{a}}}", "{{name}}}"}, {"{{a{{b}}", "inner"}, {"{{{c}}", "brace"},
        {"}} {{name}} {{name", "}} World {{name"}, {"{{}", "{{}"}};
    for (const auto &[text, expected] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(substituteInString(text, values), expected);
    }
}

TEST(StdUtils, ToLowerStringChangesAsciiOnly)
{
    std::string text = "AZaz[@ É \xC0";
    toLowerString(text);
    EXPECT_EQ(text, "azaz[@ É \xC0");
}

TEST(StdUtils, TrimStringRemovesTheSetFromBothEnds)
{
    const struct {
        const char *text, *characters, *expected;
    } rows[] = {{"\t --a-b--", "- \t", "a-b"}, {"a", "", "a"}, {"b", nullptr, "b"}, {"--", "-", ""},
        {"", "-", ""}, {"\xFF\x80 a\xFF", "\x80\xFF", " a"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.text);
        std::string text = row.text;
        trimString(text, row.characters);
        EXPECT_EQ(text, row.expected);
    }
}

} // namespace
} // namespace Vyn::OvraBase::StdUtils
