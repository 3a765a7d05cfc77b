// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Loads a plug-in and with it the library, calls the function of the plug-in that the argument
// names, unloads the plug-in and logs. Exits with 0 if all of this succeeds.

#include "support/Require.h"

#include <QCoreApplication>
#include <QLibrary>

#include <spdlog/spdlog.h>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::applicationDirPath();
    QLibrary plugin(folder + QStringLiteral("/ovrabaseTestPlugin.dll.6.0"));
    const QFunctionPointer install = plugin.resolve(argc == 2 ? argv[1] : "");
    Vyn::Test::require(install != nullptr, "the plug-in has the function");
    install();
    Vyn::Test::require(plugin.unload(), "the plug-in is unloaded");
    qWarning("to a handler of the library");
    spdlog::warn("to a sink of the library");
    return 0;
}
