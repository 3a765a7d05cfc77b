// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

namespace Vyn::OvraBase::UrlUtils {

/// A path in an 8-bit encoding.
struct NativePath {
    QByteArray bytes;
    QString warning; ///< null if no character was lost
};

/// Converts \a path with \a encode, and back with \a decode to find out whether a character was
/// lost.
///
/// The encoding is a parameter for the tests: they need one that lacks characters, and the local
/// encoding may be UTF-8.
template<class Encode, class Decode>
NativePath convertToNative(const QString &path, Encode encode, Decode decode)
{
    const QByteArray bytes = encode(path);
    const QString readBack = decode(bytes);
    if (readBack == path) {
        return {bytes, {}};
    }
    return {bytes, QStringLiteral("Trying to access file <%1> which translates in local text "
                                  "encoding as <%2>")
                       .arg(path, readBack)};
}

} // namespace Vyn::OvraBase::UrlUtils
