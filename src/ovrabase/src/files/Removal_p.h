// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <system_error>

class QString;

namespace Vyn::OvraBase {

/// Removes the folder \a path with its content; of a link to a folder, only the link. Links inside
/// are removed and not followed. What cannot be removed stays, and the rest goes; the answer is the
/// first failure.
std::error_code removeFolder(const QString &path);

/// Does the same, but a link at \a path stays, and the folder behind it is emptied.
std::error_code removeFolderBehindLinks(const QString &path);

/// Returns \a path in the form that os::OpenFolder takes.
QString pathOfEntry(const QString &path);

} // namespace Vyn::OvraBase
