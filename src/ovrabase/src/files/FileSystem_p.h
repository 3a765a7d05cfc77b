// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <system_error>

/// \file
/// What the systems do differently. Reports and does not judge: no logging, no throwing.
namespace Vyn::OvraBase::platform {

/// While one exists, Qt's file tests look at NTFS access rights. No effect where there are none.
class NtfsPermissionLookup {
public:
    NtfsPermissionLookup();
    ~NtfsPermissionLookup();
    NtfsPermissionLookup(const NtfsPermissionLookup &) = delete;
    NtfsPermissionLookup &operator=(const NtfsPermissionLookup &) = delete;
};

/// Gives \a path the Windows attribute "hidden" and no other.
void hideFile(const QString &path);

/// Renames \a from to \a to in one step, over a file that is there. Without success nothing has
/// changed. Both stand in one folder.
std::error_code renameOver(const QString &from, const QString &to);

} // namespace Vyn::OvraBase::platform
