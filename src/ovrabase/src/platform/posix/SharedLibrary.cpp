// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/SharedLibrary_p.h"

#include <QFile>
#include <QString>

#include <dlfcn.h>

namespace Vyn::OvraBase::os {

void *openLibrary(const QString &path, QString &error)
{
    // All symbols at once: a library that misses some is refused here, not in the middle of a call.
    void *const library = ::dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        error = QString::fromLocal8Bit(::dlerror());
    }
    return library;
}

void *findSymbol(void *library, const char *name, QString &error)
{
    void *const symbol = ::dlsym(library, name);
    if (!symbol) {
        error = QString::fromLocal8Bit(::dlerror());
    }
    return symbol;
}

void closeLibrary(void *library)
{
    ::dlclose(library);
}

} // namespace Vyn::OvraBase::os
