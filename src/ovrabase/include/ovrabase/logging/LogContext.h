// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// The place of a log call as text. Include Logger.h; LOG_CONTEXT is all that callers need.
namespace Vyn::Detail {

constexpr std::size_t kNowhere = std::string_view::npos;

/// Returns what follows the last slash or backslash of \a path.
constexpr std::string_view fileNameOf(std::string_view path)
{
    return path.substr(path.find_last_of("/\\") + 1);
}

/// Returns the index of the bracket that opens the group which \a text ends with, or npos.
constexpr std::size_t openingBracket(std::string_view text)
{
    int depth = 0;
    for (std::size_t i = text.size(); i-- > 0;) {
        if (i > 0 && text[i - 1] == '\'' && i + 1 < text.size() && text[i + 1] == '\'') {
            continue; // a character as a template argument
        }
        if (text[i] == ')' || text[i] == ']') {
            ++depth;
        } else if ((text[i] == '(' || text[i] == '[') && --depth == 0) {
            return i;
        }
    }
    return kNowhere;
}

/// Returns \a text without the qualifiers of a member function behind its parameters.
constexpr std::string_view withoutQualifiers(std::string_view text)
{
    for (bool again = true; again;) {
        again = false;
        for (const std::string_view word : {" ", "const", "volatile", "mutable", "noexcept", "&"}) {
            if (text.ends_with(word)) {
                text.remove_suffix(word.size());
                again = true;
            }
        }
    }
    return text;
}

/// Returns \a signature up to the parameters of the function itself.
constexpr std::string_view withoutParameters(std::string_view signature)
{
    // Template arguments: "f(T) [with T = int]" or "f(T) [T = int]".
    if (signature.ends_with(']')) {
        const std::size_t open = openingBracket(signature);
        if (open != kNowhere && open > 0 && signature[open - 1] == ' ') {
            signature = signature.substr(0, open);
        }
    }
    // GCC: "f(T) requires integral<T>".
    signature = signature.substr(0, signature.find(" requires "));
    // A conversion has no parameters; its name may hold brackets: "operator void (*)(int)()".
    if (const auto bare = withoutQualifiers(signature);
        bare.ends_with("()") && bare.find("operator ") != kNowhere) {
        return bare.substr(0, bare.size() - 2);
    }
    for (;;) {
        signature = withoutQualifiers(signature);
        const std::size_t open = openingBracket(signature);
        if (!(signature.ends_with(')') || signature.ends_with(']')) || open == kNowhere) {
            return signature; // GCC shows no parameters behind a lambda
        }
        const std::string_view before = signature.substr(0, open);
        const std::string_view inside = signature.substr(open + 1, signature.size() - open - 2);
        if (signature.ends_with(')') && (before.ends_with(' ') || inside.starts_with('*'))) {
            // "int (* f(char))(long)": the function stands inside the type that it returns.
            signature = inside;
        } else if (signature.ends_with(')') &&
                   (!before.ends_with(')') || before.ends_with("operator()"))) {
            return before;
        } else {
            signature = before;
        }
    }
}

/// Returns the index of the keyword of the operator that \a name ends with, or its size.
constexpr std::size_t operatorKeyword(std::string_view name)
{
    constexpr std::string_view keyword = "operator";
    const auto isWordPart = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    };
    const std::size_t at = name.rfind(keyword);
    if (at == kNowhere || (at > 0 && isWordPart(name[at - 1]))) {
        return name.size();
    }
    std::string_view symbol = name.substr(at + keyword.size());
    if (symbol.empty() || isWordPart(symbol.front())) {
        return name.size();
    }
    if (symbol.starts_with("()")) {
        symbol.remove_prefix(2);
    }
    // A parenthesis shows that the operator is only a scope of what follows.
    return symbol.find('(') == kNowhere || symbol.front() == ' ' ? at : name.size();
}

/// Returns where the keyword begins if the symbols up to \a end are those of an operator such as
/// "operator<<", else npos.
constexpr std::size_t operatorBefore(std::string_view name, std::size_t end)
{
    constexpr std::string_view keyword = "operator";
    std::size_t symbol = end;
    while (symbol > 0 && std::string_view("<>=-").find(name[symbol - 1]) != kNowhere) {
        --symbol;
    }
    return symbol < end && name.substr(0, symbol).ends_with(keyword) ? symbol - keyword.size()
                                                                     : kNowhere;
}

/// Returns the qualified name out of \a signature, the compiler's pretty text of a function:
/// without return type, parameters, qualifiers and template arguments.
constexpr std::string_view qualifiedNameOf(std::string_view signature)
{
    if (signature == "top level") {
        return signature; // outside of functions
    }
    const std::string_view name = withoutParameters(signature);
    std::size_t begin = operatorKeyword(name);
    int depth = 0;
    for (; begin > 0; --begin) {
        const char c = name[begin - 1];
        if (const std::size_t keyword = operatorBefore(name, begin); keyword != kNowhere) {
            begin = keyword + 1; // the symbol of an operator is no bracket
        } else if (c == ')' || c == '>' || c == ']' || c == '}') {
            ++depth;
        } else if (c == '(' || c == '<' || c == '[' || c == '{') {
            --depth;
        } else if (depth == 0 && (c == ' ' || c == '*' || c == '&')) {
            // GCC: "f() const::Local::g", the space stands inside the name.
            const std::string_view rest = name.substr(begin);
            if (c != ' ' || !(rest.starts_with("const::") || rest.starts_with("mutable::"))) {
                break;
            }
        }
    }
    return name.substr(begin);
}

/// Where a log call stands; cut out of the compiler's literals while compiling.
class LogContext {
public:
    /// \a place is "path:line ", \a function the compiler's text for the function.
    consteval LogContext(std::string_view place, std::string_view function)
        : mPlace(fileNameOf(place))
#if defined(_MSC_VER) && !defined(__clang__)
        , mFunction(function)
#else
        , mFunction(qualifiedNameOf(function))
#endif
        , mHasAbiTags(mFunction.find(kAbiTag) != kNowhere)
    {
    }

    /// Returns "file:line qualified::function()".
    std::string text() const
    {
        std::string text;
        constexpr std::size_t kLoggersPrefix = 16; // put in front of it later
        text.reserve(mPlace.size() + mFunction.size() + 2 + kLoggersPrefix);
        text.append(mPlace).append(mFunction).append("()");
        if (mHasAbiTags) {
            for (std::size_t at = 0; (at = text.find(kAbiTag, at)) != kNowhere;) {
                text.erase(at, text.find(']', at) - at + 1);
            }
        }
        return text;
    }

private:
    static constexpr std::string_view kAbiTag = "[abi:";

    std::string_view mPlace;
    std::string_view mFunction;
    bool mHasAbiTags;
};

} // namespace Vyn::Detail

#define OVRABASE_DETAIL_TEXT_OF(x) #x
#define OVRABASE_DETAIL_TEXT(x) OVRABASE_DETAIL_TEXT_OF(x)
#if defined(_MSC_VER) && !defined(__clang__)
#define OVRABASE_DETAIL_FUNCTION __FUNCTION__
#else
#define OVRABASE_DETAIL_FUNCTION __PRETTY_FUNCTION__
#endif

/// The place of the call as a std::string: "file.cpp:12 ns::Widget::draw()", with the file's name
/// without its folders and the function's qualified name as the compiler spells operators,
/// templates and lambdas, but without return type, parameters and ABI tags.
#define LOG_CONTEXT                                                                                \
    (::Vyn::Detail::LogContext(                                                                    \
        __FILE__ ":" OVRABASE_DETAIL_TEXT(__LINE__) " ", OVRABASE_DETAIL_FUNCTION)                 \
            .text())
