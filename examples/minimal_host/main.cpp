// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// A host application of ovrabase from start-up to shut-down.

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>
#include <ovrabase/text/LengthUnits.h>

#include <QCoreApplication>

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <memory>

using namespace Vyn::OvraBase;

namespace Host {

/// A service of its own: the unit in which the application shows lengths.
class DisplayUnit : public Service {
public:
    OVRABASE_SERVICE_TYPE_ID(Host::DisplayUnit)
    QString name = QStringLiteral("cm");
};

void run()
{
    const Vyn::Logger &ui = logger(UI);
    ui.info(LOG_CONTEXT) << "hello from " << applicationName();

    try {
        FileUtils::changeFilePathExtension(QStringLiteral("mesh.obj"), QString());
    } catch (const Vyn::Exception::ParameterException &failure) { // the library has logged it
        ui.warning(LOG_CONTEXT) << "no thumbnail: " << failure.what();
    }

    const QString unit = ServiceLocator::instance()->service<DisplayUnit>()->name;
    const double width = parseLength(QStringLiteral("2 ft 6 in"), unit, QLocale()).value_or(0);
    ui.info(LOG_CONTEXT) << "width: " << fromMeter(width, unit) << ' ' << unit;

    QString error;
    void *const plugin = loadSharedLibrary(QStringLiteral("minimal_host_plugin.dll"), &error);
    void *const price =
        plugin ? loadSymbol(plugin, QStringLiteral("priceOfFrame"), &error) : nullptr;
    if (price != nullptr) {
        using Price = double(double);
        ui.info(LOG_CONTEXT) << "price: " << reinterpret_cast<Price *>(price)(width);
    } else {
        ui.warning(LOG_CONTEXT) << "no prices: " << error;
    }
    closeSharedLibrary(plugin);
}

} // namespace Host

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    bindLoggers(); // before this line every record is dropped
    const auto console = spdlog::stdout_logger_mt("console");
    console->set_pattern("%l %v");
    const Vyn::Core::Log::ScopedPushLogDelegate toConsole(
        std::make_shared<Vyn::Core::Log::SpdlogDelegate>(console));

    ServiceLocator::start();
    if (!ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>()) ||
        !ServiceLocator::instance()->registerService(std::make_unique<Host::DisplayUnit>())) {
        return 1;
    }

    Host::run();
    ServiceLocator::stop(); // destroys the services, while the application object is still there
}
