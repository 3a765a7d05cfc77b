// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

namespace Vyn::OvraBase::UrlUtils {

struct NativePath {
    QByteArray bytes;
    QString warning; ///< null when nothing was lost
};

/// Converts \a path with \a encode and looks with \a decode whether it survives. The local encoding
/// comes in from outside: where it is UTF-8, tests need another one to see the warning.
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
