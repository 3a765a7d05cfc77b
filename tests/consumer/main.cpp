// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Throws and catches across the border of the library, with hidden visibility on both sides.

#include <ovrabase/config.h>
#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>
#include <ovrabase/logging/SpdlogDelegate.h>
#include <ovrabase/platform/base.h>
#include <ovrabase/services/future.h>

#include <QCoreApplication>
#include <QFile>
#include <QString>

#include <spdlog/sinks/ostream_sink.h>
#include <spdlog/spdlog.h>

#include <cstdio>
#include <memory>
#include <sstream>
#include <string>

namespace {

bool check(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
    }
    return holds;
}

struct LastMessage : Vyn::Core::Log::LogDelegate {
    void log(int, const QString &, const QString &message) override { text = message; }
    QString text;
};

/// An installed library looks for resources beside the program, not in a folder of its builder and
/// not in the current one.
bool looksForResourcesBesideTheProgram()
{
    const auto last = std::make_shared<LastMessage>();
    const Vyn::Core::Log::ScopedPushLogDelegate delegate(last);
    QFile here(QStringLiteral("here.rcc"));
    const bool isThere = here.open(QFile::WriteOnly);
    Vyn::OvraBase::registerExternalResource(here.fileName());
    return here.remove() && isThere &&
           last->text.startsWith(
               QStringLiteral("Resource file here.rcc not found in directories  and "));
}

} // namespace

int main(int argc, char **argv)
{
    using namespace Vyn;
    const QCoreApplication application(argc, argv);
    OvraBase::bindLoggers();
    std::ostringstream written;
    const auto sink = std::make_shared<spdlog::sinks::ostream_sink_mt>(written);
    const Core::Log::ScopedPushLogDelegate log(
        std::make_shared<Core::Log::SpdlogDelegate>(std::make_shared<spdlog::logger>("app", sink)));

    bool good = check(std::string(OVRABASE_VERSION).starts_with("6."), "the version is there");
    try {
        OvraBase::FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
        good = check(false, "the library throws");
    } catch (const Exception::Exception<1, Exception::ParameterException> &caught) {
        good &= check(dynamic_cast<const Exception::InvalidArgumentException *>(&caught),
            "the class that it is thrown as");
    }
    good &= check(written.str().ends_with("changeFilePathExtension()] Extension is empty.\n"),
        "what the library logs reaches a sink of spdlog");
    try {
        throw Exception::DriveUnmountException("ours", QStringLiteral("D"));
    } catch (const Exception::IOException &caught) {
        good &= check(static_cast<const Exception::BaseException &>(caught).errorSubCode() == 10,
            "the sub-code of what we throw");
    }
    good &= check(!future<void>(future<void>::backend_type()).valid(), "the backend of futures");
    good &= check(looksForResourcesBesideTheProgram(), "resources are beside the program");
    return good ? 0 : 1;
}
