// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <filesystem>
#include <memory>

class QString;

namespace Vyn::OvraBase::os {

/// Lists the names in a folder as the system spells them, piece by piece and without asking for
/// each of them.
class FileListing {
public:
    using Name = std::filesystem::path::string_type;

    explicit FileListing(const QString &folder);
    ~FileListing();
    Q_DISABLE_COPY_MOVE(FileListing)

    /// Goes on to the next entry. Sets \a name to its name, or to an empty one if the listing does
    /// not tell that it is a file. Returns false at the end, also if the folder cannot be read on.
    bool next(Name &name);

private:
    struct Handle;
    std::unique_ptr<Handle> mHandle;
};

} // namespace Vyn::OvraBase::os
