// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Copies of 10,000 small files that survive a power cut, beside "cp -r" and one sync of the file
/// system, and beside QFile::copy(), which syncs each file.
/// The folder that TMPDIR names decides which disk is measured. Compare medians of one run:
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

constexpr int kFiles = 10'000;

QString nameOf(int file)
{
    return QStringLiteral("%1/%2").arg(file / 100).arg(file);
}

/// A folder with the files, from 0 to 8 KB in size, in a hundred folders.
const QTemporaryDir &source()
{
    static const QTemporaryDir folder;
    static const bool isFilled = [] {
        for (int i = 0; i < kFiles; ++i) {
            const QString path = folder.filePath(nameOf(i));
            FileUtils::makeFolder(FileUtils::extractFolderPath(path));
            FileUtils::saveTextToFile(QString(i * 37 % 8192, u'x'), path);
        }
        return true;
    }();
    benchmark::DoNotOptimize(isFilled);
    return folder;
}

/// Measures \a copyTo, which is given the path of a new folder each time. Nothing else is left to
/// write to the disk when it begins.
void measure(benchmark::State &state, const std::function<bool(const QDir &)> &copyTo)
{
    source();
    for (auto _ : state) {
        state.PauseTiming();
        const auto destination = std::make_unique<QTemporaryDir>();
        QProcess::execute(QStringLiteral("sync"), {QStringLiteral("-f"), destination->path()});
        state.ResumeTiming();
        if (!copyTo(destination->filePath(QStringLiteral("copy")))) {
            state.SkipWithError("the copy fails");
        }
        state.PauseTiming();
        destination->remove();
        state.ResumeTiming();
    }
}

void cpAndSync(benchmark::State &state)
{
    measure(state, [](const QDir &copy) {
        return QProcess::execute(QStringLiteral("sh"),
                   {QStringLiteral("-c"), QStringLiteral("cp -r \"$0\" \"$1\" && sync -f \"$1\""),
                       source().path(), copy.path()}) == 0;
    });
}

void copyManyWithBackup(benchmark::State &state)
{
    measure(state, [](const QDir &copy) {
        std::vector<std::pair<QString, QString>> copies;
        for (int i = 0; i < kFiles; ++i) {
            copies.emplace_back(source().filePath(nameOf(i)), copy.filePath(nameOf(i)));
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
    measure(state,
        [](const QDir &copy) { return FileUtils::copyRecursively(source().path(), copy.path()); });
}

void copyAndSyncEach(benchmark::State &state)
{
    measure(state, [](const QDir &copy) {
        bool allCopied = true;
        for (int i = 0; i < kFiles; ++i) {
            if (i % 100 == 0) {
                copy.mkpath(QString::number(i / 100));
            }
            allCopied =
                QFile::copy(source().filePath(nameOf(i)), copy.filePath(nameOf(i))) && allCopied;
        }
        return allCopied;
    });
}

BENCHMARK(cpAndSync)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyManyWithBackup)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyFolder)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyAndSyncEach)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

BENCHMARK_MAIN();
