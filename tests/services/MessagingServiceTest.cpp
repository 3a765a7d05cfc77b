// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/services/MessagingService.h>

#include <gmock/gmock.h>

#include <string>
#include <utility>

namespace {

using namespace Vyn::OvraBase;

/// Records its mutes: '+' for a begin, '-' for an end.
struct Messages : MessagingService {
    void showInformation(const QString &, const QString &) override {}
    void showWarning(const QString &, const QString &) override {}
    void showError(const QString &, const QString &) override {}
    bool askQuestion(const QString &, const QString &) override { return false; }
    void beginMute() override { calls += '+'; }
    void endMute() override { calls += '-'; }

    std::string calls;
};

TEST(MessagingService, IsMutedUntilTheEndOfTheScopeThatTheMuteWasMovedTo)
{
    Messages messages;
    Messages overwritten;
    {
        auto target = messages.mute();
        {
            auto emptied = std::move(target);
            target = std::move(emptied); // into an empty one
        }
        auto &self = target;
        target = std::move(self);
        EXPECT_EQ(messages.calls, "+");
        auto last = overwritten.mute();
        last = std::move(target);
    }
    EXPECT_EQ(messages.calls, "+-");
    EXPECT_EQ(overwritten.calls, "+") << "a mute that another one is moved over never ends";
}

} // namespace
