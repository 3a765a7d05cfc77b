// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "platform/SharedLibrary_p.h"

#include <QFile>
#include <QString>

#include <dlfcn.h>

namespace Vyn::OvraBase::os {

void *openLibrary(const QString &path)
{
    // All symbols at once: a library that misses some is refused here, not in the middle of a call.
    return ::dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
}

void *findSymbol(void *library, const char *name)
{
    return ::dlsym(library, name);
}

void closeLibrary(void *library)
{
    ::dlclose(library);
}

} // namespace Vyn::OvraBase::os
