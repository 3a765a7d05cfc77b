// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileSystem_p.h"

#include <QFile>

namespace Vyn::OvraBase::os {

NtfsPermissionLookup::NtfsPermissionLookup() {}

NtfsPermissionLookup::~NtfsPermissionLookup() {}

std::filesystem::path nativePath(const QString &path)
{
    return QFile::encodeName(path).toStdString();
}

void hideFile(const QString & /*path*/) {}

bool copyFile(const QString &from, const QString &to)
{
    // Qt's copy waits until the disk has each file, which is most of its time for small ones.
    std::error_code error;
    return std::filesystem::copy_file(nativePath(from), nativePath(to), error);
}

std::error_code renameOver(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(nativePath(from), nativePath(to), error);
    return error;
}

} // namespace Vyn::OvraBase::os
