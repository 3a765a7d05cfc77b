// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/SharedLibrary_p.h"

#include <QDir>
#include <QString>

#include <qt_windows.h>

namespace Vyn::OvraBase::os {

void *openLibrary(const QString &path)
{
    const std::wstring native = QDir::toNativeSeparators(path).toStdWString();
    // A damaged file is an answer to the caller, not a message box to the user.
    DWORD callersMode = 0;
    ::SetThreadErrorMode(SEM_FAILCRITICALERRORS, &callersMode);
    HMODULE library = ::LoadLibraryW(native.c_str());
    ::SetThreadErrorMode(callersMode, nullptr);
    return library;
}

void *findSymbol(void *library, const char *name)
{
    return reinterpret_cast<void *>(::GetProcAddress(static_cast<HMODULE>(library), name));
}

void closeLibrary(void *library)
{
    ::FreeLibrary(static_cast<HMODULE>(library));
}

} // namespace Vyn::OvraBase::os
