// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Pairs of contenders on the same texts: "plain" is the recurrence with three rows of cells,
// "bitParallel" the library's function, "matcher" the library's matcher, made once per pattern.

#include <ovrabase/text/StringUtils.h>

#include <QStringView>

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <random>
#include <utility>
#include <vector>

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

/// Texts over 62 letters and digits, the same in every run.
Texts randomTexts(std::size_t count, std::int64_t size, unsigned seed)
{
    const QString letters =
        QStringLiteral("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    std::mt19937 random(seed);
    Texts texts(count);
    for (QString &text : texts) {
        for (std::int64_t i = 0; i < size; ++i) {
            text += letters[static_cast<qsizetype>(random() % 62)];
        }
    }
    return texts;
}

/// 240 names as they stand in a project: files and materials, numbered and in variants.
Texts names()
{
    static constexpr std::array kStems = {"Oak_Floor", "brushed-steel", "Marble White",
        "fabric_linen", "Concrete.Rough", "leather brown", "GlassFrosted", "Tile_Hexagon_Small",
        "Küchenfront matt", "plaster", "Copper Patina", "asphalt_wet"};
    static constexpr std::array kEndings = {"_albedo.png", "_normal.png", "_roughness_4k.exr",
        ".jpg", " copy %1", "_%1", "_v%1_final.obj", " (%1).fbx", "-%1-preview.webp", " %1"};
    Texts result;
    for (int variant = 1; variant <= 2; ++variant) {
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

using Distance = std::uint64_t (*)(const QString &, const QString &);

/// Compares pairs of random texts, \a state.range(0) units with \a state.range(1) units.
void randomPairs(benchmark::State &state, Distance distance)
{
    constexpr std::size_t kPairs = 64;
    const Texts patterns = randomTexts(kPairs, state.range(0), 1);
    const Texts texts = randomTexts(kPairs, state.range(1), 2);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kPairs; ++i) {
            benchmark::DoNotOptimize(distance(patterns[i], texts[i]));
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kPairs));
}

/// Compares every twelfth of the names with all of them; \a perPattern makes what compares one.
template<class PerPattern>
void allNames(benchmark::State &state, PerPattern perPattern)
{
    const Texts texts = names();
    for (auto _ : state) {
        for (std::size_t i = 0; i < texts.size(); i += 12) {
            const auto distance = perPattern(texts[i]);
            for (const QString &text : texts) {
                benchmark::DoNotOptimize(distance(text));
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()) * 20);
}

template<Distance kDistance>
auto function(const QString &pattern)
{
    return [&pattern](const QString &text) { return kDistance(pattern, text); };
}

template<std::uint64_t (DamerauLevenshteinMatcher::*kDistance)(const QString &) const>
auto matcher(const QString &pattern)
{
    return [made = DamerauLevenshteinMatcher(pattern)](
               const QString &text) { return (made.*kDistance)(text); };
}

void equalLengths(benchmark::internal::Benchmark *contender)
{
    for (const std::int64_t size : {2, 4, 8, 16, 32, 48, 64, 100, 256, 1024}) {
        contender->Args({size, size});
    }
}

void partLengths(benchmark::internal::Benchmark *contender)
{
    contender->Args({16, 64})->Args({32, 256})->Args({64, 1024});
}

constexpr Distance kPlain = plainDistance<false>;
constexpr Distance kPlainPart = plainDistance<true>;
constexpr Distance kFast = damerauLevenshteinDistance;
constexpr Distance kFastPart = damerauLevenshteinSubstringDistance;

BENCHMARK_CAPTURE(randomPairs, plain, kPlain)->Name("plain")->Apply(equalLengths);
BENCHMARK_CAPTURE(randomPairs, bitParallel, kFast)->Name("bitParallel")->Apply(equalLengths);
BENCHMARK_CAPTURE(randomPairs, plainPart, kPlainPart)->Name("part/plain")->Apply(partLengths);
BENCHMARK_CAPTURE(randomPairs, fastPart, kFastPart)->Name("part/bitParallel")->Apply(partLengths);

BENCHMARK_CAPTURE(allNames, plain, function<kPlain>)->Name("names/plain");
BENCHMARK_CAPTURE(allNames, bitParallel, function<kFast>)->Name("names/bitParallel");
BENCHMARK_CAPTURE(allNames, matcher, matcher<&DamerauLevenshteinMatcher::distance>)
    ->Name("names/matcher");
BENCHMARK_CAPTURE(allNames, plainPart, function<kPlainPart>)->Name("names/part/plain");
BENCHMARK_CAPTURE(allNames, fastPart, function<kFastPart>)->Name("names/part/bitParallel");
BENCHMARK_CAPTURE(allNames, matcherPart, matcher<&DamerauLevenshteinMatcher::substringDistance>)
    ->Name("names/part/matcher");

} // namespace

BENCHMARK_MAIN();
