// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// What callers do with the library. The project "consumer" compiles this file with hidden
// visibility against the installed library, and the project "parent" against the library as a
// sub-folder. The tests of the library check the behaviour in detail.

#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/future.h>

#include <QCoreApplication>
#include <QFile>

#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

#include <stdexcept>

using namespace Vyn::OvraBase;

void require(bool holds, const std::string &what)
{
    if (!holds) {
        throw std::runtime_error("does not hold: " + what);
    }
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    bindLoggers();
    std::ostringstream log;
    const auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(log);
    const auto receiver = std::make_shared<spdlog::logger>("app", sink);
    receiver->set_pattern("%l %v");
    const Vyn::Core::Log::ScopedPushLogDelegate delegate(
        std::make_shared<Vyn::Core::Log::SpdlogDelegate>(receiver));

    logger(UI).warning("c") << QStringLiteral("grün") << 255;
    require(log.str().starts_with("warning [UI: c] grün255"), log.str());

    const Vyn::future<void> none{Vyn::future<void>::backend_type()};
    require(!none.valid(), "a future of an empty backend is not valid");
    try {
        FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
        require(false, "an exception is thrown");
    } catch (const Vyn::Exception::Exception<1, Vyn::Exception::ParameterException> &caught) {
        require(dynamic_cast<const Vyn::Exception::InvalidArgumentException *>(&caught),
            "an exception caught by its base class keeps its own class");
    }

    // A library that is built without OVRABASE_DEV_RESOURCE_DIR looks for resources only in the
    // folder "Resources" beside the program, and not in the current folder.
    QFile here(QStringLiteral("here.rcc"));
    require(here.open(QFile::WriteOnly), "the current folder can be written");
    registerExternalResource(here.fileName());
    here.remove();
    require(
        log.str().find("here.rcc not found in directories  and ") != std::string::npos, log.str());
    return 0;
}
