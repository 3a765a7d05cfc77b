// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// asset_intake with 10,000 new files, 1 GiB in all, beside "cp -r" of them, the hash of each and
/// one sync of the file system. The folder that TMPDIR names decides which disk is measured.
/// Compare medians of one run:
///     IntakeBenchmark --benchmark_enable_random_interleaving=true --benchmark_repetitions=9

#include <ovrabase/files/FileUtils.h>

#include <QCoreApplication>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <functional>
#include <memory>

namespace {

using Vyn::OvraBase::FileUtils;

constexpr int kFiles = 10'000;
constexpr qsizetype kMeanSize = (qsizetype{1} << 30) / kFiles;

/// The files to take in, of different sizes and contents, in a hundred folders.
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

/// Measures \a work, which is given a new folder each time.
void measure(benchmark::State &state, const std::function<bool(const QString &)> &work)
{
    if (source().isEmpty()) {
        state.SkipWithError("the files cannot be written");
    }
    for (auto _ : state) {
        state.PauseTiming();
        const auto destination = std::make_unique<QTemporaryDir>();
        state.ResumeTiming();
        if (!work(destination->filePath(QStringLiteral("copy")))) {
            state.SkipWithError("the work fails");
        }
        state.PauseTiming();
        destination->remove();
        state.ResumeTiming();
    }
}

void intake(benchmark::State &state)
{
    measure(state, [](const QString &library) {
        return run(QStringLiteral(OVRABASE_ASSET_INTAKE), {source(), library});
    });
}

void copyAndHash(benchmark::State &state)
{
    measure(state, [](const QString &copy) {
        const bool isCopied = run(QStringLiteral("cp"), {QStringLiteral("-r"), source(), copy});
        for (const QString &file : FileUtils::folderParseFiles(
                 source(), {QStringLiteral("*")}, Vyn::Recursion::Recursive)) {
            benchmark::DoNotOptimize(FileUtils::fileDataToHash(file));
        }
        return isCopied && run(QStringLiteral("sync"), {QStringLiteral("-f"), copy});
    });
}

BENCHMARK(intake)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(copyAndHash)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
