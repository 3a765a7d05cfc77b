// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Vyn::OvraBase::os {

/// A folder that is meant for this user alone.
struct OwnFolder {
    QString path;
    bool isOwn = false; ///< false if another user may have access to the folder
};

/// Makes the folder \a name in the folder \a base, to which all users may write. \a name may have
/// several components. Existing folders are kept. Only this user has access to the new folders.
///
/// If the path exists and is a link, belongs to another user, or is a folder that others may write
/// to, the function uses "<name>-<user id>" instead. On Windows, \a base belongs to the user, and
/// \a name is always used.
OwnFolder makeOwnFolder(const QString &base, const QString &name);

} // namespace Vyn::OvraBase::os
