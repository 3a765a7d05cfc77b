// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileSystem_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNotCopiedWithFolder{
    "FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()"};

constexpr QDir::Filters kEverything =
    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

struct PlannedCopy {
    enum Kind { Folder, File, Impossible };
    Kind kind;
    QString from;
    QString to;
    /// Canonical paths of the folders that hold the links on the way here.
    QStringList linkedFrom = {};
};

bool isAtOrBelow(const QString &path, const QString &folder)
{
    return path == folder ||
           path.startsWith(folder.endsWith(u'/') ? folder : QString(folder + u'/'));
}

/// Returns how many entries a folder has, or -1 when it cannot be read to its end.
qsizetype countEntries(const QString &path)
{
    std::error_code error;
    qsizetype count = 0;
    std::filesystem::directory_iterator entry(os::nativePath(path), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        ++count;
    }
    return error ? -1 : count;
}

/// Lists what a folder holds now, every folder before its content.
class FolderCopyPlan {
public:
    FolderCopyPlan(const QString &source, const QString &destination)
        : mCopies{{PlannedCopy::Folder, source, destination}}
    {
        for (std::size_t i = 0; i < mCopies.size(); ++i) {
            if (mCopies[i].kind == PlannedCopy::Folder && !addContent(PlannedCopy(mCopies[i]))) {
                mCopies.push_back(mCopies[i]);
                mCopies.back().kind = PlannedCopy::Impossible;
            }
        }
    }

    const std::vector<PlannedCopy> &copies() const { return mCopies; }

private:
    /// Returns whether all of the content could be listed.
    bool addContent(const PlannedCopy &folder)
    {
        const QDir dir(folder.from);
        const QFileInfoList entries = dir.entryInfoList(kEverything, QDir::Unsorted);
        for (const QFileInfo &entry : entries) {
            addEntry(entry, folder);
        }
        // Qt tells neither that a folder cannot be read nor which names it cannot spell.
        return !QFileInfo(folder.from).isNativePath() ||
               countEntries(folder.from) == entries.size();
    }

    void addEntry(const QFileInfo &entry, const PlannedCopy &folder)
    {
        const QString name = QDir::separator() + entry.fileName();
        PlannedCopy copy{PlannedCopy::Impossible, folder.from + name, folder.to + name};
        if (entry.isFile() || entry.isShortcut()) {
            copy.kind = PlannedCopy::File;
        } else if (entry.isDir()) {
            copy.linkedFrom = folder.linkedFrom;
            copy.kind = isLink(entry) && !mayFollow(entry, folder, copy.linkedFrom)
                            ? PlannedCopy::Impossible
                            : PlannedCopy::Folder;
        }
        mCopies.push_back(copy);
    }

    /// Whether the content behind \a link, which stands in \a folder, comes in: not where that
    /// leads back, and not without end where folders behind links link to each other.
    bool mayFollow(const QFileInfo &link, const PlannedCopy &folder, QStringList &linkedFrom)
    {
        constexpr int kMostNested = 1000;
        const QString target = link.canonicalFilePath();
        const bool isNested = !linkedFrom.isEmpty();
        linkedFrom.append(QFileInfo(folder.from).canonicalFilePath());
        return std::none_of(linkedFrom.cbegin(), linkedFrom.cend(), [&](const QString &origin) {
            return isAtOrBelow(origin, target);
        }) && (!isNested || ++mNested[target] <= kMostNested);
    }

    std::vector<PlannedCopy> mCopies;
    QHash<QString, int> mNested; ///< how often a folder was met behind a second link
};

} // namespace

bool FileUtils::copyRecursively(const QString &source, const QString &destination)
{
    if (!isFolder(source) || !canBePath(destination)) {
        return false;
    }
    bool allCopied = true;
    const FolderCopyPlan plan(source, QDir(source).absoluteFilePath(destination));
    for (const PlannedCopy &copy : plan.copies()) {
        if (copy.kind == PlannedCopy::Folder) {
            QDir().mkpath(copy.to); // without it, the copy of each file inside tells
        } else if (copy.kind == PlannedCopy::Impossible || !QFile::copy(copy.from, copy.to)) {
            logAt(kNotCopiedWithFolder, Support, Logger::Warning,
                QStringLiteral("Error while copying : %1 to : %2").arg(copy.from, copy.to));
            allCopied = false;
        }
    }
    return allCopied;
}

} // namespace Vyn::OvraBase
