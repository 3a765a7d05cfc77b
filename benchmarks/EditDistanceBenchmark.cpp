// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Compares implementations of the edit distance. Compare medians of one run:
//     EditDistanceBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9
// "plain" is the recurrence with three rows of cells, "direct" the library's function, and
// "matcher" the library's matcher, made once per pattern. "peer" is the function of rapidfuzz-cpp,
// and "peerCached" its matcher. Names with "Part" compare with any part of the text. Names with
// "Limited" ask a matcher for distances of up to 3, of more texts. All other implementations in one
// benchmark get the same texts. Names with "peer" exist only if CMake finds rapidfuzz-cpp
// (RAPIDFUZZ_INCLUDE_DIR).

#include <ovrabase/text/StringUtils.h>

#include <QStringView>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <random>
#include <utility>
#include <vector>

#ifdef OVRABASE_BENCHMARK_RAPIDFUZZ
#include <rapidfuzz/distance/OSA.hpp>
#include <string_view>
#endif

namespace {

using namespace Vyn::OvraBase::StringUtils;

template<bool kAnyPart>
std::uint64_t plainDistance(const QString &a, const QString &b)
{
    const char16_t *right = QStringView(b).utf16();
    const auto columns = static_cast<std::size_t>(b.size());
    std::vector<std::uint64_t> twoBack(columns + 1);
    std::vector<std::uint64_t> previous(columns + 1);
    std::vector<std::uint64_t> current(columns + 1);
    for (std::size_t j = 0; j <= columns; ++j) {
        previous[j] = kAnyPart ? 0 : j;
    }
    char16_t before = 0;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const char16_t unit = a[i].unicode();
        current[0] = static_cast<std::uint64_t>(i) + 1;
        for (std::size_t j = 0; j < columns; ++j) {
            const std::uint64_t cost = unit == right[j] ? 0 : 1;
            std::uint64_t best =
                std::min({previous[j + 1] + 1, current[j] + 1, previous[j] + cost});
            if (i > 0 && j > 0 && before == right[j] && unit == right[j - 1]) {
                best = std::min(best, twoBack[j - 1] + cost);
            }
            current[j + 1] = best;
        }
        before = unit;
        twoBack.swap(previous);
        previous.swap(current);
    }
    return kAnyPart ? *std::min_element(previous.begin(), previous.end()) : previous.back();
}

using Texts = std::vector<QString>;

/// The units that random texts are made of.
struct Alphabet {
    char16_t first;
    unsigned size;
};
constexpr Alphabet kLatin = {u'A', 62};
constexpr Alphabet kIdeographs = {0x4E00, 3000};

/// Texts of \a size units, the same in every run.
Texts randomTexts(Alphabet alphabet, std::size_t count, std::int64_t size, unsigned seed)
{
    std::mt19937 random(seed);
    Texts texts(count);
    for (QString &text : texts) {
        for (std::int64_t i = 0; i < size; ++i) {
            text += QChar(static_cast<char16_t>(alphabet.first + random() % alphabet.size));
        }
    }
    return texts;
}

/// Names of files and materials such as those in a graphics project, 120 for each variant.
Texts names(int variants)
{
    static constexpr std::array kStems = {"Oak_Floor", "brushed-steel", "Marble White",
        "fabric_linen", "Concrete.Rough", "leather brown", "GlassFrosted", "Tile_Hexagon_Small",
        "Küchenfront matt", "plaster", "Copper Patina", "asphalt_wet"};
    static constexpr std::array kEndings = {"_albedo.png", "_normal.png", "_roughness_4k.exr",
        ".jpg", " copy %1", "_%1", "_v%1_final.obj", " (%1).fbx", "-%1-preview.webp", " %1"};
    Texts result;
    for (int variant = 1; variant <= variants; ++variant) {
        for (const char *stem : kStems) {
            for (const char *ending : kEndings) {
                const QString number = QString::number(variant * 7);
                result.push_back(QString::fromUtf8(stem) +
                                 QString::fromUtf8(ending).replace(QStringLiteral("%1"), number));
            }
        }
    }
    return result;
}

constexpr std::uint64_t kLimit = 3;

// Each contender returns a function that compares its pattern with a text.

template<std::uint64_t (*kDistance)(const QString &, const QString &)>
auto function(const QString &pattern)
{
    return [&pattern](const QString &text) { return kDistance(pattern, text); };
}

constexpr auto plain = function<plainDistance<false>>;
constexpr auto plainPart = function<plainDistance<true>>;
constexpr auto direct = function<damerauLevenshteinDistance>;
constexpr auto directPart = function<damerauLevenshteinSubstringDistance>;

auto matcher(const QString &pattern)
{
    return [made = DamerauLevenshteinMatcher(pattern)](
               const QString &text) { return made.distance(text); };
}

auto matcherPart(const QString &pattern)
{
    return [made = DamerauLevenshteinMatcher(pattern)](
               const QString &text) { return made.substringDistance(text); };
}

auto matcherLimited(const QString &pattern)
{
    return [made = DamerauLevenshteinMatcher(pattern)](
               const QString &text) { return made.distance(text, kLimit); };
}

auto matcherPartLimited(const QString &pattern)
{
    return [made = DamerauLevenshteinMatcher(pattern)](
               const QString &text) { return made.substringDistance(text, kLimit); };
}

#ifdef OVRABASE_BENCHMARK_RAPIDFUZZ
std::u16string_view unitsOf(const QString &text)
{
    return {QStringView(text).utf16(), static_cast<std::size_t>(text.size())};
}

std::uint64_t rapidfuzzDistance(const QString &a, const QString &b)
{
    return rapidfuzz::osa_distance(unitsOf(a), unitsOf(b));
}

constexpr auto peer = function<rapidfuzzDistance>;

auto peerCached(const QString &pattern)
{
    return [made = rapidfuzz::CachedOSA<char16_t>(unitsOf(pattern))](
               const QString &text) { return made.distance(unitsOf(text)); };
}

auto peerLimited(const QString &pattern)
{
    return [made = rapidfuzz::CachedOSA<char16_t>(unitsOf(pattern))](
               const QString &text) { return made.distance(unitsOf(text), kLimit); };
}
#endif

/// Returns the number of texts of a benchmark. They are too many for a branch predictor to learn.
std::int64_t countFor(const benchmark::State &state)
{
    return std::max<std::int64_t>(64, 65536 / state.range(1));
}

/// Compares pairs of random texts, \a state.range(0) units with \a state.range(1) units.
template<class Contender>
void pairs(benchmark::State &state, Alphabet alphabet, Contender contender)
{
    const auto count = static_cast<std::size_t>(countFor(state));
    const Texts patterns = randomTexts(alphabet, count, state.range(0), 1);
    const Texts texts = randomTexts(alphabet, count, state.range(1), 2);
    for (auto _ : state) {
        for (std::size_t i = 0; i < count; ++i) {
            benchmark::DoNotOptimize(contender(patterns[i])(texts[i]));
        }
    }
    state.SetItemsProcessed(state.iterations() * countFor(state));
}

/// Compares one random text, prepared outside the measured time, with others.
template<class Contender>
void prepared(benchmark::State &state, Alphabet alphabet, Contender contender)
{
    const Texts patterns = randomTexts(alphabet, 1, state.range(0), 1);
    const auto count = static_cast<std::size_t>(countFor(state));
    const Texts texts = randomTexts(alphabet, count, state.range(1), 2);
    const auto distance = contender(patterns[0]);
    for (auto _ : state) {
        for (const QString &text : texts) {
            benchmark::DoNotOptimize(distance(text));
        }
    }
    state.SetItemsProcessed(state.iterations() * countFor(state));
}

/// Compares 20 of the names, each without its last character, with all names.
template<class Contender>
void search(benchmark::State &state, int variants, Contender contender)
{
    const Texts texts = names(variants);
    for (auto _ : state) {
        for (std::size_t i = 0; i < 20; ++i) {
            const QString typed = texts[i * texts.size() / 20].chopped(1);
            const auto distance = contender(typed);
            for (const QString &text : texts) {
                benchmark::DoNotOptimize(distance(text));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()) * 20);
}

void wholeLengths(benchmark::internal::Benchmark *contender)
{
    for (const std::int64_t size : {2, 4, 8, 16, 32, 48, 64, 100, 256, 1024}) {
        contender->Args({size, size});
    }
}

void partLengths(benchmark::internal::Benchmark *contender)
{
    contender->Args({16, 64})->Args({8, 100})->Args({32, 256})->Args({64, 1024});
}

#define BENCHMARK_ALPHABETS(form, contender, lengths)                                              \
    BENCHMARK_CAPTURE(form, latin_##contender, kLatin, contender)->Apply(lengths);                 \
    BENCHMARK_CAPTURE(form, ideographs_##contender, kIdeographs, contender)->Apply(lengths)

BENCHMARK_ALPHABETS(pairs, plain, wholeLengths);
BENCHMARK_ALPHABETS(pairs, direct, wholeLengths);
BENCHMARK_ALPHABETS(prepared, matcher, wholeLengths);
BENCHMARK_ALPHABETS(pairs, plainPart, partLengths);
BENCHMARK_ALPHABETS(pairs, directPart, partLengths);
BENCHMARK_ALPHABETS(prepared, matcherPart, partLengths);
BENCHMARK_CAPTURE(search, plain, 2, plain);
BENCHMARK_CAPTURE(search, direct, 2, direct);
BENCHMARK_CAPTURE(search, matcher, 2, matcher);
BENCHMARK_CAPTURE(search, plainPart, 2, plainPart);
BENCHMARK_CAPTURE(search, directPart, 2, directPart);
BENCHMARK_CAPTURE(search, matcherPart, 2, matcherPart);
BENCHMARK_CAPTURE(search, matcherLimited, 42, matcherLimited);
BENCHMARK_CAPTURE(search, matcherPartLimited, 42, matcherPartLimited);
#ifdef OVRABASE_BENCHMARK_RAPIDFUZZ
BENCHMARK_ALPHABETS(pairs, peer, wholeLengths);
BENCHMARK_ALPHABETS(prepared, peerCached, wholeLengths);
BENCHMARK_CAPTURE(search, peerCached, 2, peerCached);
BENCHMARK_CAPTURE(search, peerLimited, 42, peerLimited);
#endif

} // namespace

BENCHMARK_MAIN();
