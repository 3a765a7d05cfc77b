// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Each pair of benchmarks escapes the same text: "plain" looks each character up in a hash table,
// and "library" is the library's function.

#include <ovrabase/text/StringUtils.h>

#include <QHash>

#include <benchmark/benchmark.h>
#include <sstream>
#include <unordered_map>

namespace {

using Vyn::OvraBase::StringUtils::asStringLiteral;
using Vyn::OvraBase::StringUtils::escapeJSON;

QString plainLiteral(const QString &text)
{
    static const QHash<QChar, QString> escapes{{u'\\', "\\\\"}, {u'\a', "\\a"}, {u'\b', "\\b"},
        {u'\t', "\\t"}, {u'\v', "\\v"}, {u'\f', "\\f"}, {u'\n', "\\n"}, {u'\r', "\\r"},
        {u'"', "\\\""}};
    QString literal;
    literal.reserve(text.size() + 2);
    literal += u'"';
    for (const QChar c : text) {
        const auto escape = escapes.constFind(c);
        if (escape == escapes.cend()) {
            literal += c;
        } else {
            literal += *escape;
        }
    }
    literal += u'"';
    return literal;
}

std::string plainJson(const std::string &text)
{
    static const std::unordered_map<char, const char *> escapes{{'\b', "\\b"}, {'\t', "\\t"},
        {'\n', "\\n"}, {'\f', "\\f"}, {'\r', "\\r"}, {'"', "\\\""}, {'\\', "\\\\"}};
    std::ostringstream json;
    for (const char c : text) {
        const auto escape = escapes.find(c);
        if (escape == escapes.end()) {
            json << c;
        } else {
            json << escape->second;
        }
    }
    return json.str();
}

/// Returns a text as applications write it: paths or lines; or a text of characters that all need
/// an escape.
std::string sample(const benchmark::State &state)
{
    static const char *const kPieces[] = {
        "D:/projects/été/a model with a long name/part_0123456789.slvar, ",
        "a line of forty characters and its \"end\"\n", "\\\"\n\t"};
    const auto piece = static_cast<std::size_t>(state.range(0));
    const auto size = static_cast<std::size_t>(state.range(1));
    std::string text;
    while (text.size() < size) {
        text += kPieces[piece];
    }
    return text;
}

template<QString (*escape)(const QString &)>
void literal(benchmark::State &state)
{
    const QString text = QString::fromStdString(sample(state));
    if (escape(text) != plainLiteral(text)) {
        state.SkipWithError("the contenders differ");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(escape(text));
    }
    state.SetBytesProcessed(state.iterations() * text.size() * 2);
}

template<std::string (*escape)(const std::string &)>
void json(benchmark::State &state)
{
    const std::string text = sample(state);
    if (escape(text) != plainJson(text)) {
        state.SkipWithError("the contenders differ");
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(escape(text));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void texts(benchmark::internal::Benchmark *benchmark)
{
    benchmark->ArgNames({"text", "size"})->ArgsProduct({{0, 1, 2}, {100, 10000}});
}

BENCHMARK(literal<plainLiteral>)->Name("literal/plain")->Apply(texts);
BENCHMARK(literal<asStringLiteral>)->Name("literal/library")->Apply(texts);
BENCHMARK(json<plainJson>)->Name("json/plain")->Apply(texts);
BENCHMARK(json<escapeJSON>)->Name("json/library")->Apply(texts);

} // namespace

BENCHMARK_MAIN();
