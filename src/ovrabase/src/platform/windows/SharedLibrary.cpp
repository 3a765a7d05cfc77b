// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/Devices_p.h"
#include "platform/SharedLibrary_p.h"

#include <QDir>
#include <QString>

#include <qt_windows.h>

namespace Vyn::OvraBase::os {
namespace {

/// Returns the text of the last error, with \a subject in place of "%1", which some texts contain.
QString lastError(const QString &subject)
{
    QString text = QString::fromLocal8Bit(errorText(::GetLastError())).trimmed();
    return text.replace(QLatin1String("%1"), subject);
}

} // namespace

void *openLibrary(const QString &path, QString &error)
{
    const QString native = QDir::toNativeSeparators(path);
    // Without this mode, Windows may show a message box when it cannot load a file.
    DWORD callersMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &callersMode);
    HMODULE library = ::LoadLibraryW(native.toStdWString().c_str());
    if (!library) {
        error = lastError(native);
    }
    ::SetThreadErrorMode(callersMode, nullptr);
    return library;
}

void *findSymbol(void *library, const char *name, QString &error)
{
    const FARPROC symbol = ::GetProcAddress(static_cast<HMODULE>(library), name);
    if (!symbol) {
        error = lastError(QString::fromUtf8(name));
    }
    return reinterpret_cast<void *>(symbol);
}

void closeLibrary(void *library)
{
    ::FreeLibrary(static_cast<HMODULE>(library));
}

} // namespace Vyn::OvraBase::os
