// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QList>
#include <QString>
#include <QUrl>

#include <string>

/// \file
/// Functions on urls, folder names, and paths for interfaces that take 8-bit text. No function
/// throws. All are thread-safe.
namespace Vyn::OvraBase::UrlUtils {

/// Decodes the path of \a url, in which "%2F" is a "/", and returns its file name up to the first
/// dot. Returns an empty text if the decoded path ends in "/".
OVRABASE_EXPORT QString getFileBaseNameFromUrl(const QUrl &url);

/// Returns true if \a name is not empty and contains no "/". All other characters are allowed.
OVRABASE_EXPORT bool isValidFolderName(const QString &name);

/// Returns \a path in the local 8-bit encoding. If the encoding lacks a character of \a path, that
/// character is replaced, and a warning is logged on the logger Support.
OVRABASE_EXPORT std::string toNativePath(const QString &path);
/// Returns toNativePath() of the path of \a url, or an empty path if \a url is not a local file.
OVRABASE_EXPORT std::string toNativePath(const QUrl &url);

/// Returns a url of the form "scheme:uuid" with a new random UUID.
OVRABASE_EXPORT QUrl uniqueUrl(const QString &scheme);

/// Returns true if one of \a paths has the extension of an image, see FileUtils::isImageExt().
OVRABASE_EXPORT bool urlsContainsImages(const QList<QString> &paths);

} // namespace Vyn::OvraBase::UrlUtils
