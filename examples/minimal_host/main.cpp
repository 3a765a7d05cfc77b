// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// A host application of ovrabase from start-up to shut-down.

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/DefaultAsyncRecovery.h>
#include <ovrabase/services/ServiceLocator.h>
#include <ovrabase/text/LengthUnits.h>

#include <QCoreApplication>

#include <cstdio>
#include <memory>

using namespace Vyn::OvraBase;

namespace Host {

/// A service of its own: the unit in which the application shows lengths.
class DisplayUnit : public Service {
public:
    OVRABASE_SERVICE_TYPE_ID(Host::DisplayUnit)
    QString name = QStringLiteral("cm");
};

/// A log sink: gets every record, one at a time, on the thread that logged.
struct Console : Vyn::Core::Log::LogDelegate {
    void log(int level, const QString &context, const QString &message) override
    {
        std::printf("%d %s | %s\n", level, qUtf8Printable(context), qUtf8Printable(message));
    }
};

void run()
{
    const Vyn::Logger &ui = logger(UI);
    ui.info(LOG_CONTEXT) << "hello from " << applicationName().toStdString();

    try {
        FileUtils::changeFilePathExtension(QStringLiteral("mesh.obj"), QString());
    } catch (const Vyn::Exception::ParameterException &failure) { // the library has logged it
        ui.warning(LOG_CONTEXT) << "no thumbnail: " << failure.what();
    }

    const QString unit = ServiceLocator::instance()->service<DisplayUnit>()->name;
    const double width = stringToMeter(QStringLiteral("2.5 ft"), unit);
    ui.info(LOG_CONTEXT) << "width: " << fromMeter(width, unit) << ' ' << unit.toStdString();

    void *const plugin = loadSharedLibrary(QStringLiteral("minimal_host_plugin.dll"));
    using Price = double(double);
    if (void *const price = loadSymbol(plugin, QStringLiteral("priceOfFrame"))) {
        ui.info(LOG_CONTEXT) << "price: " << reinterpret_cast<Price *>(price)(width);
    }
    closeSharedLibrary(plugin);
}

} // namespace Host

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    bindLoggers(); // before this line every record is dropped
    const Vyn::Core::Log::ScopedPushLogDelegate console(std::make_shared<Host::Console>());

    ServiceLocator::start();
    ServiceLocator::instance()->registerService(std::make_unique<DefaultAsyncRecovery>());
    ServiceLocator::instance()->registerService(std::make_unique<Host::DisplayUnit>());

    Host::run();

    ServiceLocator::stop(); // destroys the services, while the application object is still there
}
