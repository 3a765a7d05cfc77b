// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <system_error>

/// \file
/// Below the API, a std::error_code tells what failed and why: the system's code in
/// std::system_category(), or one of the library's own reasons.
namespace Vyn::OvraBase {

/// Why the library itself refuses an operation on files.
enum class FileError {
    NotAPath = 1, ///< a path is empty or has a NUL
    SameFile,
    SourceIsNoFile,
    SourceNotOpened, ///< a missing one, a folder, or one that may not be read
    NameUnreadable,  ///< a name in a folder is in an encoding that QString cannot hold
};

std::error_code make_error_code(FileError error);

/// Returns the text of \a error for a record, as QFile::errorString() words those of the system.
QString reasonOf(const std::error_code &error);

} // namespace Vyn::OvraBase

template<>
struct std::is_error_code_enum<Vyn::OvraBase::FileError> : std::true_type {
};
