// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <AssetLibrary.h>
#include <cstdint>

/// The input is the content of "manifest.json" in the folder of an AssetLibrary. The folder also
/// has an empty file "b.png", which was last modified at the Unix time 0.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir folder;
    QFile asset(folder.filePath(QStringLiteral("b.png")));
    require(asset.open(QFile::WriteOnly) &&
            asset.setFileTime(QDateTime::fromMSecsSinceEpoch(0), QFile::FileModificationTime));
    asset.close();
    QFile manifest(folder.filePath(QStringLiteral("manifest.json")));
    require(manifest.open(QFile::WriteOnly) &&
            manifest.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size)) >= 0);
    manifest.close();
    try {
        const AssetLibrary library(folder.path());
        require(library.saveManifest());
    } catch (const Vyn::Exception::FileFormatException &failure) {
        require(failure.subject() == manifest.fileName());
        return 0;
    }
    const AssetLibrary again(folder.path()); // it reads what it has written
    return 0;
}
