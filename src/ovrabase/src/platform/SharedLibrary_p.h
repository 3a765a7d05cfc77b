// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;

/// \file
/// The seam for the system's library loader, implemented in windows/SharedLibrary.cpp and
/// posix/SharedLibrary.cpp. The functions log nothing. On failure, openLibrary() and findSymbol()
/// return null and set \a error to the system's text. On success, they do not change \a error.
namespace Vyn::OvraBase::os {

/// Loads the library at the absolute \a path, and returns its handle.
void *openLibrary(const QString &path, QString &error);

/// Returns the address of the symbol \a name. \a library is a handle of openLibrary(), not null.
void *findSymbol(void *library, const char *name, QString &error);
/// Releases \a library, a handle of openLibrary(), not null.
void closeLibrary(void *library);

} // namespace Vyn::OvraBase::os
