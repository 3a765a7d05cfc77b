// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

namespace Vyn::OvraBase {

/// The base class of everything that keeps a cache in a folder of its own. A subclass knows where
/// the folder is; this base class creates, empties, deletes and moves it.
///
/// The path of the cache folder may be a link to a folder, for example on a bigger disk. The folder
/// behind it is then emptied instead of deleted, and the link stays. Links inside are removed and
/// not followed.
///
/// No operation throws or reports failure; a folder that cannot be used gets a warning on Support.
/// As thread-safe as the subclass.
// The destructor is first in the table of virtual functions, and nobody deletes through this base.
// NOLINTNEXTLINE(cppcoreguidelines-virtual-class-destructor)
class OVRABASE_EXPORT GenericCacheController {
public:
    GenericCacheController() = default;
    GenericCacheController(const GenericCacheController &) = default;
    GenericCacheController &operator=(const GenericCacheController &) = default;

    /// Removes the writable files of the cache folder that are not hidden. If it has a writable
    /// sub-folder that is not hidden, removes the whole cache folder with everything in it instead.
    void clear();

    /// Removes the cache folder with everything in it. A file at its path stays.
    void purge();

    /// Purges the cache folder, stores \a path as the new one and creates that. The new folder is
    /// empty unless \a path is another folder that exists already.
    void resetCacheFolder(const QString &path);

protected:
    virtual ~GenericCacheController();

    /// Creates the cache folder if needed, or warns that there will be no cache.
    void ensureDirectoryExists();

public:
    /// Returns the absolute path of the cache folder; empty means that there is none.
    virtual QString cacheFolderPath() const = 0;

    /// Stores \a path as the new cache folder; nothing more.
    virtual void setCacheFolderPath(const QString &path) = 0;
};

} // namespace Vyn::OvraBase
