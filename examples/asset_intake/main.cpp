// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// A command-line program that uses ovrabase: it copies the files of a folder into an asset library.
// Exit status: 0 success, 1 something failed, 2 wrong arguments.

#include "AssetLibrary.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/SpdlogDelegate.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>

#include <spdlog/details/os.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <span>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;
using namespace Qt::StringLiterals;
using Vyn::OvraBase::FileUtils;

namespace {

/// Replaces the current line by \a text, if the standard output is a terminal.
void showProgress(const QString &text)
{
    if (spdlog::details::os::in_terminal(stdout)) {
        std::printf("\r%-40s\r", qUtf8Printable(text));
        std::fflush(stdout);
    }
}

/// Counts the results by asset class, and keeps the lines that are shown above the table.
struct Summary {
    void add(const Arrival &file)
    {
        const QString assetClass = assetClassOf(file.path);
        const QString line = assetClass.leftJustified(13) + file.path + u"  "_s + file.text;
        if (listsAll) {
            std::puts(qUtf8Printable(line));
        } else if (file.result >= Result::Renamed) {
            notable[file.result].append(line);
        }
        Row &row = rows[assetClass];
        ++row.files[static_cast<std::size_t>(file.result)];
        row.bytes += file.size;
        if (file.result == Result::Failed) {
            ++failed;
        } else if (file.result >= Result::New) {
            ++copied;
            copiedBytes += file.size;
        }
    }

    /// Prints the summary. Returns true if nothing failed.
    bool print(double seconds) const
    {
        constexpr qsizetype kMostLines = 10; // failures are all printed
        for (const auto &[result, lines] : notable) {
            const auto most = result == Result::Failed ? lines.size() : kMostLines;
            std::puts(qUtf8Printable(lines.mid(0, most).join(u'\n')));
            if (lines.size() > most) {
                std::printf(
                    "... and %d more (see --list)\n", static_cast<int>(lines.size() - most));
            }
        }
        std::puts("\nclass                size unchanged duplicate       new   renamed  replaced   "
                  " failed");
        for (const auto &[assetClass, row] : rows) {
            std::printf(
                "%-13s%12s", qUtf8Printable(assetClass), qUtf8Printable(sizeText(row.bytes)));
            for (const int files : row.files) {
                std::printf("%10d", files);
            }
            std::puts("");
        }
        std::printf("%s (%d files, %s), %d failed, %.2f s\n",
            copied + failed == 0 ? "Nothing to copy" : "Copied", copied,
            qUtf8Printable(sizeText(copiedBytes)), failed, seconds);
        return failed == 0;
    }

    struct Row {
        std::array<int, kResults> files{}; ///< by result
        qint64 bytes = 0;
    };

    static QString sizeText(qint64 bytes) { return QLocale::c().formattedDataSize(bytes); }

    const bool listsAll; ///< prints a line for each file immediately
    int failed = 0;
    int copied = 0;
    qint64 copiedBytes = 0;
    std::map<QString, Row> rows = {};
    std::map<Result, QStringList> notable = {}; ///< lines above the table
};

/// Adds the files in \a folder and its sub-folders to \a files. Ignores \a library, linked folders,
/// and hidden files and folders. A folder that cannot be read becomes a failure of \a summary.
/// Dangling links and names that are not UTF-8, which FileUtils::folderParseFiles() leaves out, are
/// added: the intake reports them as failed.
void find(const QString &folder, const QDir &library, std::vector<QString> &files, Summary &summary)
{
    std::error_code error;
    fs::directory_iterator entry(QFileInfo(folder).filesystemFilePath(), error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        const QFileInfo file(QDir(folder), QFileInfo(entry->path()).fileName());
        const QString path = file.filePath();
        if (file.isHidden()) {
            continue;
        }
        if (file.isFile() || !file.exists()) {
            files.push_back(path);
        } else if (file.isDir() && !file.isSymLink() && !file.isJunction() &&
                   QDir(path) != library) {
            find(path, library, files, summary);
        }
    }
    if (error) {
        summary.add({folder, 0, Result::Failed, QString::fromLocal8Bit(error.message().c_str())});
    }
}

/// Copies the files of \a sources into \a library. Returns the exit status.
int takeIn(const QStringList &sources, const QString &library, bool listsAll)
{
    QElapsedTimer timer;
    timer.start();
    std::vector<QString> files;
    Summary summary{listsAll};
    for (const QString &source : sources) {
        find(QFileInfo(source).canonicalFilePath(), QDir(library), files, summary);
    }
    std::sort(files.begin(), files.end());
    std::printf("%zu files for %s\n", files.size(), qUtf8Printable(library));

    AssetLibrary assets(library);
    std::size_t done = 0;
    assets.takeIn(files, [&](std::span<const Arrival> batch) {
        showProgress({});
        std::for_each(batch.begin(), batch.end(), [&](const Arrival &file) { summary.add(file); });
        done += batch.size();
        showProgress(u"%1 of %2 files"_s.arg(done).arg(files.size()));
    });
    showProgress({});
    if (!assets.saveManifest()) {
        summary.add({library, 0, Result::Failed, u"the manifest cannot be written"_s});
    }
    return summary.print(static_cast<double>(timer.elapsed()) / 1000) ? 0 : 1;
}

/// Returns true if \a folder is \a other or inside it.
bool isInside(const QString &folder, const QString &other)
{
    const fs::path relative =
        fs::relative(QFileInfo(folder).filesystemFilePath(), QFileInfo(other).filesystemFilePath());
    return !relative.empty() && *relative.begin() != "..";
}

/// Runs what \a arguments ask for. Returns the exit status.
int run(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Copies the files below SOURCE into LIBRARY, each content once, under valid and unique\n"
        "names. A file that was changed since its last intake replaces its copy, and the old\n"
        "content is kept with the ending \".bak\", if the copy has no other source and no backup\n"
        "yet. Otherwise it is copied like a new file. LIBRARY/manifest.json tells where each file\n"
        "came from.\n"
        "Without folders, the system's icons and pixmaps are copied to a temporary library."));
    parser.addPositionalArgument(u"SOURCE"_s, u"A folder outside of LIBRARY."_s, u"[SOURCE"_s);
    parser.addPositionalArgument(
        u"LIBRARY"_s, u"A folder, made if it is missing."_s, u"LIBRARY]"_s);
    const QCommandLineOption list(u"list"_s, u"Show every file."_s);
    const QCommandLineOption help = parser.addHelpOption();
    parser.addOption(list);
    const bool isParsed = parser.parse(arguments);
    const QStringList folders = parser.positionalArguments();
    if (parser.isSet(help)) {
        std::puts(qUtf8Printable(parser.helpText()));
        return 0;
    }
    if (isParsed && folders.isEmpty()) {
        const auto dataFolders = [](const QString &name) {
            return QStandardPaths::locateAll(
                QStandardPaths::GenericDataLocation, name, QStandardPaths::LocateDirectory);
        };
        return takeIn(dataFolders(u"icons"_s) + dataFolders(u"pixmaps"_s),
            FileUtils::createApplicationTemporaryDir(), parser.isSet(list));
    }
    if (!isParsed || folders.size() != 2 || !FileUtils::isFolder(folders[0]) ||
        folders[1].isEmpty() || isInside(folders[0], folders[1])) {
        std::fprintf(
            stderr, "wrong arguments, see --help. %s\n", qUtf8Printable(parser.errorText()));
        return 2;
    }
    FileUtils::makeFolder(folders[1]); // if this fails, the constructor of AssetLibrary throws
    return takeIn({folders[0]}, folders[1], parser.isSet(list));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"asset_intake"_s);
    Vyn::OvraBase::bindLoggers();
    const auto console = spdlog::stderr_logger_st("console");
    console->set_pattern("%l: %v");
    const Vyn::Core::Log::ScopedPushLogDelegate log(
        std::make_shared<Vyn::Core::Log::SpdlogDelegate>(console));
    Vyn::Core::Log::installQtMessageHandler();
    try {
        return run(QCoreApplication::arguments());
    } catch (const Vyn::Exception::IOException &failure) {
        std::fprintf(stderr, "%s: %s\n", qUtf8Printable(failure.subject()), failure.what());
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "the intake failed: %s\n", failure.what());
    }
    return 1;
}
