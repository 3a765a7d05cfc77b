// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;

/// The system's library loader. It reports and does not judge: nothing is logged, and a failure is
/// null with the system's text in \a error, which success leaves alone.
namespace Vyn::OvraBase::os {

/// Loads the file at the absolute \a path.
void *openLibrary(const QString &path, QString &error);

/// Both take a handle of openLibrary() that is not null.
void *findSymbol(void *library, const char *name, QString &error);
void closeLibrary(void *library);

} // namespace Vyn::OvraBase::os
