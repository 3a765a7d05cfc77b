// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Throws and catches across the border of the library, with hidden visibility on both sides.

#include <ovrabase/config.h>
#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>
#include <ovrabase/logging/LogManager.h>

#include <QCoreApplication>
#include <QString>

#include <cstdio>
#include <memory>
#include <string>

namespace {

using namespace Vyn;

struct LastRecord : Core::Log::LogDelegate {
    void log(int level, const QString &context, const QString &message) override
    {
        text = (QString::number(level) + u' ' + context + u' ' + message).toStdString();
    }
    std::string text;
};

bool check(bool holds, const char *what)
{
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s\n", what);
    }
    return holds;
}

/// Lets the library throw and answers whether it arrives as a Caught.
template<class Caught>
bool arrivesAs(const char *what)
{
    try {
        OvraBase::FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
    } catch (const Caught &) {
        return true;
    } catch (...) {
        return check(false, what);
    }
    return check(false, "something is thrown");
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    OvraBase::bindLoggers();
    const auto last = std::make_shared<LastRecord>();
    const Core::Log::ScopedPushLogDelegate registration(last);

    bool good = arrivesAs<Exception::InvalidArgumentException>("the concrete class");
    good &= arrivesAs<Exception::Exception<1, Exception::ParameterException>>("the numbered class");
    good &= arrivesAs<Exception::ParameterException>("the category");
    good &= arrivesAs<Exception::BaseException>("the root");
    good &= arrivesAs<std::exception>("the standard's root");
    good &=
        check(last->text ==
                  "2 Debug: FileUtils.cpp:380 Vyn::OvraBase::FileUtils::changeFilePathExtension() "
                  "Extension is empty.",
            "the failure was logged");
    try {
        throw Exception::DriveUnmountException("ours", QStringLiteral("D"));
    } catch (const Exception::IOException &caught) {
        good &= check(static_cast<const Exception::BaseException &>(caught).errorSubCode() == 10,
            "the sub-code reaches us");
    }
    good &= check(std::string(OVRABASE_VERSION).starts_with("6."), "the version is there");
    return good ? 0 : 1;
}
