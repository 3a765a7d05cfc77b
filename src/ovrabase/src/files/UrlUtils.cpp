// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

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
    const QByteArray bytes = path.toLocal8Bit();
    const QString readBack = QString::fromLocal8Bit(bytes);
    if (readBack != path) {
        logAt(kLossyPath, Support, Logger::Warning,
            QStringLiteral("Trying to access file <%1> which translates in local text encoding "
                           "as <%2>")
                .arg(path, readBack));
    }
    return bytes.toStdString();
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
