// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;

/// The system's library loader. Reports and does not judge: failures are null, nothing is logged.
namespace Vyn::OvraBase::os {

/// Loads the file at the absolute \a path.
void *openLibrary(const QString &path);

/// Both take a handle of openLibrary() that is not null.
void *findSymbol(void *library, const char *name);
void closeLibrary(void *library);

} // namespace Vyn::OvraBase::os
