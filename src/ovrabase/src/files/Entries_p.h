// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QFileInfo;

/// \file
/// Checks of paths and entries. An entry is a file, a folder or a link, not the target of the link.
namespace Vyn::OvraBase {

/// Returns false for a path that cannot be the path of an entry: an empty one, and one with a NUL,
/// because the system would read the path up to the NUL only.
bool canBePath(const QString &path);

/// Returns \a path without "/" and "/." at the end, so that it is the path of a link and not of the
/// target: "link/" and "link/." are paths of the target, and "link" is the path of the link. The
/// separators of the result are "/". A path for which QFileInfo::isRoot() is true
/// keeps its separator.
QString withoutTrailingSeparators(const QString &path);

/// Returns true for a symbolic link, an NTFS junction and a Windows shortcut (.lnk).
bool isLink(const QFileInfo &entry);

/// Returns true if \a entry exists; a dangling link counts.
bool entryExists(const QFileInfo &entry);

} // namespace Vyn::OvraBase
