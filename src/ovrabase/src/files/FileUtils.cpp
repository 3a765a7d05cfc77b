// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/files/FileUtils.h>

namespace Vyn::OvraBase {

FileUtils::FileUtils(QObject *parent)
    : QObject(parent)
{
}

FileUtils::~FileUtils() = default;

} // namespace Vyn::OvraBase
