// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/Entries_p.h"
#include "files/FileSystem_p.h"
#include "files/RemovalSystem_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

#include <filesystem>
#include <system_error>

namespace Vyn::OvraBase {
namespace {

constexpr LogPosition kNotCopiedWithBackup{
    "FileUtils.cpp:796 Vyn::OvraBase::FileUtils::copyWithBackup()"};

bool areSameEntry(const QFileInfo &a, const QFileInfo &b)
{
    std::error_code unknown;
    return a.fileName() == b.fileName() &&
           std::filesystem::equivalent(os::nativePath(a.path()), os::nativePath(b.path()), unknown);
}

/// Files that the system makes up, as in /proc, hold more than their size tells, or nothing that
/// can be read.
bool isReallyEmpty(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.peek(1).isEmpty() &&
           file.error() == QFile::NoError;
}

/// Makes \a copy, which must not exist, a copy of \a source. Returns why that failed, or a null
/// string; no part of a copy stays then.
QString copyFile(const QFileInfo &source, const QString &copy)
{
    const QString path = source.filePath();
    const bool isNative = source.isNativePath();
    if (isNative && os::copyFile(path, copy) && (source.size() > 0 || isReallyEmpty(path))) {
        return {};
    }
    QFile::remove(copy);
    QFile slow(path);
    if (slow.copy(copy) && (!isNative || QFileInfo(copy).size() > 0)) {
        return {};
    }
    QFile::remove(copy);
    return slow.error() == QFile::NoError ? QStringLiteral("the source cannot be read")
                                          : slow.errorString();
}

/// Whether \a backup is another name of the file \a path, and not one that leads to it.
bool keepsContentOf(const QString &path, const QString &backup)
{
    std::error_code unknown;
    return !isLink(QFileInfo(backup)) &&
           std::filesystem::equivalent(os::nativePath(path), os::nativePath(backup), unknown);
}

/// Puts a copy of \a source in the place of \a destination, which is kept as \a backup. Returns why
/// that failed, or a null string.
QString replaceByCopy(const QString &source, const QString &destination, const QString &backup)
{
    if (!canBePath(source) || !canBePath(destination)) {
        return QStringLiteral("one of them is not a path");
    }
    const QFileInfo from(source);
    // Reading from a pipe may never begin, from a device never end.
    if (!from.isFile() && !from.isDir() && from.exists()) {
        return QStringLiteral("the source is not a file");
    }
    const QFileInfo before(destination);
    const bool isThere = entryExists(before);
    if (isThere && areSameEntry(from, before)) {
        return QStringLiteral("source and destination are the same file");
    }

    // The copy is whole before anything moves: dying on the way costs nobody's data.
    const QString fresh = before.dir().filePath(
        QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".tmp"));
    if (QString reason = copyFile(from, fresh); !reason.isNull()) {
        return reason.replace(fresh, destination);
    }
    QFile copy(fresh);
    if (isThere) {
        if (before.isDir() && !isLink(before)) {
            QFile::remove(backup); // a folder does not replace a file
        }
        if (keepsContentOf(destination, backup)) {
            os::removeEntry(destination); // to rename it would change nothing
        } else if (const std::error_code error = os::renameOver(destination, backup)) {
            copy.remove();
            return QString::fromLocal8Bit(error.message().c_str());
        }
    }
    if (!copy.rename(destination)) {
        QString reason = copy.errorString();
        copy.remove();
        return reason;
    }
    return {};
}

} // namespace

bool FileUtils::copyWithBackup(const QString &source, const QString &destination)
{
    const QString backup = destination + QStringLiteral(".bak");
    const QString reason = replaceByCopy(source, destination, backup);
    if (reason.isNull()) {
        return true;
    }
    logAt(kNotCopiedWithBackup, Debug, Logger::Warning,
        QStringLiteral("Failed to copy %1 to %2 because %3").arg(source, destination, reason));
    if (entryExists(QFileInfo(backup)) && !entryExists(QFileInfo(destination))) {
        QFile::rename(backup, destination);
    }
    return false;
}

} // namespace Vyn::OvraBase
