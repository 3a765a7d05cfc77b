// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Require.h"

#include <ovrabase/files/FileUtils.h>

#include <cstdint>

using Vyn::OvraBase::FileUtils;

/// The input is a name in UTF-8. Checks that ensureValidFileName() gives valid names and that a
/// second call changes nothing. For names that are not empty and have no NUL, checks that it
/// changes exactly the invalid ones. Also checks that a name begins with its text before the
/// complete extension, and that its complete extension ends with its extension.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString name =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString valid = FileUtils::ensureValidFileName(name);
    require(FileUtils::isValidFileName(valid));
    // The answer is empty only for a name that begins with a NUL.
    require(valid.isEmpty() || FileUtils::ensureValidFileName(valid) == valid);
    require(name.isEmpty() || name.contains(QChar::Null) ||
            FileUtils::isValidFileName(name) == (valid == name));
    require(name.startsWith(FileUtils::getFilePathWithoutExtension(name)));
    require(FileUtils::getFilePathCompleteExtension(name).endsWith(
        FileUtils::getFilePathExtension(name)));
    return 0;
}
