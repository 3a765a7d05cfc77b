// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScopeGuard>

#ifdef Q_OS_LINUX
#include <sys/resource.h>

namespace Vyn::Test {

/// Calls when no file can be opened. Nobody is root enough to exceed the limit.
template<class Call>
auto withoutOpenFiles(Call call)
{
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_NOFILE, &before); });
    return call();
}

} // namespace Vyn::Test
#endif
