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

} // namespace Vyn::OvraBase::os
