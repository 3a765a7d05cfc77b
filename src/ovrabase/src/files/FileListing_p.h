// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <filesystem>
#include <memory>

class QString;

namespace Vyn::OvraBase::os {

/// Lists the names in a folder in the native encoding, one at a time. Gets many entries with one
/// call of the system.
class FileListing {
public:
    using Name = std::filesystem::path::string_type;

    /// Begins to list \a folder. If it cannot be opened, the listing is empty.
    explicit FileListing(const QString &folder);
    ~FileListing();
    Q_DISABLE_COPY_MOVE(FileListing)

    /// Reads the next entry. Sets \a name to its name, or to an empty text if the entry is not
    /// known to be a regular file. Returns false after the last entry and after an error.
    bool next(Name &name);

private:
    struct Handle;
    std::unique_ptr<Handle> mHandle;
};

} // namespace Vyn::OvraBase::os
