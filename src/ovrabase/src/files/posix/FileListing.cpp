// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "files/FileListing_p.h"

#include <QFile>

#include <dirent.h>

namespace Vyn::OvraBase::os {

struct FileListing::Handle {
    DIR *stream = nullptr;
};

FileListing::FileListing(const QString &folder)
    : mHandle(new Handle{::opendir(QFile::encodeName(folder).constData())})
{
}

FileListing::~FileListing()
{
    if (mHandle->stream != nullptr) {
        ::closedir(mHandle->stream);
    }
}

bool FileListing::next(Name &name)
{
    const dirent *entry = mHandle->stream != nullptr ? ::readdir(mHandle->stream) : nullptr;
    if (entry == nullptr) {
        return false;
    }
    name = entry->d_type == DT_REG ? entry->d_name : "";
    return true;
}

} // namespace Vyn::OvraBase::os
