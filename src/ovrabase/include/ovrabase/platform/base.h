// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

#include <vector>

/// \file
/// Functions that return the names of the application, the version of the library and the name of
/// the user, load shared libraries (plug-ins) and register resource files of the application. None
/// of these functions throws.
namespace Vyn::OvraBase {

/// Returns the short name of the application, "Tessik".
OVRABASE_EXPORT QString applicationName();
/// Returns "Sulvane 3D " followed by applicationName().
OVRABASE_EXPORT QString applicationSulvaneName();
/// Returns "Ardel " followed by applicationSulvaneName().
OVRABASE_EXPORT QString applicationArdelName();
/// Returns the name that licences are issued for. It is the same as applicationName().
OVRABASE_EXPORT QString applicationLicenseName();

/// Returns the version of the library ovrabase as "major.minor.patch".
OVRABASE_EXPORT QString getApplicationVersionString();

/// Returns the value of the environment variable USER, decoded from the local 8-bit encoding. If
/// USER is unset or empty, returns the value of USERNAME. If both are unset, returns an empty text.
OVRABASE_EXPORT QString getCurrentUserName();

/// Returns ".dll" on every system: the file extension of the application's shared libraries.
OVRABASE_EXPORT const QString &getSharedLibraryExtension();

/// Loads the shared library \a name from the folder of the application, and returns its handle.
///
/// A folder in \a name is ignored, and so is everything from the second dot of the file name on:
/// "a.b.c.dll" loads the alphabetically first file that matches "a.b*", in any letter case. So a
/// caller need not know a version number after the extension: "a.dll" loads "a.dll.2" if no other
/// file matches.
///
/// Returns null if no file matches, which is logged as an error on the logger Debug. Returns null
/// without a log record if the system cannot load the file. Without an application object, no file
/// matches, because the folder is unknown. Runs the initialisation code of the library.
/// Thread-safe.
OVRABASE_EXPORT void *loadSharedLibrary(const QString &name);

/// Does what loadSharedLibrary(name) does. On failure, sets \a error to the reason: the system's
/// text, or the text of the log record if no file matches. On success, sets it to an empty text.
/// \a error may be null.
OVRABASE_EXPORT void *loadSharedLibrary(const QString &name, QString *error);

/// Returns the address of \a symbol in \a library, a handle of loadSharedLibrary(). Returns null if
/// \a library is null or has no such symbol. Thread-safe.
OVRABASE_EXPORT void *loadSymbol(void *library, const QString &symbol);

/// Does what loadSymbol(library, symbol) does. On failure, sets \a error to the reason, normally
/// the system's text. On success, sets it to an empty text. \a error may be null.
OVRABASE_EXPORT void *loadSymbol(void *library, const QString &symbol, QString *error);

/// Releases \a library, a handle of loadSharedLibrary(). The caller must not use its symbols
/// afterwards. Ignores null. Thread-safe.
OVRABASE_EXPORT void closeSharedLibrary(void *library);

/// Registers the binary Qt resource file \a fileName (.rcc). Returns true if Qt accepts it.
///
/// Searches the resource folder of the development build (the CMake option
/// OVRABASE_DEV_RESOURCE_DIR), then the folder "Resources" in the folder of the application.
/// Registers the first file that exists: if Qt refuses it, the other folder is not searched. Logs
/// the file and the result on the logger Debug, or a warning if neither folder has the file. Call
/// it on the main thread.
OVRABASE_EXPORT bool registerExternalResource(const QString &fileName);

/// Calls registerExternalResource() for each of \a fileNames, also after one fails. Returns true if
/// all succeed.
OVRABASE_EXPORT bool registerExternalResource(const std::vector<QString> &fileNames);

} // namespace Vyn::OvraBase
