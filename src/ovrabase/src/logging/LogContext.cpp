// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/logging/LogContext.h>

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace Vyn::Detail {
namespace {

constexpr std::size_t kNotFound = std::string_view::npos;
constexpr std::string_view kAbiTag = "[abi:";
constexpr std::string_view kOperator = "operator";
constexpr std::string_view kLambda = "<lambda("; // GCC: "f()::<lambda(int)>"

bool isOneOf(char c, std::string_view characters)
{
    return characters.find(c) != kNotFound;
}

bool isWordPart(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

bool endsWithWord(std::string_view text, std::string_view word)
{
    return text.ends_with(word) &&
           (text.size() == word.size() || !isWordPart(text[text.size() - word.size() - 1]));
}

/// Returns the end of the string or character literal that begins at \a at. An apostrophe without a
/// second one nearby does not begin a literal, but is part of a file name, which Clang writes into
/// the name of a lambda. The function then returns \a at + 1.
std::size_t afterLiteral(std::string_view text, std::size_t at)
{
    constexpr std::size_t kLongestCharacter = 12; // '\U0001F600'
    const bool isString = text[at] == '"';
    const std::size_t limit =
        isString ? text.size() : std::min(text.size(), at + kLongestCharacter);
    for (std::size_t i = at + 1; i < limit; ++i) {
        if (text[i] == '\\') {
            ++i;
        } else if (text[i] == text[at]) {
            return i + 1;
        }
    }
    return isString ? text.size() : at + 1;
}

/// Returns the position after the bracket that closes the one at \a at. Returns the end of the text
/// if no bracket closes it.
std::size_t afterGroup(std::string_view text, std::size_t at)
{
    int depth = 0;
    while (at < text.size()) {
        const char c = text[at];
        if (isOneOf(c, "\"'")) {
            at = afterLiteral(text, at);
            continue;
        }
        ++at;
        if (isOneOf(c, "([{")) {
            ++depth;
        } else if (isOneOf(c, ")]}") && --depth == 0) {
            break;
        }
    }
    return at;
}

/// Returns the end of the operator symbol that begins at \a at, if the symbol contains "<" or ">".
/// Otherwise returns \a at.
std::size_t afterSymbol(std::string_view text, std::size_t at)
{
    for (const std::string_view symbol :
        {"<=>", "<<=", ">>=", "->*", "<<", ">>", "<=", ">=", "->", "<", ">"}) {
        if (text.substr(at).starts_with(symbol)) {
            return at + symbol.size();
        }
    }
    return at;
}

/// Returns the begin of the qualified name: the position after the last space, "*", "&" or "(" that
/// is in front of the parameters, of the keyword "operator" or of a lambda in GCC's notation.
/// Characters that are part of the name, for example in template arguments, do not count.
std::size_t beginOfName(std::string_view text)
{
    std::size_t begin = 0;
    int templates = 0; // the number of open "<"
    for (std::size_t i = 0; i < text.size();) {
        const char c = text[i];
        const std::string_view before = text.substr(0, i);
        if (isOneOf(c, "\"'")) {
            i = afterLiteral(text, i);
            continue;
        }
        if (c == ' ' || c == '*' || c == '&') {
            begin = templates == 0 ? i + 1 : begin;
        } else if (c == '<') {
            if (templates == 0 && text.substr(i).starts_with(kLambda)) {
                break;
            }
            ++templates;
        } else if (c == '>' && templates > 0 && !before.ends_with('-')) {
            --templates;
        } else if (c == '[' || c == '{') {
            i = afterGroup(text, i);
            continue;
        } else if (c == '(') {
            // These parentheses are part of a name: "(anonymous namespace)::f()".
            const bool isScope =
                i == 0 || before.ends_with(':') || text.substr(i).starts_with("(anonymous") ||
                text.substr(i).starts_with("(lambda") || text.substr(i).starts_with("(unnamed");
            const bool isType = before.ends_with("decltype") || before.ends_with("decltype ");
            if (templates > 0 || isScope || isType) {
                i = afterGroup(text, i);
                continue;
            }
            if (!isOneOf(before.back(), " *&(")) {
                break;
            }
            begin = i + 1; // "int (* f(char))(long)": the name is inside the type
        } else if (c == kOperator.front() && text.substr(i).starts_with(kOperator) &&
                   (i == 0 || !isWordPart(before.back()))) {
            const std::size_t symbol = i + kOperator.size();
            if (symbol == text.size() || !isWordPart(text[symbol])) {
                if (templates == 0) {
                    break;
                }
                i = afterSymbol(text, symbol);
                continue;
            }
        }
        ++i;
    }
    return begin;
}

/// Returns the end of the qualified name that begins at \a begin: the position of the parameters of
/// the last function with the name \a function or, for a lambda in GCC's notation, its end.
std::size_t endOfName(std::string_view text, std::size_t begin, std::string_view function)
{
    std::size_t end = kNotFound;
    std::size_t lastParameters = text.size();
    std::size_t beforeTags = begin; // i, or the start of the ABI tags that end at i: "f[abi:x]("
    for (std::size_t i = begin; i < text.size();) {
        const char c = text[i];
        const bool isTag = text.substr(i).starts_with(kAbiTag);
        const std::string_view before = text.substr(begin, beforeTags - begin);
        if (isOneOf(c, ")]}")) {
            break; // closes a bracket of the type that is around the name
        }
        if (isOneOf(c, "\"'")) {
            i = afterLiteral(text, i);
        } else if (isOneOf(c, "([{")) {
            if (c == '(' && endsWithWord(before, function)) {
                end = i;
            } else if (c == '(' && !before.empty() && !isOneOf(before.back(), ": ")) {
                lastParameters = i;
            }
            i = afterGroup(text, i);
        } else if (c == '<' && function == "operator()" && text.substr(i).starts_with(kLambda)) {
            i = afterGroup(text, i + kLambda.size() - 1);
            i += i < text.size() ? 1 : 0;
            end = i;
        } else {
            ++i;
        }
        beforeTags = isTag ? beforeTags : i;
    }
    // The loop does not find a conversion function to a template parameter if one of \a text and
    // \a function has the parameter ("operator T"), and the other the argument ("operator int").
    return end == kNotFound ? lastParameters : end;
}

} // namespace

std::string_view qualifiedNameOf(std::string_view signature, std::string_view function)
{
    if (function.empty() || function == signature) {
        return signature; // outside of a function, or the compiler gave a qualified name
    }
    const std::size_t begin = beginOfName(signature);
    return signature.substr(begin, endOfName(signature, begin, function) - begin);
}

LogContext::LogContext(
    std::string_view place, std::string_view signature, std::string_view function)
    : mText(new std::string(place.substr(place.find_last_of("/\\") + 1)))
{
    std::string_view rest = qualifiedNameOf(signature, function);
    for (std::size_t tag = rest.find(kAbiTag); tag != kNotFound; tag = rest.find(kAbiTag)) {
        mText->append(rest.substr(0, tag));
        rest.remove_prefix(std::min(rest.find(']', tag), rest.size() - 1) + 1);
    }
    mText->append(rest).append("()");
}

std::string LogContext::text() const
{
    std::string text;
    // Room that the caller uses: a bound logger inserts a prefix, and a logger without a delegate
    // uses the string as the buffer of a message that it drops.
    constexpr std::size_t kExtraCapacity = 128;
    text.reserve(mText->size() + kExtraCapacity);
    text.append(*mText);
    return text;
}

} // namespace Vyn::Detail
