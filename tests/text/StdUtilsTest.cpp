// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "support/Guards.h"

#include <ovrabase/text/StdUtils.h>

#include <gmock/gmock.h>

#include <array>

namespace {

using namespace Vyn::OvraBase::StdUtils;

TEST(StdUtils, FloatToStringWritesAPointAndSixDigitsAlsoUnderAnotherGlobalLocale)
{
    const auto grouping = Vyn::Test::withGrouping();
    EXPECT_EQ(floatToString(-1234567.0F), "-1234567.000000");
    EXPECT_EQ(floatToString(4e-7F), "0.000000");
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
        EXPECT_EQ(substituteInString(text, values), expected) << text;
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
    const std::array<const char *, 3> rows[] = {{"\t --a-b--", "- \t", "a-b"}, {"a", "", "a"},
        {"b", nullptr, "b"}, {"--", "-", ""}, {"", "-", ""}, {"\xFF\x80 a\xFF", "\x80\xFF", " a"}};
    for (std::string text; const auto &[from, characters, expected] : rows) {
        trimString(text = from, characters);
        EXPECT_EQ(text, expected) << from;
    }
}

} // namespace
