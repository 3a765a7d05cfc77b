// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/services/Service.h>

#include <QString>

namespace Vyn::OvraBase {

/// Shows messages to the user.
///
/// The application derives its service from this class and registers it in the ServiceLocator. The
/// library shows nothing itself: of the virtual functions, it calls beginMute() and endMute() only.
class OVRABASE_EXPORT MessagingService : public Service {
public:
    OVRABASE_SERVICE_TYPE_ID(Vyn::OvraBase::MessagingService)

    /// Mutes a service during the lifetime of this object. Can be moved, but not copied.
    class OVRABASE_EXPORT MuteScope {
    public:
        /// Makes an empty scope, which mutes nothing. A mute can be moved into it.
        MuteScope() = default;
        /// Takes over the mute of \a other, which becomes empty.
        MuteScope(MuteScope &&other) noexcept;
        /// Takes over the mute of \a other, which becomes empty. Assign to empty scopes only: a
        /// mute that this scope held before never ends. Self-assignment changes nothing.
        MuteScope &operator=(MuteScope &&other) noexcept;
        MuteScope(const MuteScope &) = delete;
        MuteScope &operator=(const MuteScope &) = delete;
        /// Calls endMute() of the service, unless this scope is empty.
        ~MuteScope();

    private:
        friend class MessagingService;
        explicit MuteScope(MessagingService *service);

        MessagingService *mService = nullptr;
    };

    ~MessagingService() override;

    /// Shows \a text as information, under \a title.
    virtual void showInformation(const QString &title, const QString &text) = 0;
    /// Shows \a text as a warning, under \a title.
    virtual void showWarning(const QString &title, const QString &text) = 0;
    /// Shows \a text as an error, under \a title.
    virtual void showError(const QString &title, const QString &text) = 0;
    /// Asks the user the yes-or-no question \a text, under \a title. Returns true if the user
    /// agrees.
    virtual bool askQuestion(const QString &title, const QString &text) = 0;

    /// Suppresses messages until the matching endMute(). The implementation decides whether it also
    /// suppresses questions. Several mutes may be active at a time.
    virtual void beginMute() = 0;
    /// Ends one beginMute(). Must not throw, because the destructor of MuteScope calls it.
    virtual void endMute() = 0;

    /// Calls beginMute(), and returns a scope whose destructor calls endMute(). The service must
    /// outlive the scope.
    [[nodiscard]] MuteScope mute();
};

} // namespace Vyn::OvraBase
