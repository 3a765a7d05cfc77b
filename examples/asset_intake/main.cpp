// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Takes a folder of files into an asset library, as a host application of ovrabase would:
//   asset_intake SOURCE LIBRARY
// Without arguments it takes the images and icons that the machine has into a temporary library.
// Exit status: 0 all well, 1 something failed, 2 wrong arguments.

#include "Console.h"
#include "Intake.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>
#include <ovrabase/services/future.h>

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#if OVRABASE_HAS_STLAB
#include <stlab/concurrency/default_executor.hpp>
#include <stlab/pre_exit.hpp>
#endif

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <system_error>
#include <vector>

using namespace Vyn;
using namespace Vyn::OvraBase;

namespace {

struct Job {
    QString destination; ///< the folder of the library
    std::vector<QString> files;
    std::vector<QString> closedFolders; ///< not all that they hold can be told
};

/// Returns the canonical path of \a folder, which all paths below it begin with.
QString beginningOfPathsIn(const QString &folder)
{
    const QString path = QDir(folder).canonicalPath();
    return path.endsWith(u'/') ? path : QString(path + u'/');
}

/// Whether both are one folder, or the first lies inside the second.
bool isAtOrBelow(const QString &path, const QString &folder)
{
    return beginningOfPathsIn(path).startsWith(beginningOfPathsIn(folder));
}

/// Whether \a folder can be read and Qt can spell the names of all that it holds.
bool isListedWhole(const QString &folder)
{
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    std::error_code error;
    qsizetype count = 0;
    std::filesystem::directory_iterator entry(QFileInfo(folder).filesystemFilePath(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        ++count;
    }
    return !error && count <= QDir(folder).entryList(all).size(); // more may have come meanwhile
}

/// Adds the files of \a source, sorted, but those of the library, should it lie inside.
void addFilesOf(const QString &source, Job &job)
{
    const QString folder = QFileInfo(source).canonicalFilePath();
    std::vector<QString> files =
        FileUtils::folderParseFiles(folder, {QStringLiteral("*")}, Recursion::Recursive);
    if (!isListedWhole(folder)) {
        job.closedFolders.push_back(folder);
    }
    QDirIterator others(
        folder, QDir::Dirs | QDir::System | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    const QString library = beginningOfPathsIn(job.destination);
    while (others.hasNext()) {
        const QString path = others.next();
        const QFileInfo entry = others.fileInfo();
        const bool isLink = entry.isSymLink(); // of a folder, it is not followed
        if (isLink && !entry.exists()) {
            files.push_back(path); // its content is missing, which will be told
        } else if (!isLink && entry.isDir() && !QString(path + u'/').startsWith(library) &&
                   !isListedWhole(path)) {
            job.closedFolders.push_back(path);
        }
    }
    std::erase_if(files, [&library](const QString &file) { return file.startsWith(library); });
    std::sort(files.begin(), files.end());
    job.files.insert(job.files.end(), files.begin(), files.end());
}

/// Returns the images and icons of the machine, to go into a fresh temporary library.
Job machinesImages()
{
    Job job;
    job.destination = FileUtils::createApplicationTemporaryDir();
    for (const QString &folder : {QStringLiteral("icons"), QStringLiteral("pixmaps")}) {
        for (const QString &found : QStandardPaths::locateAll(
                 QStandardPaths::GenericDataLocation, folder, QStandardPaths::LocateDirectory)) {
            addFilesOf(found, job);
        }
    }
    return job;
}

/// Starts \a work on another thread, with what the library's futures stand on.
Vyn::future<void> inBackground(std::function<void()> work)
{
#if OVRABASE_HAS_STLAB
    return stlab::async(stlab::default_executor, std::move(work));
#else
    return std::async(std::launch::async, std::move(work)).share();
#endif
}

/// Saves the manifest on another thread, registered while it runs as an application would.
bool saveInBackground(const Manifest &manifest)
{
    auto *const recovery = ServiceLocator::instance()->service<DefaultAsyncRecovery>();
    bool saved = false;
    const Vyn::future<void> saving = inBackground([&] { saved = manifest.save(); });
    recovery->registerRecoverable(1, saving, QStringLiteral("save the manifest"));
    saving.await();
    recovery->unregisterRecoverable(1);
    return saved;
}

/// What a hard failure looks like to a caller: logged by the library, caught by its root class.
void showFailingCall()
{
    try {
        FileUtils::changeFilePathExtension(QStringLiteral("mesh.obj"), QString());
    } catch (const Exception::BaseException &failure) {
        std::printf("A failing call arrives as: %s (sub-code %u)\n", failure.what(),
            failure.errorSubCode());
    }
}

void print(const Summary &summary, double seconds)
{
    const QLocale locale = QLocale::c();
    std::printf(
        "\n%-13s%9s%12s%9s%11s%9s\n", "class", "files", "size", "new", "duplicate", "renamed");
    for (const auto &[name, tally] : summary.byClass) {
        std::printf("%-13s%9lld%12s%9lld%11lld%9lld\n", qUtf8Printable(name),
            static_cast<long long>(tally.files),
            qUtf8Printable(locale.formattedDataSize(tally.bytes)),
            static_cast<long long>(tally.added), static_cast<long long>(tally.duplicates),
            static_cast<long long>(tally.renamed));
    }
    std::printf("%s (%lld files, %s), %lld failed, %.2f s\n",
        summary.copied == 0 ? "Nothing to copy" : "Copied", static_cast<long long>(summary.copied),
        qUtf8Printable(locale.formattedDataSize(summary.copiedBytes)),
        static_cast<long long>(summary.failed), seconds);
}

bool run(const Job &job, const QElapsedTimer &timer)
{
    auto *const messages = ServiceLocator::instance()->service<MessagingService>();
    messages->showInformation(getApplicationVersionString(),
        QStringLiteral("%1 files for %2").arg(job.files.size()).arg(job.destination));

    Manifest manifest(job.destination);
    Summary summary;
    {
        const auto mute = messages->mute(); // the listing speaks for each file
        summary = takeIn(job.files, job.destination, manifest);
    }
    for (const QString &folder : job.closedFolders) {
        messages->showError(QStringLiteral("Not all in it can be read"), folder);
        ++summary.failed;
    }
    if (!saveInBackground(manifest)) {
        messages->showError(QStringLiteral("Manifest"), QStringLiteral("it cannot be written"));
        ++summary.failed;
    }
    print(summary, static_cast<double>(timer.elapsed()) / 1000);
    if (summary.failed > 0) {
        messages->showWarning(QStringLiteral("Intake"), QStringLiteral("not all went well"));
    }
    return summary.failed == 0;
}

/// Returns the job that the arguments ask for, or none when they are wrong.
std::optional<Job> jobFrom(const QStringList &arguments)
{
    if (arguments.isEmpty()) {
        return machinesImages();
    }
    if (arguments.size() != 2 || !FileUtils::isFolder(arguments.at(0)) ||
        arguments.at(1).isEmpty()) {
        return std::nullopt;
    }
    const QString &library = arguments.at(1);
    if (!FileUtils::makeFolder(library)) {
        throw Exception::FolderCreationException("it is no folder and cannot be made one", library);
    }
    if (isAtOrBelow(arguments.at(0), library)) {
        return std::nullopt;
    }
    Job job{library, {}, {}};
    addFilesOf(arguments.at(0), job);
    return job;
}

int intake(const QStringList &arguments)
{
    QElapsedTimer timer;
    timer.start();
    try {
        const std::optional<Job> job = jobFrom(arguments);
        if (!job) {
            std::fputs(
                "usage: asset_intake SOURCE LIBRARY (SOURCE is a folder outside of LIBRARY)\n",
                stderr);
            return 2;
        }
        showFailingCall();
        return run(*job, timer) ? 0 : 1;
    } catch (const Exception::IOException &failure) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(failure.subject()), failure.what());
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "the intake failed: %s\n", failure.what());
    }
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("asset_intake"));

    bindLoggers();
    const auto console = spdlog::stderr_logger_st("console");
    console->set_pattern("%l: %v");
    const Core::Log::ScopedPushLogDelegate log(
        std::make_shared<Core::Log::SpdlogDelegate>(console));
    Core::Log::installQtMessageHandler();

    ServiceLocator::start();
    const auto &locator = ServiceLocator::instance();
    if (!locator->registerService(std::make_unique<DefaultAsyncRecovery>()) ||
        !locator->registerService<MessagingService>(std::make_unique<ConsoleMessages>())) {
        return 1;
    }

    const int status = intake(QCoreApplication::arguments().mid(1));

    ServiceLocator::stop();
#if OVRABASE_HAS_STLAB
    stlab::pre_exit();
#endif
    return status;
}
