// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/services/Service.h>

namespace Vyn::Test {

struct HostService : OvraBase::Service {
    OVRABASE_SERVICE_TYPE_ID(Vyn::Test::HostService)
    int number = 42;
};

struct PluginService : HostService {
    OVRABASE_SERVICE_TYPE_ID(Vyn::Test::PluginService)
    PluginService() { number = 7; }
};

} // namespace Vyn::Test
