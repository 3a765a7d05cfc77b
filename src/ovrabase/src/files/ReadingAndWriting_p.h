// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QIODevice>

class QFile;
class QString;

namespace Vyn::OvraBase {

/// Opens \a file at \a path in \a mode. Throws InvalidArgumentException without a file at \a path,
/// FileOpenException when it does not open.
void verifyAccessToFile(const QString &path, QFile &file, QIODevice::OpenMode mode);

/// Throws FileReadingException when reading from \a file has failed.
void verifyReading(const QFile &file);

} // namespace Vyn::OvraBase
