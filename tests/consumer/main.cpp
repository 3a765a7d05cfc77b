// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// What callers do with the library, in a module with hidden visibility and stream operators of its
// own. The tests of the library check the behaviour in detail.

#include <ovrabase/config.h>
#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/future.h>
#include <ovrabase/text/LengthUnits.h>

#include <QCoreApplication>
#include <QFile>
#include <QMap>
#include <QPoint>
#include <QString>
#include <QVariant>

#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

/// Every module finds it, but messages must not use it.
std::ostream &operator<<(std::ostream &out, const QString &)
{
    return out << "not this one";
}

namespace Paint {

struct Layer {
    QString name;
};

/// The library finds it, also for containers.
QString logStr(const Layer &layer)
{
    return QStringLiteral("layer ") + layer.name;
}

/// Only this namespace finds it.
std::ostream &operator<<(std::ostream &out, const QPoint &point)
{
    return out << "point " << point.x() << ' ' << point.y();
}

bool check(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
    }
    return holds;
}

/// Logs to a sink of spdlog, and returns all that arrives there.
template<class Work>
std::string logOf(Work work)
{
    std::ostringstream written;
    const auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(written);
    const auto logger = std::make_shared<spdlog::logger>("app", sink);
    logger->set_formatter(std::make_unique<spdlog::pattern_formatter>(
        "%l %v", spdlog::pattern_time_type::local, "|"));
    const Vyn::Core::Log::ScopedPushLogDelegate delegate(
        std::make_shared<Vyn::Core::Log::SpdlogDelegate>(logger));
    work();
    return written.str();
}

bool logsValues()
{
    const Vyn::Logger &ui = Vyn::OvraBase::logger(Vyn::OvraBase::UI);
    const QPoint point(1, 2);
    const QString name = QStringLiteral("grün");
    const std::string log = logOf([&] {
        ui.info("c") << name << " at " << Vyn::logStr(point) << QStringView(name)
                     << QLatin1String(" = ") + name << std::hex << 255;
        ui.warning("c") << QMap<int, QList<Layer>>{{1, {{name}, {name}}}} << Layer{name};
        ui.warning("c") << std::pair(1, QVariantMap{{name, true}});
        ui.error("c") << "own: " << point << std::endl;
    });
    return check(log == "info [UI: c] grün at (1,2)grün = grünff|"
                        "warning [UI: c] {1: [layer grün, layer grün]}layer grün|"
                        "warning [UI: c] (1, {grün: QVariant(true as bool)})|"
                        "error [UI: c] own: point 1 2\n|",
        log.c_str());
}

/// An installed library looks for resources beside the program, not in a folder of its builder and
/// not in the current one.
bool looksForResourcesBesideTheProgram()
{
    QFile here(QStringLiteral("here.rcc"));
    const bool isThere = here.open(QFile::WriteOnly);
    const std::string log =
        logOf([&] { Vyn::OvraBase::registerExternalResource(here.fileName()); });
    return check(here.remove() && isThere &&
                     log.find("here.rcc not found in directories  and ") != std::string::npos,
        log.c_str());
}

bool loadsPlugins()
{
    using namespace Vyn::OvraBase;
    QString error;
    bool good = check(!loadSharedLibrary(QStringLiteral("missing.dll"), &error) &&
                          error.contains(QStringLiteral("missing")),
        "a missing plug-in has a reason");
    void *const plugin = loadSharedLibrary(QStringLiteral("plugin.dll"), &error);
    good &= check(plugin && error.isEmpty(), qUtf8Printable(error));
    void *const symbol = loadSymbol(plugin, QStringLiteral("answer"), &error);
    good &= check(symbol && reinterpret_cast<int (*)()>(symbol)() == 42, qUtf8Printable(error));
    closeSharedLibrary(plugin);
    return good;
}

bool catchesWhatTheLibraryThrows()
{
    using namespace Vyn::Exception;
    bool isCaught = false;
    try {
        Vyn::OvraBase::FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
    } catch (const Exception<1, ParameterException> &caught) {
        isCaught = dynamic_cast<const InvalidArgumentException *>(&caught);
    }
    try {
        throw DriveUnmountException("ours", QStringLiteral("D"));
    } catch (const IOException &caught) {
        isCaught &= static_cast<const BaseException &>(caught).errorSubCode() == 10;
    }
    return check(isCaught, "exceptions are caught by each of their classes");
}

} // namespace Paint

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Vyn::OvraBase::bindLoggers();
    bool good = Paint::check(std::string(OVRABASE_VERSION).starts_with("6."), OVRABASE_VERSION);
    const Vyn::future<void> none{Vyn::future<void>::backend_type()};
    good &= Paint::check(!none.valid(), "the backend of futures");
    const auto length = Vyn::OvraBase::parseLength(
        QStringLiteral("1.250,5"), QStringLiteral("mm"), QLocale(QLocale::German));
    good &= Paint::check(length == 1.2505, "the lengths that users type");
    good &= Paint::logsValues();
    good &= Paint::looksForResourcesBesideTheProgram();
    good &= Paint::loadsPlugins();
    good &= Paint::catchesWhatTheLibraryThrows();
    return good ? 0 : 1;
}
