// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;

namespace Vyn::OvraBase {

/// Removes the folder \a path with its content. If \a path is a link to a folder, removes only the
/// link. Links in the folder are removed and not followed. An entry that cannot be removed stays,
/// and all others are removed. Returns true if this function removed the folder or the link.
bool removeFolder(const QString &path);

/// Does what removeFolder() does for folders. If \a path is a link to a folder, removes the content
/// of that folder, and neither the folder nor the link. Ignores any other link.
void removeFolderThroughLink(const QString &path);

/// Returns \a path in the form that os::OpenFolder requires.
QString pathOfEntry(const QString &path);

} // namespace Vyn::OvraBase
