// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// What callers do with the library, in a module with hidden visibility and stream operators of its
// own. The tests of the library check the behaviour in detail.

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/future.h>

#include <QCoreApplication>
#include <QFile>
#include <QMap>

#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

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

} // namespace Paint

bool check(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
    }
    return holds;
}

/// Logs values, and what the library itself logs, to a sink of spdlog.
std::string loggedText()
{
    std::ostringstream written;
    const auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(written);
    const auto logger = std::make_shared<spdlog::logger>("app", sink);
    logger->set_formatter(std::make_unique<spdlog::pattern_formatter>(
        "%l %v", spdlog::pattern_time_type::local, "|"));
    const Vyn::Core::Log::ScopedPushLogDelegate delegate(
        std::make_shared<Vyn::Core::Log::SpdlogDelegate>(logger));
    const QString name = QStringLiteral("grün");
    Vyn::OvraBase::logger(Vyn::OvraBase::UI).warning("c")
        << name << QLatin1String(" = ") + name << std::hex << 255
        << QMap<int, QList<Paint::Layer>>{{1, {{name}, {name}}}} << std::endl;
    QFile here(QStringLiteral("here.rcc"));
    const bool isThere = here.open(QFile::WriteOnly);
    Vyn::OvraBase::registerExternalResource(here.fileName());
    return here.remove() && isThere ? written.str() : "no file can be written here";
}

bool catchesWhatTheLibraryThrows()
{
    using namespace Vyn::Exception;
    try {
        Vyn::OvraBase::FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
    } catch (const Exception<1, ParameterException> &caught) {
        return dynamic_cast<const InvalidArgumentException *>(&caught);
    }
    return false;
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Vyn::OvraBase::bindLoggers();
    const Vyn::future<void> none{Vyn::future<void>::backend_type()};
    bool good = check(!none.valid(), "the backend of futures");
    const std::string log = loggedText();
    good &= check(log.starts_with("warning [UI: c] grün = grünff{1: [layer grün, layer grün]}\n|"),
        log.c_str());
    // An installed library looks for resources beside the program, not in a folder of its builder
    // and not in the current one.
    good &= check(
        log.find("here.rcc not found in directories  and ") != std::string::npos, log.c_str());
    good &= check(catchesWhatTheLibraryThrows(), "exceptions are caught by their base classes");
    return good ? 0 : 1;
}
