// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/RemovalSystem_p.h"
#include "files/Removal_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/files/GenericCacheController.h>

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNoName{"GenericCacheController.cpp:68 "
                              "Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()"};
constexpr LogPosition kNotCreated{"GenericCacheController.cpp:78 "
                                  "Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()"};
constexpr LogPosition kFileInTheWay{
    "GenericCacheController.cpp:84 "
    "Vyn::OvraBase::GenericCacheController::ensureDirectoryExists()"};

void warn(const LogPosition &position, const QString &message)
{
    logAt(position, Support, Logger::Warning, message);
}

} // namespace

GenericCacheController::~GenericCacheController() = default;

// These functions change the cache, and so are not const, even if they change no member.
// NOLINTBEGIN(readability-make-member-function-const)

void GenericCacheController::clear()
{
    const QString path = cacheFolderPath();
    if (path.isEmpty()) {
        return; // no cache, see cacheFolderPath()
    }
    // The folder is opened before it is listed. If another program replaces it in between, no file
    // of the new folder is removed.
    os::OpenFolder folder(pathOfEntry(path), os::OpenFolder::LinkAtPath::Followed);
    if (!folder.isOpen()) {
        return;
    }
    const QFileInfoList entries = QDir(path).entryInfoList(
        QDir::Dirs | QDir::Files | QDir::Writable | QDir::NoDotAndDotDot, QDir::Unsorted);
    if (std::any_of(entries.begin(), entries.end(), [](auto &entry) { return entry.isDir(); })) {
        folder.remove(); // the whole cache folder, as the header says
        return;
    }
    for (const QFileInfo &entry : entries) {
        folder.removeFile(entry.fileName());
    }
}

void GenericCacheController::purge()
{
    const QString path = cacheFolderPath();
    if (FileUtils::isFolder(path)) {
        removeFolderThroughLink(path);
    }
}

void GenericCacheController::resetCacheFolder(const QString &path)
{
    purge();
    setCacheFolderPath(path);
    ensureDirectoryExists();
}

void GenericCacheController::ensureDirectoryExists()
{
    const QString path = cacheFolderPath();
    if (path.isEmpty()) {
        warn(kNoName, QStringLiteral("The cache folder name is empty. Cache will be disabled."));
        return;
    }
    const QFileInfo folder(withoutTrailingSeparators(path));
    if (!folder.exists()) {
        const QDir parent = folder.dir();
        if (!parent.mkpath(folder.fileName())) {
            warn(kNotCreated, QStringLiteral("Could not create cache folder (<%1> in <%2> for "
                                             "<%3>). Cache will be disabled.")
                                  .arg(folder.fileName(), parent.absolutePath(), path));
        }
    } else if (!folder.isDir()) {
        warn(kFileInTheWay, QStringLiteral("Cannot create cache folder because a file with the "
                                           "same path already exists."));
    }
}

// NOLINTEND(readability-make-member-function-const)

} // namespace Vyn::OvraBase
