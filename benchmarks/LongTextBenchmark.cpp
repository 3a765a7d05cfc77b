// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Runs text functions on about 1 MB and about 2 MB of the input that is slowest for each. A linear
// function takes about twice the time for 2 MB, and a quadratic one four times. A linear function
// may take more than twice the time if the memory that it uses fits into the processor's caches for
// 1 MB, but not for 2 MB.

#include <ovrabase/text/LengthUnits.h>
#include <ovrabase/text/StdUtils.h>
#include <ovrabase/text/StringUtils.h>

#include <QByteArray>
#include <QString>

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

namespace {

using namespace Vyn::OvraBase;

QByteArray repeated(const char *part, benchmark::State &state)
{
    const QByteArray text(part);
    return text.repeated(state.range(0) * (1 << 20) / text.size());
}

void parseDashes(benchmark::State &state)
{
    const std::string input = repeated("--", state).toStdString();
    for (auto _ : state) {
        benchmark::DoNotOptimize(StringUtils::parseInput(input, {}));
    }
}

void parseManyOptions(benchmark::State &state)
{
    std::vector<std::string> names;
    std::string input;
    for (int i = 0; i < state.range(0) * 100'000; ++i) {
        names.push_back(std::to_string(i));
        input += " --" + names.back();
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(StringUtils::parseInput(input, names));
    }
}

void substitute(benchmark::State &state, const char *part)
{
    const std::string text = repeated(part, state).toStdString();
    for (auto _ : state) {
        benchmark::DoNotOptimize(StdUtils::substituteInString(text, {{"k", "v"}}));
    }
}

template<class Function>
void ofQString(benchmark::State &state, Function function, const char *part)
{
    const QString text = QString::fromLatin1(repeated(part, state));
    for (auto _ : state) {
        benchmark::DoNotOptimize(function(text));
    }
}

double toMeter(const QString &text)
{
    return stringToMeter(text, QString());
}

BENCHMARK(parseDashes)->Arg(1)->Arg(2);
BENCHMARK(parseManyOptions)->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(substitute, opened, "{{")->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(substitute, keys, "{{k}}")->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(ofQString, xml, StringUtils::makeValidXMLTag, "xml")->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(ofQString, copies, StringUtils::getCopyName, " copy 1")->Arg(1)->Arg(2);
BENCHMARK_CAPTURE(ofQString, points, toMeter, ".")->Arg(1)->Arg(2);

} // namespace

BENCHMARK_MAIN();
