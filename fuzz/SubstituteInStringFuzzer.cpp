// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/text/StdUtils.h>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

using Substitutions = std::map<std::string, std::string>;
using Vyn::OvraBase::StdUtils::substituteInString;

/// The reference implementation: returns \a text with \a substitutions, one byte at a time. Also
/// maps each key in \a text to its own placeholder "{{key}}" in \a identity, so that a substitution
/// with \a identity does not change \a text.
std::string expected(
    const std::string &text, const Substitutions &substitutions, Substitutions &identity)
{
    const auto pairAt = [&text](std::size_t i, char c) {
        return i + 1 < text.size() && text[i] == c && text[i + 1] == c;
    };
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t end = i + 2;
        while (end < text.size() && !pairAt(end, '}')) {
            ++end;
        }
        if (!pairAt(i, '{') || end >= text.size()) {
            result += text[i++];
            continue;
        }
        const std::string key = text.substr(i + 2, end - i - 2);
        if (substitutions.count(key) != 0) {
            result += substitutions.at(key);
        }
        identity[key] = "{{" + key + "}}";
        i = end + 2;
    }
    return result;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider provider(data, size);
    Substitutions substitutions{{"", "{{a}}"}, {"a", "}}"}};
    substitutions[provider.ConsumeRandomLengthString(8)] = provider.ConsumeRandomLengthString(8);
    const std::string text = provider.ConsumeRemainingBytesAsString();

    Substitutions identity;
    require(substituteInString(text, substitutions) == expected(text, substitutions, identity));
    require(substituteInString(text, identity) == text);
    return 0;
}
