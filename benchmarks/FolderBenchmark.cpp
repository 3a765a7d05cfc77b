// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// What takes long in big folders: removing 100,000 files beside "rm -rf", and names that are not
/// taken beside asking for one after the other. The folder that TMPDIR names decides which disk is
/// measured. Compare medians of one run:
///     FolderBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <ovrabase/files/FileUtils.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using Vyn::OvraBase::FileUtils;

/// Makes 100 folders with 1,000 files each.
void fill(const QString &path)
{
    for (int folder = 0; folder < 100; ++folder) {
        const QString sub = path + u'/' + QString::number(folder) + u'/';
        FileUtils::makeFolder(sub);
        for (int file = 0; file < 1'000; ++file) {
            FileUtils::touch(sub + QString::number(file));
        }
    }
}

template<class Removal>
void remove(benchmark::State &state, Removal removal)
{
    const QTemporaryDir base;
    const QString path = base.filePath(QStringLiteral("folder"));
    for (auto _ : state) {
        state.PauseTiming();
        fill(path);
        state.ResumeTiming();
        removal(path);
        if (FileUtils::exists(path)) {
            state.SkipWithError("the folder is not removed");
        }
    }
}

void libraryRemoval(benchmark::State &state)
{
    remove(state, FileUtils::removeDirRecursiveIfItExists);
}

void systemRemoval(benchmark::State &state)
{
    remove(state, [](const QString &path) {
        QProcess::execute(QStringLiteral("rm"), {QStringLiteral("-rf"), path});
    });
}

BENCHMARK(libraryRemoval)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(systemRemoval)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The first candidate that is not a file, found by asking for each.
QString plainUniqueName(const QString &folder, const QString &stem, const QString &extension)
{
    const QDir dir(folder);
    const QString end = u'.' + extension;
    QString candidate = dir.filePath(stem + end);
    for (int number = 1; FileUtils::isFile(candidate); ++number) {
        const QString digits = QString::number(number).rightJustified(3, u'0');
        candidate = dir.filePath(stem + u'_' + digits + end);
    }
    return candidate;
}

template<class UniqueName>
void find(benchmark::State &state, UniqueName uniqueName)
{
    const QString stem = QStringLiteral("img");
    const QString extension = QStringLiteral("png");
    const QTemporaryDir folder;
    FileUtils::touch(folder.filePath(QStringLiteral("img.png")));
    for (int i = 1; i < state.range(0); ++i) {
        const QString digits = QString::number(i).rightJustified(3, u'0');
        FileUtils::touch(folder.filePath(QStringLiteral("img_%1.png").arg(digits)));
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(uniqueName(folder.path(), stem, extension));
    }
}

void libraryName(benchmark::State &state)
{
    find(state, FileUtils::getUniqueFileName);
}

void plainName(benchmark::State &state)
{
    find(state, plainUniqueName);
}

BENCHMARK(libraryName)->Arg(1)->Arg(10)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(plainName)->Arg(1)->Arg(10)->Arg(100)->Arg(1'000)->Arg(10'000);

/// Brings one file to the disk again and again.
template<class Bring>
void bringToDisk(benchmark::State &state, Bring bring)
{
    const QTemporaryDir base;
    const QByteArray tmpBefore = qgetenv("TMPDIR");
    qputenv("TMPDIR", base.path().toLocal8Bit());
    const QString before = QDir::currentPath();
    QDir::setCurrent(base.path());
    QDir().mkdir(QStringLiteral("c:"));
    FileUtils::saveTextToFile(QStringLiteral("content"), QStringLiteral("c:/a.png"));
    for (auto _ : state) {
        state.PauseTiming();
        FileUtils::clearApplicationTemporaryDir();
        const QString folder =
            FileUtils::createApplicationTemporaryDir() + QStringLiteral("/external_files");
        FileUtils::makeFolder(folder);
        state.ResumeTiming();
        for (int i = 0; i < state.range(0); ++i) {
            bring(folder);
        }
    }
    QDir::setCurrent(before);
    qputenv("TMPDIR", tmpBefore);
}

void libraryBringsToDisk(benchmark::State &state)
{
    bringToDisk(state, [](const QString &) {
        benchmark::DoNotOptimize(FileUtils::ensureFileIsOnDisk(QStringLiteral("c:/a.png")));
    });
}

void plainBringsToDisk(benchmark::State &state)
{
    bringToDisk(state, [](const QString &folder) {
        QFile::copy(QStringLiteral("c:/a.png"),
            plainUniqueName(folder, QStringLiteral("a"), QStringLiteral("png")));
    });
}

BENCHMARK(libraryBringsToDisk)
    ->Arg(100)
    ->Arg(1'000)
    ->Arg(4'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(plainBringsToDisk)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
