// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/files/UrlUtils.h>

#include <QDir>

#include <cstdint>

using Vyn::OvraBase::FileUtils;
namespace UrlUtils = Vyn::OvraBase::UrlUtils;

/// The input is a URL, a path or a scheme in UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QUrl url(text);

    const QString base = UrlUtils::getFileBaseNameFromUrl(url);
    require(!base.contains(u'.'));
    const QString name = QDir::fromNativeSeparators(url.fileName(QUrl::FullyDecoded));
    require(base.isEmpty() || name.section(u'/', -1).startsWith(base));
    require(UrlUtils::isValidFolderName(text) == (!text.isEmpty() && !text.contains(u'/')));
    require(UrlUtils::urlsContainsImages({text}) ==
            FileUtils::isImageExt(FileUtils::getFilePathExtension(text)));
    require(UrlUtils::toNativePath(url) == UrlUtils::toNativePath(url.toLocalFile()));
    require(UrlUtils::uniqueUrl(text) != UrlUtils::uniqueUrl(text) || !QUrl(text).isValid());
    FileUtils::isRelativeFilePath(url);
    FileUtils::exists(url);
    return 0;
}
