// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

namespace Vyn::OvraBase {

/// The base class of a cache in a folder of its own. A subclass stores the path of the folder. This
/// class creates, empties, removes and replaces the folder.
///
/// The path of the cache folder may be a link to a folder, for example on a larger disk. The target
/// is then emptied and not removed, and the link stays. A link in the cache folder is never
/// followed: the functions below remove or keep the link itself.
///
/// No function throws or returns an error. If the cache folder cannot be created, a warning is
/// logged on the logger Support. Calls from several threads are safe if the subclass guards its
/// path.
// The virtual destructor is protected: an object is not deleted through a pointer to this class.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class OVRABASE_EXPORT GenericCacheController {
public:
    GenericCacheController() = default;
    GenericCacheController(const GenericCacheController &) = default;
    GenericCacheController &operator=(const GenericCacheController &) = default;

    /// Removes all files in the cache folder that are writable and not hidden. If the cache folder
    /// has a sub-folder, or a link to a folder, that is writable and not hidden, removes the cache
    /// folder with its whole content instead.
    void clear();

    /// Removes the cache folder with its content. Does nothing if the path is a file.
    void purge();

    /// Calls purge(), then setCacheFolderPath() with \a path, and then creates the new cache
    /// folder. If \a path is another folder that exists already, its content stays. But if \a path
    /// is in the old cache folder, its content is removed by purge().
    void resetCacheFolder(const QString &path);

protected:
    virtual ~GenericCacheController();

    /// Creates the cache folder if it does not exist. Logs a warning on Support if that fails, if a
    /// file has the path of the cache folder, or if the path is empty.
    void ensureDirectoryExists();

public:
    /// Returns the absolute path of the cache folder, or an empty path if there is no cache.
    virtual QString cacheFolderPath() const = 0;

    /// Stores \a path as the path of the cache folder. Does not access the file system.
    virtual void setCacheFolderPath(const QString &path) = 0;
};

} // namespace Vyn::OvraBase
