// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Runs a program that links the library, and the same program with Qt Gui alone. The difference is
// the time that the library adds to the start of a process.

#include <QProcess>
#include <QString>

#include <benchmark/benchmark.h>

namespace {

void start(benchmark::State &state, const QString &program)
{
    for (auto _ : state) {
        if (QProcess::execute(program, {}) != 0) {
            state.SkipWithError("the program does not start or fails");
            return;
        }
    }
}

BENCHMARK_CAPTURE(start, library, QStringLiteral(OVRABASE_START_LIBRARY))->UseRealTime();
BENCHMARK_CAPTURE(start, guiAlone, QStringLiteral(OVRABASE_START_GUI))->UseRealTime();

} // namespace

BENCHMARK_MAIN();
