// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/SharedLibrary_p.h"

#include <QFile>
#include <QString>

#include <dlfcn.h>

namespace Vyn::OvraBase::os {

void *openLibrary(const QString &path, QString &error)
{
    // RTLD_NOW resolves all symbols. A library with a missing symbol then fails here, and not when
    // one of its functions is called.
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
