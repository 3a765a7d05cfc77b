// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <functional>

// Helpers for the benchmarks of file functions. They use the disk of the temporary folder (TMPDIR).

/// Measures \a work. Each call gets the path of a folder that does not exist yet. Before each call,
/// "sync -f" writes all pending data of the file system to the disk.
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
