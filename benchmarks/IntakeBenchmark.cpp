// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Compares the example asset_intake, which gets 10,000 new files of about 1 GiB in all, with
/// "cp -r" of the same files, the hash of each and one sync of the file system. Compare medians of
/// one run:
///     IntakeBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include "Folders.h"

#include <ovrabase/files/FileUtils.h>

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

using Vyn::OvraBase::FileUtils;

constexpr int kFiles = 10'000;
constexpr qsizetype kMeanSize = (qsizetype{1} << 30) / kFiles;

/// Returns a folder with the new files, which have different sizes and contents, in 100
/// sub-folders.
QString source()
{
    static const QTemporaryDir folder;
    static const bool isFilled = [] {
        QByteArray content(2 * kMeanSize, Qt::Uninitialized);
        QRandomGenerator random(1);
        random.fillRange(
            reinterpret_cast<quint32 *>(content.data()), content.size() / qsizetype{4});
        for (int i = 0; i < kFiles; ++i) {
            const QString path = folder.filePath(QString::number(i / 100));
            FileUtils::makeFolder(path);
            QFile file(path + QStringLiteral("/asset_%1.png").arg(i));
            const auto size = static_cast<qsizetype>(random.bounded(int{2 * kMeanSize}));
            if (!file.open(QFile::WriteOnly) || file.write(QByteArray::number(i)) < 0 ||
                file.write(content.constData(), size) != size) {
                return false;
            }
        }
        return true;
    }();
    return isFilled ? folder.path() : QString();
}

bool run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    return process.waitForFinished(-1) && process.exitCode() == 0;
}

void intake(benchmark::State &state)
{
    const QString files = source();
    measureInNewFolder(state, [&](const QDir &library) {
        return run(QStringLiteral(OVRABASE_ASSET_INTAKE), {files, library.path()});
    });
}

void copyAndHash(benchmark::State &state)
{
    const QString files = source();
    measureInNewFolder(state, [&](const QDir &copy) {
        const bool isCopied = run(QStringLiteral("cp"), {QStringLiteral("-r"), files, copy.path()});
        for (const QString &file :
            FileUtils::folderParseFiles(files, {QStringLiteral("*")}, Vyn::Recursion::Recursive)) {
            benchmark::DoNotOptimize(FileUtils::fileDataToHash(file));
        }
        return isCopied && run(QStringLiteral("sync"), {QStringLiteral("-f"), copy.path()});
    });
}

BENCHMARK(intake)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyAndHash)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv);
}
