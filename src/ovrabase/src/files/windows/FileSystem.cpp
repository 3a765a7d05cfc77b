// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileSystem_p.h"

#include <QDir>
#include <QMutex>

#include <qt_windows.h>

#if QT_VERSION < QT_VERSION_CHECK(6, 6, 0)
extern Q_CORE_EXPORT int qt_ntfs_permission_lookup;
#endif

namespace Vyn::OvraBase::os {
namespace {

#if QT_VERSION < QT_VERSION_CHECK(6, 6, 0)
/// Adds \a count to Qt's counter, which is a plain integer, so that a mutex is needed.
void addToLookups(int count)
{
    static auto &mutex = *new QMutex; // never destroyed: static destructors may use it
    const QMutexLocker lock(&mutex);
    qt_ntfs_permission_lookup += count;
}
#else
void addToLookups(int count)
{
    count > 0 ? qEnableNtfsPermissionChecks() : qDisableNtfsPermissionChecks();
}
#endif

} // namespace

NtfsPermissionLookup::NtfsPermissionLookup()
{
    addToLookups(1);
}

NtfsPermissionLookup::~NtfsPermissionLookup()
{
    addToLookups(-1);
}

void hideFile(const QString &path)
{
    ::SetFileAttributesA(path.toUtf8().constData(), FILE_ATTRIBUTE_HIDDEN);
}

std::filesystem::path nativePath(const QString &path)
{
    // Windows accepts a path of MAX_PATH characters and more only with the prefix "\\?\". For a
    // folder the bound is 12 less, so that a file in it can have an 8.3 name. The lower bound is
    // used for all paths.
    constexpr qsizetype kLongPath = MAX_PATH - 12;
    QString native = QDir::toNativeSeparators(path);
    if (native.size() >= kLongPath && QDir::isAbsolutePath(path)) {
        native = QDir::toNativeSeparators(QDir::cleanPath(path));
        const bool isShare = native.startsWith(QLatin1String("\\\\"));
        native = isShare ? QLatin1String("\\\\?\\UNC") + native.sliced(1)
                         : QLatin1String("\\\\?\\") + native;
    }
    return native.toStdWString();
}

} // namespace Vyn::OvraBase::os
