// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIODevice>

class QFile;
class QString;

namespace Vyn::OvraBase {

/// Sets the name of \a file to \a path, and opens it in \a mode. Throws InvalidArgumentException if
/// \a path is not a file, and FileOpenException if it cannot be opened.
void verifyAccessToFile(const QString &path, QFile &file, QIODevice::OpenMode mode);

/// Throws FileReadingException if the last read from \a file has failed.
void verifyReading(const QFile &file);

} // namespace Vyn::OvraBase
