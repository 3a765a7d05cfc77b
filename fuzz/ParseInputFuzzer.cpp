// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/StringUtils.h>

#include <algorithm>
#include <fuzzer/FuzzedDataProvider.h>

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

/// Computes the result of parseInput() in a simple way: cuts the text at its last "--" until it
/// contains none.
std::pair<std::string, Pairs> expected(
    const std::string &input, const std::vector<std::string> &options)
{
    std::string rest = input;
    Pairs pairs;
    for (;;) {
        std::size_t position = rest.size();
        for (std::size_t i = 0; i + 1 < rest.size(); ++i) {
            if (rest[i] == '-' && rest[i + 1] == '-') {
                position = i;
            }
        }
        if (position == rest.size()) {
            return {rest, pairs};
        }
        const std::string segment = rest.substr(position);
        std::string name = segment.substr(2);
        std::string value;
        const std::size_t space = segment.find(' ');
        if (space != std::string::npos) {
            name = segment.substr(2, space - 2);
            value = segment.substr(space + 1);
        }
        if (name.empty()) {
            pairs.emplace_back("Invalid syntax", segment);
        } else if (std::count(options.begin(), options.end(), name) == 0) {
            pairs.emplace_back("Invalid option", name);
        } else {
            pairs.emplace_back(name, value);
        }
        rest = position == 0 ? std::string() : input.substr(0, position - 1);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    std::vector<std::string> options{"a", "bc"};
    options.push_back(provider.ConsumeRandomLengthString(8));
    const std::string input = provider.ConsumeRemainingBytesAsString();
    require(Vyn::OvraBase::StringUtils::parseInput(input, options) == expected(input, options));
    return 0;
}
