// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QFileInfo;

namespace Vyn::OvraBase {

/// Returns false for a path that cannot name an entry: an empty one, and one with a NUL, behind
/// which the system reads no further.
bool canBePath(const QString &path);

/// Returns \a path so that its last component names the entry itself: "link/" and "link/." name the
/// target of a link, "link" names the link.
QString withoutTrailingSeparators(const QString &path);

/// Returns true for a symbolic link and for an NTFS junction.
bool isLink(const QFileInfo &entry);

/// Returns true if \a entry exists; a dangling link counts.
bool entryExists(const QFileInfo &entry);

} // namespace Vyn::OvraBase
