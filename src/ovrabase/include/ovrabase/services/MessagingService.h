// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>
#include <ovrabase/services/Service.h>

#include <QString>

namespace Vyn::OvraBase {

/// Shows messages to the user. The application derives its service from this class and registers it
/// in the ServiceLocator; the library itself shows nothing.
class OVRABASE_EXPORT MessagingService : public Service {
public:
    OVRABASE_SERVICE_TYPE_ID(Vyn::OvraBase::MessagingService)

    /// Keeps a service muted while it lives. It may be moved, not copied.
    class OVRABASE_EXPORT MuteScope {
    public:
        /// Makes an empty scope, to move a mute into.
        MuteScope() = default;
        /// Takes the mute of \a other, which is empty then.
        MuteScope(MuteScope &&other) noexcept;
        /// Takes the mute of \a other. Move into empty scopes only: a mute that this one held
        /// before is never ended.
        MuteScope &operator=(MuteScope &&other) noexcept;
        MuteScope(const MuteScope &) = delete;
        MuteScope &operator=(const MuteScope &) = delete;
        /// Ends the mute, if this scope holds one.
        ~MuteScope();

    private:
        friend class MessagingService;
        explicit MuteScope(MessagingService *service);

        MessagingService *mService = nullptr;
    };

    ~MessagingService() override;

    /// Shows an information. The application decides how; the library never calls this and the
    /// next three.
    virtual void showInformation(const QString &title, const QString &text) = 0;
    /// Shows a warning.
    virtual void showWarning(const QString &title, const QString &text) = 0;
    /// Shows an error.
    virtual void showError(const QString &title, const QString &text) = 0;
    /// Returns whether the user agreed.
    virtual bool askQuestion(const QString &title, const QString &text) = 0;

    /// Begins to suppress messages. Several mutes may be alive at once.
    virtual void beginMute() = 0;
    /// Undoes one beginMute(). Called from a destructor: it must not throw.
    virtual void endMute() = 0;

    /// Mutes this service for as long as the returned scope lives. The service must outlive it.
    [[nodiscard]] MuteScope mute();
};

} // namespace Vyn::OvraBase
