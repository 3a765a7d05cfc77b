// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

#ifdef Q_OS_LINUX
#include <initializer_list>
#include <tuple>
#include <unistd.h>

namespace Vyn::Test {

/// Makes a process of root that of a user who has no special rights, until its end. Has no effect
/// when the user is not root.
class OrdinaryUser {
public:
    /// The user owns \a entries; a link is not followed.
    OrdinaryUser(std::initializer_list<QString> entries)
    {
        if (mIsRoot) {
            for (const QString &entry : entries) {
                std::ignore =
                    lchown(QFile::encodeName(entry).constData(), kId, static_cast<gid_t>(-1));
            }
            std::ignore = seteuid(kId);
        }
    }
    ~OrdinaryUser()
    {
        if (mIsRoot) {
            std::ignore = seteuid(0);
        }
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

    bool isAnother() const { return mIsRoot; }

private:
    static constexpr uid_t kId = 65534;

    bool mIsRoot = geteuid() == 0;
};

} // namespace Vyn::Test
#endif
