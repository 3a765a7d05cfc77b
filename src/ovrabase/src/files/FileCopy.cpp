// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileCopy_p.h"
#include "files/FileError_p.h"

#include <QFile>
#include <QFileInfo>

namespace Vyn::OvraBase {
namespace {

/// QFile::copy() writes through a buffer and misses an error of its last write.
std::error_code copyResource(const QString &from, const QString &to)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly)) {
        return FileError::SourceNotOpened;
    }
    const QByteArray content = source.readAll();
    QFile copy(to);
    if (!copy.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        return std::make_error_code(
            QFileInfo::exists(to) ? std::errc::file_exists : std::errc::permission_denied);
    }
    const bool isWritten = copy.write(content) == content.size();
    copy.close();
    copy.setPermissions(source.permissions());
    const std::error_code error = isWritten && copy.error() == QFile::NoError
                                      ? os::syncFile(to) // Windows syncs nothing later
                                      : std::make_error_code(std::errc::io_error);
    if (error) {
        os::discardCopy(to);
    }
    return error;
}

} // namespace

std::error_code copyFile(const QString &from, const QString &to)
{
    if (!QFileInfo(from).isNativePath()) {
        return copyResource(from, to);
    }
    const std::error_code error = os::copyFile(from, to);
    const bool isOfSource =
        error && error != FileError::SourceIsNoFile && !QFile(from).open(QIODevice::ReadOnly);
    return isOfSource ? FileError::SourceNotOpened : error;
}

} // namespace Vyn::OvraBase
