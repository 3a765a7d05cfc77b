// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StdUtils.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string_view>

namespace Vyn::OvraBase::StdUtils {

std::string floatToString(float value)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic()); // a new stream has the global locale
    stream << std::fixed << std::setprecision(6) << value;
    return stream.str();
}

std::string substituteInString(
    const std::string &text, const std::map<std::string, std::string> &substitutions)
{
    constexpr std::size_t kBraces = 2;
    std::string result;
    std::size_t done = 0;
    for (;;) {
        const std::size_t opening = text.find("{{", done);
        const std::size_t closing =
            opening == text.npos ? text.npos : text.find("}}", opening + kBraces);
        if (closing == text.npos) {
            result.append(text, done);
            return result;
        }
        result.append(text, done, opening - done);
        const std::size_t key = opening + kBraces;
        const auto substitution = substitutions.find(text.substr(key, closing - key));
        if (substitution != substitutions.end()) {
            result += substitution->second;
        }
        done = closing + kBraces;
    }
}

void toLowerString(std::string &text)
{
    std::transform(text.begin(), text.end(), text.begin(),
        [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
}

void trimString(std::string &text, const char *characters)
{
    // A table, because std::string::find_first_not_of() searches the whole set for each byte.
    std::array<bool, 256> inSet{};
    for (const char c : std::string_view(characters ? characters : "")) {
        inSet[static_cast<unsigned char>(c)] = true;
    }
    const auto stays = [&inSet](char c) { return !inSet[static_cast<unsigned char>(c)]; };
    text.erase(std::find_if(text.rbegin(), text.rend(), stays).base(), text.end());
    text.erase(text.begin(), std::find_if(text.begin(), text.end(), stays));
}

} // namespace Vyn::OvraBase::StdUtils
