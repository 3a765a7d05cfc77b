// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "Console.h"

#include <cstdio>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace {

bool standardOutputIsTerminal()
{
#ifdef _WIN32
    return _isatty(_fileno(stdout)) != 0;
#else
    return isatty(STDOUT_FILENO) != 0;
#endif
}

} // namespace

void ConsoleMessages::show(const char *kind, const QString &title, const QString &text) const
{
    if (mMutes == 0) {
        std::printf("%s %s: %s\n", kind, qUtf8Printable(title), qUtf8Printable(text));
    }
}

void ConsoleMessages::showInformation(const QString &title, const QString &text)
{
    show("(i)", title, text);
}

void ConsoleMessages::showWarning(const QString &title, const QString &text)
{
    show("(!)", title, text);
}

void ConsoleMessages::showError(const QString &title, const QString &text)
{
    show("(x)", title, text);
}

bool ConsoleMessages::askQuestion(const QString &title, const QString &text)
{
    show("(?)", title, text);
    return true;
}

Listing::Listing(qsizetype total)
    : mTotal(total)
    , mOnTerminal(standardOutputIsTerminal())
{
    mSinceProgress.start();
}

Listing::~Listing()
{
    if (mOnTerminal) {
        std::fputs("\r\x1b[K", stdout);
    }
    std::fflush(stdout);
}

void Listing::print(const QString &line)
{
    ++mDone;
    std::printf("%s%s\n", mOnTerminal ? "\r\x1b[K" : "", qUtf8Printable(line));
    if (mOnTerminal && mSinceProgress.elapsed() > 50) {
        std::printf("%3lld %% of %lld files", static_cast<long long>(100 * mDone / mTotal),
            static_cast<long long>(mTotal));
        std::fflush(stdout);
        mSinceProgress.restart();
    }
}
