// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder_p.h"

#include <QDir>

namespace Vyn::OvraBase::os {

PrivateFolder makePrivateFolder(const QString &base, const QString &name)
{
    QDir(base).mkpath(name);
    return {base + u'/' + name, true};
}

} // namespace Vyn::OvraBase::os
