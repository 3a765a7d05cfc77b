// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIODevice>
#include <QString>

class QFile;
class QFileInfo;

namespace Vyn::OvraBase {

/// Opens \a file at \a path in \a mode. Throws InvalidArgumentException without a file at \a path,
/// FileOpenException when it does not open.
void verifyAccessToFile(const QString &path, QFile &file, QIODevice::OpenMode mode);

/// Throws FileReadingException when reading from \a file has failed.
void verifyReading(const QFile &file);

/// Tells whether an entry can have the name \a path: behind a NUL the system would read no further
/// and take another one.
bool canBePath(const QString &path);

/// Returns \a path so that its last component is the entry itself: "link/" and "link/." speak of
/// what the link leads to, "link" of the link.
QString withoutTrailingSeparators(const QString &path);

/// Tells whether \a entry is a symbolic link or an NTFS junction.
bool isLink(const QFileInfo &entry);

/// Tells whether \a entry is there, be it a link that leads nowhere.
bool standsThere(const QFileInfo &entry);

/// Removes the folder \a path with its content and returns whether all of it went. A link, as
/// \a path or inside, is removed and its target left alone.
bool removeFolder(const QString &path);

} // namespace Vyn::OvraBase
