// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"

#include <ovrabase/files/FileUtils.h>

#include <QLibrary>
#include <QMutex>

#include <FreeImage.h>
#include <algorithm>
#include <atomic>
#include <initializer_list>

namespace Vyn::OvraBase {
namespace {

bool isOneOf(const QString &ext, std::initializer_list<QLatin1String> known, Qt::CaseSensitivity cs)
{
    return std::any_of(known.begin(), known.end(),
        [&](QLatin1String candidate) { return ext.compare(candidate, cs) == 0; });
}

/// The library FreeImage, which is loaded on first use.
class ImageLibrary {
public:
    static ImageLibrary &instance()
    {
        static auto &library = *new ImageLibrary; // never destroyed: static destructors may use it
        return library;
    }

    /// Returns true if an image format has the extension \a ext. If FreeImage cannot be loaded, the
    /// first call logs a warning.
    bool knows(const QString &ext)
    {
        if (!mFormatOf) {
            // The constructor does not log: a LogDelegate that calls instance() would wait forever
            // for the end of the constructor.
            if (!mIsReported.exchange(true)) {
                logAt(LOG_CONTEXT, Support, Logger::Warning,
                    QStringLiteral("Only svg is known as an image extension: ") + mError);
            }
            return false;
        }
        // FreeImage splits its lists of extensions with strtok(), which is not thread-safe.
        const QMutexLocker lock(&mMutex);
        return mFormatOf(ext.toLocal8Bit().constData()) != FIF_UNKNOWN;
    }

private:
    using FormatOf = decltype(&FreeImage_GetFIFFromFilename);

    ImageLibrary()
    {
        QLibrary library(QStringLiteral(OVRABASE_FREEIMAGE)); // ~QLibrary() does not unload it
        mFormatOf = reinterpret_cast<FormatOf>(library.resolve("FreeImage_GetFIFFromFilename"));
        mError = library.errorString();
    }

    FormatOf mFormatOf = nullptr;
    QString mError;
    std::atomic<bool> mIsReported = false;
    QMutex mMutex;
};

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
           (ImageLibrary::instance().knows(ext) ||
               isOneOf(ext, {QLatin1String("svg")}, Qt::CaseInsensitive));
}

} // namespace Vyn::OvraBase
