// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Vyn::OvraBase::os {

struct OwnFolder {
    QString path;
    bool isOwn = false; ///< false if somebody else may put something into the folder
};

/// Makes the folder \a name and its parents in the folder \a base, where everybody may write, if
/// they are missing. Only this user has access to them.
///
/// A link, what belongs to another user, and a folder that others may write to are not used. If one
/// of those has the name, "<name>-<user id>" takes its place. On Windows \a base is the user's own,
/// and \a name is used as it is.
OwnFolder makeOwnFolder(const QString &base, const QString &name);

} // namespace Vyn::OvraBase::os
