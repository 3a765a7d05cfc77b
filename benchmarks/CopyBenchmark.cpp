// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Copies small files so that they survive a power cut, beside "cp -r" and one sync of the file
/// system, and beside QFile::copy(), which syncs each file. The folder that TMPDIR names decides
/// which disk is measured. Compare medians of one run:
///     CopyBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace {

using Vyn::OvraBase::FileUtils;

QString nameOf(int file)
{
    return QStringLiteral("%1/%2").arg(file / 100).arg(file);
}

/// Returns the path of a folder with \a files files, from 0 to 8 KB in size, in folders of a
/// hundred.
QString source(int files)
{
    static const QTemporaryDir base;
    const QDir folder(base.filePath(QString::number(files)));
    for (int i = 0; !folder.exists(nameOf(files - 1)) && i < files; ++i) {
        folder.mkpath(QString::number(i / 100));
        QFile file(folder.filePath(nameOf(i)));
        if (file.open(QFile::WriteOnly)) {
            file.write(QByteArray(i * 37 % 8192, 'x'));
        }
    }
    return folder.path();
}

/// Measures \a copyTo, which gets the source and the path of a new folder each time. Before it
/// begins, everything else is written to the disk.
void measure(benchmark::State &state, const std::function<bool(const QDir &, const QDir &)> &copyTo)
{
    const QDir from(source(int(state.range(0))));
    for (auto _ : state) {
        state.PauseTiming();
        const auto destination = std::make_unique<QTemporaryDir>();
        QProcess::execute(QStringLiteral("sync"), {QStringLiteral("-f"), destination->path()});
        state.ResumeTiming();
        if (!copyTo(from, destination->filePath(QStringLiteral("copy")))) {
            state.SkipWithError("the copy fails");
        }
        state.PauseTiming();
        destination->remove();
        state.ResumeTiming();
    }
}

void cpAndSync(benchmark::State &state)
{
    measure(state, [](const QDir &from, const QDir &copy) {
        return QProcess::execute(QStringLiteral("sh"),
                   {QStringLiteral("-c"), QStringLiteral("cp -r \"$0\" \"$1\" && sync -f \"$1\""),
                       from.path(), copy.path()}) == 0;
    });
}

void copyManyWithBackup(benchmark::State &state)
{
    measure(state, [&](const QDir &from, const QDir &copy) {
        std::vector<std::pair<QString, QString>> copies;
        for (int i = 0; i < state.range(0); ++i) {
            copies.emplace_back(from.filePath(nameOf(i)), copy.filePath(nameOf(i)));
            if (i % 100 == 0) {
                copy.mkpath(QString::number(i / 100));
            }
        }
        const std::vector<bool> areCopied = FileUtils::copyWithBackup(copies);
        return std::find(areCopied.begin(), areCopied.end(), false) == areCopied.end();
    });
}

void copyFolder(benchmark::State &state)
{
    measure(state, [](const QDir &from, const QDir &copy) {
        return FileUtils::copyRecursively(from.path(), copy.path());
    });
}

void copyAndSyncEach(benchmark::State &state)
{
    measure(state, [&](const QDir &from, const QDir &copy) {
        bool allCopied = true;
        for (int i = 0; i < state.range(0); ++i) {
            if (i % 100 == 0) {
                copy.mkpath(QString::number(i / 100));
            }
            allCopied =
                QFile::copy(from.filePath(nameOf(i)), copy.filePath(nameOf(i))) && allCopied;
        }
        return allCopied;
    });
}

BENCHMARK(cpAndSync)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyManyWithBackup)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyFolder)->Arg(500)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyAndSyncEach)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
