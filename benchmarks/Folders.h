// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <functional>

// Set-up of the benchmarks of files. The folder that TMPDIR names decides which disk is measured.

/// Measures \a work, which gets the path of a new folder each time. Before it begins, everything
/// else is written to the disk.
inline void measureInNewFolder(
    benchmark::State &state, const std::function<bool(const QDir &)> &work)
{
    for (auto _ : state) {
        state.PauseTiming();
        QTemporaryDir parent;
        QProcess::execute(QStringLiteral("sync"), {QStringLiteral("-f"), parent.path()});
        state.ResumeTiming();
        if (!work(parent.filePath(QStringLiteral("new")))) {
            state.SkipWithError("the work fails");
        }
        state.PauseTiming();
        parent.remove();
        state.ResumeTiming();
    }
}

/// Runs the benchmarks of a program with an application object.
inline int runBenchmarks(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
