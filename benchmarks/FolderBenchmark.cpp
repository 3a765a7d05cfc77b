// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Compares the removal of up to 100,000 files with "rm -rf", the search for a free name with a
/// plain loop that tests one name after another, and ensureFileIsOnDisk() with the same loop and
/// QFile::copy(). Compare medians of one run:
///     FolderBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include "Folders.h"

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>

namespace {

using Vyn::OvraBase::FileUtils;

/// Makes 100 folders with \a count files in all.
void fill(const QString &path, std::int64_t count)
{
    for (int folder = 0; folder < 100; ++folder) {
        const QString sub = path + u'/' + QString::number(folder) + u'/';
        FileUtils::makeFolder(sub);
        for (int file = 0; file < count / 100; ++file) {
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
        fill(path, state.range(0));
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

void counts(benchmark::internal::Benchmark *contender)
{
    contender->Arg(1'000)->Arg(10'000)->Arg(100'000);
    contender->Unit(benchmark::kMillisecond)->UseRealTime();
}

BENCHMARK(libraryRemoval)->Apply(counts);
BENCHMARK(systemRemoval)->Apply(counts);

/// Returns true if \a name ends in "_" and three digits. The library counts on from that number.
bool endsWithNumber(QStringView name)
{
    return name.size() > 3 && name[name.size() - 4] == u'_' &&
           std::all_of(name.end() - 3, name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

/// Returns the path of the first name that is not a file. Tests one name after the other.
QString plainUniqueName(const QString &folder, const QString &baseName, const QString &extension)
{
    QString stem = baseName;
    qint64 number = 1;
    if (endsWithNumber(baseName)) {
        number = QStringView(baseName).last(3).toInt() + 1;
        stem.chop(4);
    }
    const QDir dir(folder);
    const QString end = u'.' + extension;
    QString candidate = dir.filePath(stem + end);
    for (; FileUtils::isFile(candidate); ++number) {
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
    for (int i = 0; i < state.range(0); ++i) {
        const QString last = QStringLiteral("img_%1").arg(i - 1, 3, 10, QChar(u'0'));
        FileUtils::touch(plainUniqueName(folder.path(), i < 2 ? stem : last, extension));
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

BENCHMARK(libraryName)->Arg(0)->Arg(1)->Arg(3)->Arg(10)->Arg(100)->Arg(1'000)->Arg(10'000);
BENCHMARK(plainName)->Arg(0)->Arg(1)->Arg(3)->Arg(10)->Arg(100)->Arg(1'000)->Arg(10'000);

#ifdef Q_OS_LINUX
/// Copies one file \a state.range(0) times, each time under a new name. Its path "c:/a.png" is
/// relative on Linux; the library takes the "c" for a URL scheme, and so copies the file.
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

BENCHMARK(libraryBringsToDisk)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(plainBringsToDisk)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv);
}
