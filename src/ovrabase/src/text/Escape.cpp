// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/text/StringUtils.h>

#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace Vyn::OvraBase::StringUtils {
namespace {

/// kEscapes[c] is the character after the backslash in the escape of c, or 0 if c has no escape.
constexpr auto kEscapes = [] {
    std::array<char, 128> letters{};
    letters['\\'] = '\\';
    letters['\a'] = 'a';
    letters['\b'] = 'b';
    letters['\t'] = 't';
    letters['\v'] = 'v';
    letters['\f'] = 'f';
    letters['\n'] = 'n';
    letters['\r'] = 'r';
    letters['"'] = '"';
    return letters;
}();

// These two return true for a character that needs an escape. They use neither the table nor a
// branch (& and |, not && and ||): the compiler can then test many characters with one instruction
// (SIMD).
struct NeededInLiteral {
    constexpr bool operator()(char16_t c) const
    {
        return ((c >= u'\a') & (c <= u'\r')) | (c == u'"') | (c == u'\\');
    }
};

struct NeededInJson {
    constexpr bool operator()(char c) const
    {
        return ((c >= '\b') & (c <= '\r') & (c != '\v')) | (c == '"') | (c == '\\');
    }
};

constexpr bool testsAgreeWithTable()
{
    for (std::size_t c = 0; c < kEscapes.size(); ++c) {
        const bool inLiteral = kEscapes[c] != 0;
        const bool inJson = inLiteral && c != '\a' && c != '\v';
        if (NeededInLiteral()(static_cast<char16_t>(c)) != inLiteral ||
            NeededInJson()(static_cast<char>(c)) != inJson) {
            return false;
        }
    }
    return true;
}
static_assert(testsAgreeWithTable());

/// The number of characters that are tested together. A counter of one byte must be able to hold
/// it, see countEscapes().
constexpr std::size_t kBlock = 64;
static_assert(kBlock <= 0xFF);

/// Returns the number of characters in \a text for which \a needed returns true.
template<class Char, class Needed>
std::size_t countEscapes(std::basic_string_view<Char> text, Needed needed)
{
    std::size_t count = 0;
    for (std::size_t begin = 0; begin < text.size(); begin += kBlock) {
        // The counter has the size of a character. With a larger one, a SIMD instruction would
        // count fewer characters.
        std::make_unsigned_t<Char> inBlock = 0;
        for (const Char c : text.substr(begin, kBlock)) {
            inBlock = static_cast<decltype(inBlock)>(inBlock + needed(c));
        }
        count += inBlock;
    }
    return count;
}

/// Writes \a text to \a out, with an escape for each character for which \a needed returns true.
/// \a out has room for text.size() + countEscapes() characters.
template<class Char, class Needed>
void writeEscaped(std::basic_string_view<Char> text, Char *out, Needed needed)
{
    const Char *unwritten = text.data(); // the first character that is not written yet
    for (std::size_t begin = 0; begin < text.size(); begin += kBlock) {
        const std::basic_string_view<Char> block = text.substr(begin, kBlock);
        std::array<bool, kBlock> isNeeded;
        std::transform(block.begin(), block.end(), isNeeded.begin(), needed);

        for (std::size_t i = 0; i < block.size(); ++i) {
            if (!isNeeded[i]) {
                const void *const next = std::memchr(&isNeeded[i], true, block.size() - i);
                if (!next) {
                    break;
                }
                i = static_cast<std::size_t>(static_cast<const bool *>(next) - isNeeded.data());
            }
            const Char *const special = block.data() + i;
            // Escapes are often adjacent. std::copy() of no characters may still call memmove().
            if (unwritten != special) {
                out = std::copy(unwritten, special, out);
            }
            *out++ = '\\';
            *out++ = static_cast<Char>(kEscapes[static_cast<std::make_unsigned_t<Char>>(*special)]);
            unwritten = special + 1;
        }
    }
    std::copy(unwritten, text.data() + text.size(), out);
}

} // namespace

std::string escapeJSON(const std::string &text)
{
    const std::size_t escapes = countEscapes(std::string_view(text), NeededInJson());
    if (escapes == 0) {
        return text;
    }
    std::string escaped(text.size() + escapes, '\0');
    writeEscaped(std::string_view(text), escaped.data(), NeededInJson());
    return escaped;
}

QString asStringLiteral(const QString &text)
{
    const std::u16string_view units(
        QStringView(text).utf16(), static_cast<std::size_t>(text.size()));
    const std::size_t escapes = countEscapes(units, NeededInLiteral());

    QString literal(text.size() + static_cast<qsizetype>(escapes) + 2, Qt::Uninitialized);
    auto *const out = reinterpret_cast<char16_t *>(literal.data());
    out[0] = u'"';
    writeEscaped(units, out + 1, NeededInLiteral());
    out[literal.size() - 1] = u'"';
    return literal;
}

} // namespace Vyn::OvraBase::StringUtils
