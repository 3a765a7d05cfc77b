// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <filesystem>

/// \file
/// The seam for small differences between the systems, implemented in windows/FileSystem.cpp and
/// posix/FileSystem.cpp. The functions do not log, and throw std::bad_alloc
/// only.
namespace Vyn::OvraBase::os {

/// On Windows, while an object of this class exists, QFileInfo::isReadable(), isWritable() and the
/// like read the NTFS access rights. Has no effect on other systems.
class NtfsPermissionLookup {
public:
    NtfsPermissionLookup();
    ~NtfsPermissionLookup();
    NtfsPermissionLookup(const NtfsPermissionLookup &) = delete;
    NtfsPermissionLookup &operator=(const NtfsPermissionLookup &) = delete;
};

/// Returns \a path for the standard library and the system, in the native encoding. On Windows, a
/// long absolute path gets the prefix "\\?\".
std::filesystem::path nativePath(const QString &path);

/// Sets the Windows attribute "hidden" of \a path and clears all others. Finds a path with other
/// than ASCII characters only if the code page of the program is UTF-8. Does nothing on other
/// systems.
void hideFile(const QString &path);

} // namespace Vyn::OvraBase::os
