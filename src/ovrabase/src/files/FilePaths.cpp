// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDir>
#include <QFileInfo>

namespace Vyn::OvraBase {
namespace {

using Exception::InvalidArgumentException;

constexpr LogPosition kEmptyPath{
    "FileUtils.cpp:376 Vyn::OvraBase::FileUtils::changeFilePathExtension()"};
constexpr LogPosition kEmptyExtension{
    "FileUtils.cpp:380 Vyn::OvraBase::FileUtils::changeFilePathExtension()"};
constexpr LogPosition kExtensionWithSeparator{
    "FileUtils.cpp:386 Vyn::OvraBase::FileUtils::changeFilePathExtension()"};

} // namespace

void FileUtils::addPathToPaths(QString &paths, const QString &path)
{
    if (!paths.isEmpty() && !path.isEmpty()) {
        paths += QLatin1Char(getPathListSeparator());
    }
    paths += path;
}

char FileUtils::getPathListSeparator()
{
    return ';';
}

QString FileUtils::extractFolderPath(const QString &path)
{
    return QFileInfo(path).dir().path();
}

QString FileUtils::getBaseName(const QString &path)
{
    return QFileInfo(path).baseName();
}

QString FileUtils::getFilePathExtension(const QString &filePath)
{
    return QFileInfo(filePath).suffix();
}

QString FileUtils::getFilePathCompleteExtension(const QString &path)
{
    return QFileInfo(path).completeSuffix();
}

QString FileUtils::getFilePathWithoutExtension(const QString &filePath)
{
    const qsizetype length = getFilePathCompleteExtension(filePath).size();
    return length > 0 ? filePath.chopped(length + 1) : filePath;
}

QString FileUtils::getFileSuffix(const QString &path)
{
    return isFile(path) ? getFilePathCompleteExtension(path) : QString();
}

QString FileUtils::changeFilePathExtension(const QString &path, const QString &extension)
{
    if (path.isEmpty()) {
        fail<InvalidArgumentException>(kEmptyPath, QStringLiteral("FilePath is empty."));
    }
    if (extension.isEmpty()) {
        fail<InvalidArgumentException>(kEmptyExtension, QStringLiteral("Extension is empty."));
    }
    if (extension.contains(u'/') || extension.contains(u'\\')) {
        fail<InvalidArgumentException>(kExtensionWithSeparator,
            QStringLiteral("Extension contains some invalid characters: / or \\"));
    }

    const qsizetype length = getFilePathCompleteExtension(path).size();
    if (length == 0) {
        return path + u'.' + extension;
    }
    return path.chopped(length) + extension;
}

bool FileUtils::pathAreIdentical(const QString &a, const QString &b)
{
    return QDir::toNativeSeparators(a) == QDir::toNativeSeparators(b);
}

} // namespace Vyn::OvraBase
