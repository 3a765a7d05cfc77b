// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Compares the library's copies of small files, which survive a power cut, with "cp -r" and one
/// sync of the file system, and with QFile::copy(), which syncs each file.
/// Compare medians of one run:
///     CopyBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include "Folders.h"

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <map>
#include <utility>
#include <vector>

namespace {

using Vyn::OvraBase::FileUtils;

QString nameOf(int file)
{
    return QStringLiteral("%1/%2").arg(file / 100).arg(file);
}

int countFor(const benchmark::State &state)
{
    return static_cast<int>(state.range(0));
}

/// Returns a folder with the number of files that \a state asks for. Each file has up to 8 KB, and
/// each sub-folder has 100 files.
QDir source(const benchmark::State &state)
{
    static std::map<int, QTemporaryDir> folders;
    const auto [found, isNew] = folders.try_emplace(countFor(state));
    for (int i = 0; isNew && i < countFor(state); ++i) {
        const QString path = found->second.filePath(nameOf(i));
        FileUtils::makeFolder(FileUtils::extractFolderPath(path));
        QFile file(path);
        if (!file.open(QFile::WriteOnly) || file.write(QByteArray(i * 37 % 8192, 'x')) < 0) {
            qFatal("%s cannot be written", qUtf8Printable(path));
        }
    }
    return QDir(found->second.path());
}

void cpAndSync(benchmark::State &state)
{
    const QDir files = source(state);
    measureInNewFolder(state, [&](const QDir &copy) {
        return QProcess::execute(QStringLiteral("sh"),
                   {QStringLiteral("-c"), QStringLiteral("cp -r \"$0\" \"$1\" && sync -f \"$1\""),
                       files.path(), copy.path()}) == 0;
    });
}

void copyManyWithBackup(benchmark::State &state)
{
    const QDir files = source(state);
    measureInNewFolder(state, [&](const QDir &copy) {
        std::vector<std::pair<QString, QString>> copies;
        for (int i = 0; i < countFor(state); ++i) {
            copies.emplace_back(files.filePath(nameOf(i)), copy.filePath(nameOf(i)));
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
    const QDir files = source(state);
    measureInNewFolder(state,
        [&](const QDir &copy) { return FileUtils::copyRecursively(files.path(), copy.path()); });
}

void copyAndSyncEach(benchmark::State &state)
{
    const QDir files = source(state);
    measureInNewFolder(state, [&](const QDir &copy) {
        bool allCopied = true;
        for (int i = 0; i < countFor(state); ++i) {
            if (i % 100 == 0) {
                copy.mkpath(QString::number(i / 100));
            }
            allCopied =
                QFile::copy(files.filePath(nameOf(i)), copy.filePath(nameOf(i))) && allCopied;
        }
        return allCopied;
    });
}

void fewCounts(benchmark::internal::Benchmark *contender)
{
    contender->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond)->UseRealTime();
}

void counts(benchmark::internal::Benchmark *contender)
{
    fewCounts(contender->Arg(10'000));
}

BENCHMARK(cpAndSync)->Apply(counts);
BENCHMARK(copyManyWithBackup)->Apply(counts);
BENCHMARK(copyFolder)->Apply(counts);
BENCHMARK(copyAndSyncEach)->Apply(fewCounts); // not 10,000: it waits for the disk for each file

} // namespace

BENCHMARK_MAIN();
