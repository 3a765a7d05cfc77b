// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileCopy_p.h"
#include "files/FileError_p.h"

#include <QFile>
#include <QFileInfo>

namespace Vyn::OvraBase {
namespace {

/// Copies the Qt resource \a from to the new file \a name, and syncs the copy. QFile::copy() is not
/// used: it syncs before its last write, which is buffered, and ignores a failure of the sync.
std::error_code copyResource(const QString &from, const os::CopyFolder &folder, const QString &name)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) {
        return FileError::SourceNotOpened;
    }
    const QByteArray content = source.readAll();
    QFile copy(folder.path(name));
    if (!copy.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        return std::make_error_code(
            copy.exists() ? std::errc::file_exists : std::errc::permission_denied);
    }
    const bool isWritten = copy.write(content) == content.size();
    copy.close();
    copy.setPermissions(source.permissions());
    const std::error_code error = isWritten && copy.error() == QFile::NoError
                                      ? folder.syncFile(name) // SyncedFileSystems may not do it
                                      : std::make_error_code(std::errc::io_error);
    if (error) {
        folder.discardCopy(name);
    }
    return error;
}

} // namespace

QString os::CopyFolder::path(const QString &name) const
{
    return (mPath.endsWith(u'/') ? mPath : QString(mPath + u'/')) + name;
}

const os::CopyFolder &copyFolder(const QString &path, std::optional<os::CopyFolder> &last)
{
    if (!last || last->path() != path) {
        last.emplace(path);
    }
    return *last;
}

std::error_code copyFile(const QFileInfo &from, const os::CopyFolder &folder, const QString &name)
{
    const QString path = from.filePath();
    if (!from.isNativePath()) {
        return copyResource(path, folder, name);
    }
    const std::error_code error = folder.copyFile(path, name);
    const bool isOfSource =
        error && error != FileError::SourceIsNoFile && !QFile(path).open(QIODevice::ReadOnly);
    return isOfSource ? FileError::SourceNotOpened : error;
}

} // namespace Vyn::OvraBase
