// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileSystem_p.h"

#include <QFile>

#include <cerrno>
#include <cstdio>

namespace Vyn::OvraBase::platform {

NtfsPermissionLookup::NtfsPermissionLookup() {}

NtfsPermissionLookup::~NtfsPermissionLookup() {}

void hideFile(const QString & /*path*/) {}

std::error_code renameOver(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        return {errno, std::generic_category()};
    }
    return {};
}

} // namespace Vyn::OvraBase::platform
