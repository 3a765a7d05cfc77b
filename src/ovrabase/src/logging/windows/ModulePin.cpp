// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/ModulePin_p.h"

#include <qt_windows.h>

namespace Vyn::OvraBase::os {

void pinThisModule()
{
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
        reinterpret_cast<const wchar_t *>(&pinThisModule), &module);
}

} // namespace Vyn::OvraBase::os
