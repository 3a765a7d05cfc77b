// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// A plug-in that test programs load. It links the library, and shares it with a program that links
// it too.

#include "support/PluginServices.h"

#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/services/ServiceLocator.h>

using namespace Vyn::Test;
using Vyn::OvraBase::ServiceLocator;

/// Registers the plug-in's service. Returns the number of the application's service, or 0 if the
/// plug-in's is refused.
extern "C" Q_DECL_EXPORT int plugInServices()
{
    auto &locator = *ServiceLocator::instance();
    const bool isRegistered = locator.registerService(std::make_unique<PluginService>());
    return isRegistered ? locator.service<HostService>()->number : 0;
}

/// Gives spdlog a sink of the library.
extern "C" Q_DECL_EXPORT void plugInSink()
{
    Vyn::OvraBase::bindLoggers();
}

/// Gives Qt a message handler of the library.
extern "C" Q_DECL_EXPORT void plugInHandler()
{
    Vyn::Core::Log::installQtMessageHandler();
}
