// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/services/MessagingService.h>

#include <QElapsedTimer>
#include <QString>

/// Tells the user in the terminal; mutes nest. Nobody is there to answer a question: yes.
class ConsoleMessages : public Vyn::OvraBase::MessagingService {
public:
    void showInformation(const QString &title, const QString &text) override;
    void showWarning(const QString &title, const QString &text) override;
    void showError(const QString &title, const QString &text) override;
    bool askQuestion(const QString &title, const QString &text) override;
    void beginMute() override { ++mMutes; }
    void endMute() override { --mMutes; }

private:
    void show(const char *kind, const QString &title, const QString &text) const;

    int mMutes = 0;
};

/// Lines on standard output, with a progress line below them where that is a terminal.
class Listing {
public:
    explicit Listing(qsizetype total);
    ~Listing();
    Listing(const Listing &) = delete;
    Listing &operator=(const Listing &) = delete;

    void print(const QString &line);

private:
    const qsizetype mTotal;
    qsizetype mDone = 0;
    const bool mOnTerminal;
    QElapsedTimer mSinceProgress;
};
