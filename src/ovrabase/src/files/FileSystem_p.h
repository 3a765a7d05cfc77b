// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <filesystem>

/// \file
/// What the systems do differently. Reports and does not judge: no logging, no throwing.
namespace Vyn::OvraBase::os {

/// While one exists, Qt's file tests look at NTFS access rights. No effect where there are none.
class NtfsPermissionLookup {
public:
    NtfsPermissionLookup();
    ~NtfsPermissionLookup();
    NtfsPermissionLookup(const NtfsPermissionLookup &) = delete;
    NtfsPermissionLookup &operator=(const NtfsPermissionLookup &) = delete;
};

/// Returns \a path as the standard library takes it, whatever its characters.
std::filesystem::path nativePath(const QString &path);

/// Gives \a path the Windows attribute "hidden" and no other.
void hideFile(const QString &path);

} // namespace Vyn::OvraBase::os
