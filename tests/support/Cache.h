// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/files/GenericCacheController.h>

#include <QString>

namespace Vyn::Test {

/// The simplest cache.
struct Cache final : OvraBase::GenericCacheController {
    explicit Cache(const QString &folder)
        : path(folder)
    {
    }
    QString cacheFolderPath() const override { return path; }
    void reset() { resetCacheFolder(path); }
    void setCacheFolderPath(const QString &folder) override { path = folder; }

    QString path;
};

} // namespace Vyn::Test
