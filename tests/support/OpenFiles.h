// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QScopeGuard>

#ifdef Q_OS_LINUX
#include <sys/resource.h>

namespace Vyn::Test {

/// Calls when the process can have \a limit files open. Nobody is root enough to exceed that.
template<class Call>
auto withOpenFiles(rlim_t limit, Call call)
{
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{limit, before.rlim_max};
    setrlimit(RLIMIT_NOFILE, &few);
    const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_NOFILE, &before); });
    return call();
}

template<class Call>
auto withoutOpenFiles(Call call)
{
    return withOpenFiles(0, call);
}

} // namespace Vyn::Test
#endif
