// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/UrlUtils_p.h"
#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>
#include <ovrabase/files/UrlUtils.h>

#include <QFileInfo>
#include <QUrl>
#include <QUuid>

#include <algorithm>

namespace Vyn::OvraBase::UrlUtils {
namespace {

constexpr LogPosition kLossyPath{"UrlUtils.cpp:62 Vyn::OvraBase::UrlUtils::toNativePath()"};

} // namespace

QString getFileBaseNameFromUrl(const QUrl &url)
{
    return QFileInfo(url.fileName(QUrl::FullyDecoded)).baseName();
}

bool isValidFolderName(const QString &name)
{
    return !name.isEmpty() && !name.contains(u'/');
}

std::string toNativePath(const QString &path)
{
    const NativePath native = convertToNative(
        path, [](const QString &text) { return text.toLocal8Bit(); },
        [](const QByteArray &bytes) { return QString::fromLocal8Bit(bytes); });
    if (!native.warning.isNull()) {
        logAt(kLossyPath, Support, Logger::Warning, native.warning);
    }
    return native.bytes.toStdString();
}

std::string toNativePath(const QUrl &url)
{
    return toNativePath(url.toLocalFile());
}

QUrl uniqueUrl(const QString &scheme)
{
    QUrl url;
    url.setScheme(scheme);
    url.setPath(QUuid::createUuid().toString(QUuid::WithoutBraces), QUrl::DecodedMode);
    return url;
}

bool urlsContainsImages(const QList<QString> &paths)
{
    return std::any_of(paths.cbegin(), paths.cend(), [](const QString &path) {
        return FileUtils::isImageExt(FileUtils::getFilePathExtension(path));
    });
}

} // namespace Vyn::OvraBase::UrlUtils
