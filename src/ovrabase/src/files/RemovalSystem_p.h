// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <memory>

class QString;

/// \file
/// The seam for the removal of files and folders. The functions do not log, and throw
/// std::bad_alloc only.
namespace Vyn::OvraBase::os {

/// Removes the file or link \a path, also if it is read-only. The target of a link stays. Returns
/// false on failure.
bool removeEntry(const QString &path);

/// An open folder whose content can be removed. The functions use the handle of the folder and not
/// its path, so that they remove the content of this folder even if another program replaces the
/// folder at its path.
class OpenFolder {
public:
    /// What the constructor does if the path is a link.
    enum class LinkAtPath { Refused, Followed };

    /// Opens the folder \a path. \a path has no separator at the end, and its last component is
    /// neither "." nor "..".
    OpenFolder(const QString &path, LinkAtPath link);
    ~OpenFolder();
    Q_DISABLE_COPY_MOVE(OpenFolder)

    /// Returns false if the constructor failed. Then only remove() may be called.
    bool isOpen() const;

    /// Removes the file or link \a name in this folder, if possible.
    void removeFile(const QString &name);

    /// Removes the content, and then the folder itself unless it was opened through a link. Links
    /// in the folder are removed and not followed. An entry that cannot be removed stays, and all
    /// others are removed. Returns true if this function removed the folder itself. No other
    /// function may be called afterwards.
    ///
    /// On Linux, the folder itself is removed by its name in the parent folder. So an empty folder
    /// is removed even if it cannot be opened. If another program has put an empty folder in the
    /// place of the folder, that one is removed.
    bool remove();

private:
    struct Handles;
    std::unique_ptr<Handles> mHandles;
};

} // namespace Vyn::OvraBase::os
