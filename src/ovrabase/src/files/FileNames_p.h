// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDir>
#include <QString>

namespace Vyn::OvraBase {

/// The paths that FileUtils::getUniqueFileName() tries, each with its number: "stem.extension" has
/// first(), "stem_001.extension" and so on have those that follow.
class NumberedNames {
public:
    NumberedNames(const QString &folder, const QString &baseName, const QString &extension);

    qint64 first() const { return mStart - 1; }
    QString path(qint64 number) const;

    /// Returns the first number from \a number on whose path is not an existing file.
    qint64 firstFree(qint64 number) const;

private:
    /// Returns false if the stem or the extension leads to another folder.
    bool isInFolder() const;

    QDir mFolder;
    QString mStem;
    QString mEnd;
    qint64 mStart = 1;
};

} // namespace Vyn::OvraBase
