// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDir>
#include <QScopeGuard>

#include <gtest/gtest.h>

#include <functional>
#include <locale>
#include <string>

#ifdef Q_OS_LINUX
#include <QFile>

#include <sys/resource.h>
#include <unistd.h>
#endif

/// \file
/// Each function changes the process until the returned guard is destroyed.
namespace Vyn::Test {

using Guard = QScopeGuard<std::function<void()>>;

/// Makes \a path the current folder.
[[nodiscard]] inline Guard inFolder(const QString &path)
{
    const QString before = QDir::currentPath();
    EXPECT_TRUE(QDir::setCurrent(path)) << path.toStdString();
    return Guard([before] { QDir::setCurrent(before); });
}

/// Gives the environment variable \a name a \a value; a null \a value removes the variable.
[[nodiscard]] inline Guard withVariable(const char *name, const QByteArray &value)
{
    const auto set = [name](const QByteArray &to) {
        to.isNull() ? qunsetenv(name) : qputenv(name, to);
    };
    const QByteArray before = qgetenv(name);
    set(value);
    return Guard([set, before] { set(before); });
}

/// Writes a comma before decimals and between groups of three digits.
struct Grouping : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

/// Makes a locale with Grouping the global one of the standard library.
[[nodiscard]] inline Guard withGrouping()
{
    const auto before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    return Guard([before] { std::locale::global(before); });
}

#ifdef Q_OS_LINUX
/// Lets the process open a file only if a descriptor below \a limit is free. This holds for root
/// too. Call only the tested function while the guard exists: checks of the undefined behaviour
/// sanitizer open files.
[[nodiscard]] inline Guard withOpenFiles(rlim_t limit)
{
    rlimit before{};
    EXPECT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit few{limit, before.rlim_max};
    EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
    return Guard([before] { setrlimit(RLIMIT_NOFILE, &before); });
}

/// Makes a process of root that of a user who has no special rights and owns \a entries. If an
/// entry is a link, the user owns the link and not its target. The guard does not give the entries
/// back to root. Has no effect when the user is not root.
[[nodiscard]] inline Guard asOrdinaryUser(std::initializer_list<QString> entries)
{
    constexpr uid_t kOrdinary = 65534;
    const uid_t before = getuid();
    if (before == 0) {
        for (const QString &entry : entries) {
            EXPECT_EQ(lchown(QFile::encodeName(entry).constData(), kOrdinary, kOrdinary), 0);
        }
        EXPECT_EQ(setresuid(kOrdinary, kOrdinary, before), 0); // access() looks at the real user
    }
    return Guard([before] { EXPECT_EQ(setresuid(before, before, before), 0); });
}
#endif

} // namespace Vyn::Test
