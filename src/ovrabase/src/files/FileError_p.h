// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <system_error>

/// \file
/// The private copy functions report an error as a std::error_code: a code of the system, a
/// std::errc, or a FileError.
namespace Vyn::OvraBase {

/// Why the library itself refuses an operation on files.
enum class FileError {
    NotAPath = 1, ///< a path is empty or has a NUL
    SameFile,
    SourceIsNoFile,
    SourceNotOpened, ///< for example, the source is missing, a folder, or locked
    NameUnreadable,  ///< a name in a folder cannot be decoded, so that QString cannot hold it
};

/// Makes FileError a std::error_code in a category of its own.
std::error_code make_error_code(FileError error);

/// Returns the text of \a error for a log record. For an error of the system, it is the text that
/// QFile::errorString() has.
QString reasonOf(const std::error_code &error);

} // namespace Vyn::OvraBase

template<>
struct std::is_error_code_enum<Vyn::OvraBase::FileError> : std::true_type {
};
