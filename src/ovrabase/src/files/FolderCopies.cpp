// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileCopy_p.h"
#include "files/FileSystem_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNotCopiedWithFolder{
    "FileUtils.cpp:770 Vyn::OvraBase::FileUtils::copyRecursively()"};

struct PlannedCopy {
    enum Kind { Folder, File, Impossible };
    Kind kind; ///< Impossible: the copy is not tried, and is reported as a failure
    QString from;
    QString to;
    /// For a folder: the canonical paths of the folders that contain the links which were followed
    /// from the source to it.
    QStringList linkedFrom = {};
    bool isEmpty = false; ///< a folder whose content adds no PlannedCopy
};

bool isAtOrBelow(const QString &path, const QString &folder)
{
    return path == folder ||
           path.startsWith(folder.endsWith(u'/') ? folder : QString(folder + u'/'));
}

/// Returns true if \a entry, which is neither a file nor a folder, is known to be a pipe, a socket,
/// a device or a dangling link.
bool isOfAnotherKind(const QFileInfo &entry)
{
    if (!isLink(entry)) {
        return entry.exists();
    }
    std::error_code error;
    const auto status = std::filesystem::status(os::nativePath(entry.filePath()), error);
    return std::filesystem::status_known(status) ||
           error == std::errc::too_many_symbolic_link_levels;
}

std::error_code listNames(const QString &folder, QStringList &names)
{
    if (QFileInfo(folder).isNativePath()) {
        return os::listFolder(folder, names);
    }
    names = QDir(folder).entryList();
    return {};
}

/// The copies that are to be made of a folder and its content. The constructor lists the content.
/// Each folder comes before its content.
class FolderCopyPlan {
public:
    FolderCopyPlan(const QString &source, const QString &destination)
        : mCopies{{PlannedCopy::Folder, source, destination}}
    {
        std::size_t next = 0;
        while (next < mCopies.size()) { // addContent() appends to it
            if (mCopies[next].kind == PlannedCopy::Folder) {
                const std::size_t before = mCopies.size();
                addContent(PlannedCopy(mCopies[next]));
                mCopies[next].isEmpty = mCopies.size() == before;
            }
            ++next;
        }
    }

    const std::vector<PlannedCopy> &copies() const { return mCopies; }

private:
    void addContent(const PlannedCopy &folder)
    {
        QStringList names;
        const std::error_code error = listNames(folder.from, names);
        for (const QString &name : names) {
            addEntry(QDir::separator() + name, folder);
        }
        if (error) {
            mCopies.push_back({PlannedCopy::Impossible, folder.from, folder.to});
        }
    }

    void addEntry(const QString &name, const PlannedCopy &folder)
    {
        PlannedCopy copy{PlannedCopy::Impossible, folder.from + name, folder.to + name};
        const QFileInfo entry(copy.from);
        if (entry.isFile() || entry.isShortcut()) {
            copy.kind = PlannedCopy::File;
        } else if (entry.isDir()) {
            copy.linkedFrom = folder.linkedFrom;
            copy.kind = isLink(entry) && !mayFollow(entry, folder, copy.linkedFrom)
                            ? PlannedCopy::Impossible
                            : PlannedCopy::Folder;
        } else if (isOfAnotherKind(entry)) {
            return;
        }
        mCopies.push_back(copy);
    }

    /// Returns true if the folder to which \a link leads is to be copied. Then \a linkedFrom ends
    /// with the canonical path of \a folder, which contains \a link. Otherwise it is of no use.
    ///
    /// A link is not followed if its target contains the link itself, or a link that was followed
    /// to reach this link: the copy would not end. Of the links inside linked folders, only the
    /// first kMostNested are followed: if folders link to each other, the number of copies would
    /// grow exponentially.
    bool mayFollow(const QFileInfo &link, const PlannedCopy &folder, QStringList &linkedFrom)
    {
        constexpr int kMostNested = 100;
        const bool isNested = !linkedFrom.isEmpty();
        if (isNested && mNested == kMostNested) {
            return false;
        }
        const QString target = link.canonicalFilePath();
        linkedFrom.append(QFileInfo(folder.from).canonicalFilePath());
        const bool leadsBack = std::any_of(linkedFrom.cbegin(), linkedFrom.cend(),
            [&](const QString &origin) { return isAtOrBelow(origin, target); });
        mNested += isNested && !leadsBack ? 1 : 0;
        return !leadsBack;
    }

    std::vector<PlannedCopy> mCopies;
    int mNested = 0; ///< number of followed links inside linked folders
};

void warn(const PlannedCopy &copy)
{
    logAt(kNotCopiedWithFolder, Support, Logger::Warning,
        QStringLiteral("Error while copying : %1 to : %2").arg(copy.from, copy.to));
}

} // namespace

bool FileUtils::copyRecursively(const QString &source, const QString &destination)
{
    if (!isFolder(source) || !canBePath(destination)) {
        return false;
    }
    const QString folder = QDir(source).absoluteFilePath(destination);
    const FolderCopyPlan plan(source, folder);
    QDir().mkpath(QFileInfo(QDir::cleanPath(folder)).path());

    bool allCopied = true;
    os::SyncedFileSystems fileSystems;
    std::vector<const PlannedCopy *> madeFolders;
    std::optional<os::CopyFolder> last;
    const auto copyOne = [&](const PlannedCopy &copy) {
        const QFileInfo to(copy.to);
        return copyFile(QFileInfo(copy.from), copyFolder(to.path(), last), to.fileName());
    };
    for (const PlannedCopy &copy : plan.copies()) {
        if (copy.kind == PlannedCopy::Folder) {
            if (!isFolder(copy.to) && !os::makeFolderLike(copy.from, copy.to)) {
                madeFolders.push_back(&copy);
            }
            if (isFolder(copy.to)) {
                fileSystems.add(copy.to);
                continue;
            }
            allCopied = false;
            if (copy.isEmpty) { // otherwise the copies of its content fail and are reported
                warn(copy);
            }
        } else if (copy.kind == PlannedCopy::Impossible || copyOne(copy)) {
            warn(copy);
            allCopied = false;
        }
    }
    // The innermost folders first: finishing a folder can take away the owner's permission to
    // change anything in it.
    std::for_each(madeFolders.crbegin(), madeFolders.crend(),
        [](const PlannedCopy *copy) { os::finishFolderLike(copy->from, copy->to); });
    for (const std::error_code &error : fileSystems.sync()) {
        if (error) {
            warn(plan.copies().front());
            allCopied = false;
        }
    }
    return allCopied;
}

} // namespace Vyn::OvraBase
