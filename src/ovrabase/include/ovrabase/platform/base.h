// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <vector>

/// \file
/// Who the application is, the plug-in libraries beside it and its resource files.
/// Nothing here throws.
namespace Vyn::OvraBase {

/// Returns the short name of the application, "Tessik".
OVRABASE_EXPORT QString applicationName();
/// Returns "Sulvane 3D " followed by applicationName().
OVRABASE_EXPORT QString applicationSulvaneName();
/// Returns "Ardel " followed by applicationSulvaneName().
OVRABASE_EXPORT QString applicationArdelName();
/// Returns the name that licences are issued for, the same as applicationName().
OVRABASE_EXPORT QString applicationLicenseName();

/// Returns the version of this build as "major.minor.patch".
OVRABASE_EXPORT QString getApplicationVersionString();

/// Returns the environment variable USER or, where that is unset or empty, USERNAME, read in the
/// local code page. Empty when neither is set.
OVRABASE_EXPORT QString getCurrentUserName();

/// Returns ".dll", the product's extension of shared libraries on every system.
OVRABASE_EXPORT const QString &getSharedLibraryExtension();

/// Loads the library of that name from the application's folder and returns its handle.
///
/// Only the file name in \a name counts, never its folder, and of that the part up to the second
/// point: "a.b.c.dll" loads the first file (by name) that matches "a.b*", so that a version behind
/// the extension need not be known. Folders never match. Null when nothing matches, which is logged
/// as an error, and when the system refuses the file. Runs the library's start-up code.
/// Thread-safe.
OVRABASE_EXPORT void *loadSharedLibrary(const QString &name);

/// The same, and sets \a error to why the library is not loaded: the system's text or, when nothing
/// matches, that of the record. Success empties it. A null \a error is allowed.
OVRABASE_EXPORT void *loadSharedLibrary(const QString &name, QString *error);

/// Returns the address of \a symbol in a loaded library; null for a null library and an unknown
/// symbol. Thread-safe.
OVRABASE_EXPORT void *loadSymbol(void *library, const QString &symbol);

/// The same, and sets \a error to why there is no address, in the system's text. Success empties
/// it. A null \a error is allowed.
OVRABASE_EXPORT void *loadSymbol(void *library, const QString &symbol, QString *error);

/// Gives back a library of loadSharedLibrary(); its symbols must not be used any more.
/// Null is ignored. Thread-safe.
OVRABASE_EXPORT void closeSharedLibrary(void *library);

/// Registers a binary Qt resource file by its name.
///
/// The development build's resource folder is searched first, then the folder "Resources" beside
/// the application; the first file found is taken, whether or not Qt accepts it. True when Qt did.
/// Logs what was bound, or as a warning that nothing was found. Call it on the main thread.
OVRABASE_EXPORT bool registerExternalResource(const QString &fileName);

/// Registers every file in turn, past failures too. True when all succeeded.
OVRABASE_EXPORT bool registerExternalResource(const std::vector<QString> &fileNames);

} // namespace Vyn::OvraBase
