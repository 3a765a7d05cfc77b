// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

// Throws and catches across the border of the library, with hidden visibility on both sides.

#include <ovrabase/config.h>
#include <ovrabase/errors/Exception.h>
#include <ovrabase/files/FileUtils.h>
#include <ovrabase/logging/GlobalLoggers.h>

#include <QCoreApplication>
#include <QString>

#include <cstdio>
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

    bool good = check(std::string(OVRABASE_VERSION).starts_with("6."), "the version is there");
    try {
        OvraBase::FileUtils::changeFilePathExtension(QStringLiteral("a.txt"), QString());
        good = check(false, "the library throws");
    } catch (const Exception::Exception<1, Exception::ParameterException> &caught) {
        good &= check(dynamic_cast<const Exception::InvalidArgumentException *>(&caught),
            "the class that it is thrown as");
    }
    try {
        throw Exception::DriveUnmountException("ours", QStringLiteral("D"));
    } catch (const Exception::IOException &caught) {
        good &= check(static_cast<const Exception::BaseException &>(caught).errorSubCode() == 10,
            "the sub-code of what we throw");
    }
    return good ? 0 : 1;
}
