// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Throws and catches across the border of the library, with hidden visibility on both sides.

#include <ovrabase/config.h>
#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/SpdlogDelegate.h>

#include <QCoreApplication>
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
    return good ? 0 : 1;
}
