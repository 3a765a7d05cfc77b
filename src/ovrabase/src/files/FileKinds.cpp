// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/FileUtils.h>

#include <QMutex>

#include <FreeImage.h>
#include <algorithm>
#include <initializer_list>

namespace Vyn::OvraBase {
namespace {

bool isOneOf(const QString &ext, std::initializer_list<QLatin1String> known, Qt::CaseSensitivity cs)
{
    return std::any_of(known.begin(), known.end(),
        [&](QLatin1String candidate) { return ext.compare(candidate, cs) == 0; });
}

bool isKnownToImageLibrary(const QString &ext)
{
    // FreeImage splits its lists of extensions with strtok(), which keeps its place in one global.
    static QMutex mutex;
    const QMutexLocker lock(&mutex);
    return FreeImage_GetFIFFromFilename(ext.toLocal8Bit().constData()) != FIF_UNKNOWN;
}

} // namespace

bool FileUtils::isMeshExt(const QString &ext)
{
    return isOneOf(ext,
        {QLatin1String("usd"), QLatin1String("usda"), QLatin1String("usdc"), QLatin1String("usdz"),
            QLatin1String("obj"), QLatin1String("fbx"), QLatin1String("gltf"),
            QLatin1String("glb")},
        Qt::CaseInsensitive);
}

bool FileUtils::isSLVARExt(const QString &ext)
{
    return isOneOf(ext, {QLatin1String("slvar")}, Qt::CaseInsensitive);
}

bool FileUtils::isVSKFilterExt(const QString &ext)
{
    return isOneOf(
        ext, {QLatin1String("vskfilter"), QLatin1String("ovrafilter")}, Qt::CaseInsensitive);
}

bool FileUtils::isQuickActionExt(const QString &ext)
{
    return isOneOf(ext, {QLatin1String("ovqa")}, Qt::CaseInsensitive);
}

bool FileUtils::isImageFormatSupported(const QString &ext)
{
    return !isOneOf(ext, {QLatin1String("dng"), QLatin1String("nef")}, Qt::CaseSensitive);
}

bool FileUtils::isImageExt(const QString &ext)
{
    return isImageFormatSupported(ext.toLower()) &&
           (isKnownToImageLibrary(ext) ||
               isOneOf(ext, {QLatin1String("svg")}, Qt::CaseInsensitive));
}

} // namespace Vyn::OvraBase
