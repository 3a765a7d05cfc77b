// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>

#include <QFile>
#include <QTemporaryDir>

#include <Manifest.h>
#include <cstdint>

/// The input is the file "manifest.json" of an asset library.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QTemporaryDir library;
    QFile file(library.filePath(QStringLiteral("manifest.json")));
    require(file.open(QFile::WriteOnly) &&
            file.write(reinterpret_cast<const char *>(data), static_cast<qint64>(size)) >= 0);
    file.close();
    try {
        const Manifest manifest(library.path());
        require(manifest.save());
        const Manifest again(library.path()); // must not throw: the manifest wrote this file
    } catch (const Vyn::Exception::FileFormatException &failure) {
        require(failure.subject() == file.fileName());
    }
    return 0;
}
