// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QList>
#include <QString>
#include <QUrl>

#include <string>

/// Bridges between urls, file names and the 8-bit paths of older native interfaces. Nothing throws;
/// everything is thread-safe.
namespace Vyn::OvraBase::UrlUtils {

/// Returns the decoded file name of \a url up to its first dot; empty when \a url ends in "/".
OVRABASE_EXPORT QString getFileBaseNameFromUrl(const QUrl &url);

/// Tells whether \a name is not empty and contains no "/". Every other character passes.
OVRABASE_EXPORT bool isValidFolderName(const QString &name);

/// Returns \a path in the local 8-bit encoding. Characters that it lacks are replaced, and a
/// warning on Support tells so.
OVRABASE_EXPORT std::string toNativePath(const QString &path);
/// Returns the native path of a local \a url, the empty path of any other.
OVRABASE_EXPORT std::string toNativePath(const QUrl &url);

/// Returns a new url "scheme:uuid" that differs from every other one.
OVRABASE_EXPORT QUrl uniqueUrl(const QString &scheme);

/// Tells whether one of \a paths has the extension of an image.
OVRABASE_EXPORT bool urlsContainsImages(const QList<QString> &paths);

} // namespace Vyn::OvraBase::UrlUtils
