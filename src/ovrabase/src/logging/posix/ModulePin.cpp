// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/ModulePin_p.h"

namespace Vyn::OvraBase::os {

void pinThisModule()
{
    // Nothing to do: the library is linked with "-z nodelete".
}

} // namespace Vyn::OvraBase::os
