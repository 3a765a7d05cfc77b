// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Folders that are swapped for links to a victim while they are being removed. The victim has
/// files of the same names and must lose none of them.

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/files/GenericCacheController.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <system_error>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Vyn::OvraBase::FileUtils;

constexpr int kFolders = 8;
constexpr int kFiles = 3'000;
/// A busy machine may not let the other thread swap in time.
constexpr int kMostTries = 5;

QString text(const fs::path &path)
{
    return QString::fromStdString(path.string());
}

void fill(const fs::path &folder)
{
    fs::create_directories(folder);
    for (int i = 0; i < kFiles; ++i) {
        std::ofstream(folder / std::to_string(i));
    }
}

auto countEntries(const fs::path &folder)
{
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

class Cache final : public Vyn::OvraBase::GenericCacheController {
public:
    explicit Cache(const fs::path &path)
        : mPath(text(path))
    {
    }
    QString cacheFolderPath() const override { return mPath; }
    void setCacheFolderPath(const QString &path) override { mPath = path; }

private:
    QString mPath;
};

void removeFolder(const fs::path &path)
{
    try {
        FileUtils::removeDirRecursiveIfItExists(text(path));
    } catch (const Vyn::Exception::FolderDeletionException &) {
        // something took the place of a folder
    }
}

fs::path folderAt(const fs::path &parent, int index)
{
    return parent / std::to_string(index);
}

void forEachFolder(const fs::path &parent, const std::function<void(const fs::path &)> &call)
{
    for (int i = 0; i < kFolders; ++i) {
        call(folderAt(parent, i));
    }
}

const struct {
    const char *name;
    void (*removal)(const fs::path &parent);
} kRemovals[] = {
    {"removeDirRecursiveIfItExists, links inside", removeFolder},
    {"removeDirRecursiveIfItExists, link in its place",
        [](const fs::path &parent) { forEachFolder(parent, removeFolder); }},
    {"clearApplicationTemporaryDir",
        [](const fs::path &parent) {
            qputenv("TMPDIR", text(parent.parent_path()).toLocal8Bit());
            QCoreApplication::setApplicationName(text(parent.filename()));
            FileUtils::clearApplicationTemporaryDir();
        }},
    {"purge", [](const fs::path &parent) { Cache(parent).purge(); }},
    {"clear, links inside", [](const fs::path &parent) { Cache(parent).clear(); }},
    {"clear, link in its place",
        [](const fs::path &parent) {
            forEachFolder(parent, [](const fs::path &folder) { Cache(folder).clear(); });
        }},
};

/// Swaps each folder in \a parent for a link to \a victim as soon as it begins to lose files.
/// Returns how many were swapped.
int swapFolders(const fs::path &parent, const fs::path &victim, std::atomic<bool> &isReady,
    const std::atomic<bool> &isOver)
{
    std::error_code gone;
    std::array<fs::file_time_type, kFolders> before;
    std::array<bool, kFolders> isSwapped{};
    for (int i = 0; i < kFolders; ++i) {
        before[std::size_t(i)] = fs::last_write_time(folderAt(parent, i));
    }
    isReady = true;
    int swaps = 0;
    while (!isOver && swaps < kFolders) {
        for (int i = 0; i < kFolders; ++i) {
            const fs::path folder = folderAt(parent, i);
            const auto now = fs::last_write_time(folder, gone);
            if (gone || isSwapped[std::size_t(i)] || now == before[std::size_t(i)]) {
                continue;
            }
            fs::rename(folder, folder.string() + "moved", gone);
            fs::create_directory_symlink(victim, folder, gone);
            isSwapped[std::size_t(i)] = !gone;
            swaps += isSwapped[std::size_t(i)] ? 1 : 0;
        }
    }
    return swaps;
}

/// Returns whether the victim kept everything although folders were swapped.
bool survives(const char *name, void (*removal)(const fs::path &))
{
    for (int attempt = 0; attempt < kMostTries; ++attempt) {
        const QTemporaryDir base;
        const fs::path parent = base.filePath(QStringLiteral("folders")).toStdString();
        const fs::path victim = base.filePath(QStringLiteral("victim")).toStdString();
        fill(victim);
        forEachFolder(parent, fill);

        std::atomic<bool> isReady = false;
        std::atomic<bool> isOver = false;
        int swaps = 0;
        std::thread swapper([&] { swaps = swapFolders(parent, victim, isReady, isOver); });
        while (!isReady) {
            std::this_thread::yield();
        }
        removal(parent);
        isOver = true;
        swapper.join();

        const auto lost = kFiles - countEntries(victim);
        std::printf("%s: %d folders swapped, %d files lost\n", name, swaps, static_cast<int>(lost));
        if (lost != 0 || swaps > 0) {
            return lost == 0;
        }
    }
    std::printf("%s: no folder could be swapped in time, so nothing was tested\n", name);
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    bool allSurvive = true;
    for (const auto &[name, removal] : kRemovals) {
        allSurvive = survives(name, removal) && allSurvive;
    }
    return allSurvive ? EXIT_SUCCESS : EXIT_FAILURE;
}
