// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileSystem_p.h"

#include <QDir>
#include <QMutex>

#include <string>

#include <qt_windows.h>

#if QT_VERSION < QT_VERSION_CHECK(6, 6, 0)
extern Q_CORE_EXPORT int qt_ntfs_permission_lookup;
#endif

namespace Vyn::OvraBase::platform {
namespace {

#if QT_VERSION < QT_VERSION_CHECK(6, 6, 0)
/// The switch is a plain integer: whoever counts on it takes turns.
void addToLookups(int count)
{
    static QMutex mutex;
    const QMutexLocker lock(&mutex);
    qt_ntfs_permission_lookup += count;
}
#else
void addToLookups(int count)
{
    count > 0 ? qEnableNtfsPermissionChecks() : qDisableNtfsPermissionChecks();
}
#endif

std::wstring nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

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

std::error_code renameOver(const QString &from, const QString &to)
{
    if (!::MoveFileExW(
            nativePath(from).c_str(), nativePath(to).c_str(), MOVEFILE_REPLACE_EXISTING)) {
        return {static_cast<int>(::GetLastError()), std::system_category()};
    }
    return {};
}

} // namespace Vyn::OvraBase::platform
