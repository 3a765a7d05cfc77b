// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <memory>
#include <system_error>

class QString;

/// \file
/// How the systems remove files and folders. Reports and does not judge: no logging, no throwing.
namespace Vyn::OvraBase::os {

/// Removes the file or link \a path, a read-only file too. What a link leads to stays.
std::error_code removeEntry(const QString &path);

/// A folder that is open for removal. All functions work inside this folder, whatever takes the
/// place of its path meanwhile.
class OpenFolder {
public:
    /// What happens when the path itself is a link.
    enum class LinkAtPath { Refused, Followed };

    /// \a path has no separator at its end, and its last component is not "." or "..".
    OpenFolder(const QString &path, LinkAtPath link);
    ~OpenFolder();
    Q_DISABLE_COPY_MOVE(OpenFolder)

    /// Returns why the folder is not open; nothing else may be called then.
    std::error_code error() const { return mError; }

    /// Removes the file or link \a name of this folder.
    std::error_code removeFile(const QString &name);

    /// Removes the content, then the folder itself unless it was opened through a link. Links in it
    /// are removed and not followed. What cannot be removed stays, and the rest goes; the answer is
    /// the first failure.
    std::error_code remove();

private:
    struct Handles;
    std::unique_ptr<Handles> mHandles;
    std::error_code mError;
};

} // namespace Vyn::OvraBase::os
