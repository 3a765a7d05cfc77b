// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/ModulePin_p.h"

#include <ovrabase/logging/LogManager.h>

#include <QStringBuilder>

#include <atomic>
#include <cstdio>

namespace Vyn::Core::Log {

/// Sends Qt's messages to the log manager.
class QtMessageCapture {
public:
    /// The Qt message handler.
    static void handle(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        const Route route = routeOf(type);
        if ((sMask >> route.bit & 1) == 0) {
            return;
        }
        const QString text = QString::fromUtf8(context.file) % u'(' %
                             QString::number(context.line) % u"): " % message;
        const bool delivered = LogManager::instance()->take(
            {route.level, QStringLiteral("Default"), text, nullptr}, true);
        if (type == QtFatalMsg && !delivered) {
            std::fprintf(stderr, "%s\n", qUtf8Printable(text)); // Qt ends the process next
        }
    }

    static constinit std::atomic<int> sMask; ///< see setQtMessageMask()

private:
    /// How a type of messages is sent.
    struct Route {
        int level; ///< of the record
        int bit;   ///< of the mask
    };

    static Route routeOf(QtMsgType type)
    {
        switch (type) {
        case QtWarningMsg:
            return {1, 1};
        case QtCriticalMsg:
            return {2, 2};
        case QtFatalMsg:
            return {2, 3};
        case QtInfoMsg:
            return {0, 4};
        default:
            return {0, 0};
        }
    }
};

constinit std::atomic<int> QtMessageCapture::sMask = 0x1e;

QtMessageHandler installQtMessageHandler()
{
    OvraBase::os::pinThisModule();
    return qInstallMessageHandler(&QtMessageCapture::handle);
}

void setQtMessageMask(int mask)
{
    QtMessageCapture::sMask = mask;
}

} // namespace Vyn::Core::Log
