// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include <ovrabase/services/MessagingService.h>

#include <utility>

namespace Vyn::OvraBase {

MessagingService::MuteScope::MuteScope(MessagingService *service)
    : mService(service)
{
}

MessagingService::MuteScope::MuteScope(MuteScope &&other) noexcept
    : mService(std::exchange(other.mService, nullptr))
{
}

MessagingService::MuteScope &MessagingService::MuteScope::operator=(MuteScope &&other) noexcept
{
    mService = std::exchange(other.mService, nullptr);
    return *this;
}

MessagingService::MuteScope::~MuteScope()
{
    if (mService) {
        mService->endMute();
    }
}

MessagingService::~MessagingService() = default;

MessagingService::MuteScope MessagingService::mute()
{
    beginMute();
    return MuteScope(this);
}

} // namespace Vyn::OvraBase
