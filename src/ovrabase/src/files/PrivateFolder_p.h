// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Vyn::OvraBase::os {

/// The path of a folder, normally one to which only this user has access.
struct PrivateFolder {
    QString path;
    /// False if the path is empty, or if makePrivateFolder() finds that another user may have
    /// access to it. True even if the folder cannot be made: then the next operation of the caller
    /// on the path fails.
    bool isUsable = false;
};

/// Makes the folder \a name in the folder \a base. \a name may have several components. Existing
/// folders are kept.
///
/// On Linux, all users may write to \a base. The folders get the mode 0700, also existing ones. If
/// a component of \a name exists and is a link, belongs to another user, or is a folder that others
/// may write to, the function uses "<name>-<user id>" instead. On Windows, \a base belongs to the
/// user, and \a name is always used.
PrivateFolder makePrivateFolder(const QString &base, const QString &name);

} // namespace Vyn::OvraBase::os
