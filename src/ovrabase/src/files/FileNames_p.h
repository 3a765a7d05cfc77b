// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDir>
#include <QString>

namespace Vyn::OvraBase {

/// The paths that FileUtils::getUniqueFileName() tries. Each path has a number: first() is the
/// number of "stem.extension", and the numbers after it are written into the names. For the base
/// name "a" they are 0, 1 ("a_001") and so on; for "a_009" they are 9 ("a"), 10 ("a_010") and so
/// on.
class NumberedNames {
public:
    /// Takes the arguments of FileUtils::getUniqueFileName().
    NumberedNames(const QString &folder, const QString &baseName, const QString &extension);

    /// Returns the number of the path "stem.extension".
    qint64 first() const { return mStart - 1; }
    /// Returns the path with \a number.
    QString path(qint64 number) const;

    /// Raises \a number to the first one, from its value on, at whose path no file exists. Returns
    /// that path.
    QString firstFreePath(qint64 &number) const;

private:
    /// Returns false if the paths may be in another folder than mFolder: the stem or the extension
    /// contains a separator, or the name is absolute, for example because of a drive letter.
    bool isInFolder() const;

    QDir mFolder;
    QString mStem;     ///< the base name without "_" and its number
    QString mEnd;      ///< the extension with its dot
    qint64 mStart = 1; ///< the first number that is written into a name
};

} // namespace Vyn::OvraBase
