// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <QString>

namespace Vyn::OvraBase {

/// What keeps a cache in a folder of its own: a subclass knows where the folder is, this base
/// creates, empties, deletes and moves it.
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

    /// Removes the writable files of the cache folder. With a writable sub-folder in it, the whole
    /// cache folder goes instead, itself included. Hidden entries survive in the first case only.
    void clear();

    /// Deletes the cache folder with everything in it. Of a link to a folder, only the link.
    void purge();

    /// Purges the cache folder, takes \a path as the new one and makes it, empty unless something
    /// stands there already.
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
