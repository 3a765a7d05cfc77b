// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

class QFileInfo;
class QString;

namespace Vyn::OvraBase {

/// Removes a file or a link. Returns whether it is gone.
bool removeEntry(const QFileInfo &entry);

/// Removes the folder \a path with its content. Returns whether all of it is gone. A link, as
/// \a path or inside, is removed and its target left alone.
bool removeFolder(const QString &path);

} // namespace Vyn::OvraBase
