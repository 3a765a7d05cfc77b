// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Manifest.h"

#include <QString>

#include <map>
#include <vector>

/// Counts and bytes of one class of assets.
struct Tally {
    qint64 files = 0;
    qint64 bytes = 0;
    qint64 added = 0;
    qint64 duplicates = 0;
    qint64 renamed = 0;
};

/// What an intake did.
struct Summary {
    std::map<QString, Tally> byClass;
    qint64 copied = 0;      ///< files brought in or replaced
    qint64 copiedBytes = 0; ///< their bytes
    qint64 failed = 0;      ///< files that could not be read or copied, left alone
};

/// Brings \a files into the folder \a library: each content once, under a valid and unique name.
Summary takeIn(const std::vector<QString> &files, const QString &library, Manifest &manifest);
