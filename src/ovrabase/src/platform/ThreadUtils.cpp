// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"

#include <ovrabase/platform/ThreadUtils.h>

#include <QCoreApplication>
#include <QThread>

namespace Vyn::OvraBase::ThreadUtils {
namespace {

constexpr LogPosition kNoApplication{
    "ThreadUtils.cpp:33 Vyn::OvraBase::ThreadUtils::isMainThread()"};

} // namespace

bool isMainThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    if (!application) {
        logAt(
            kNoApplication, Debug, Logger::Error, QStringLiteral("No QCoreApplication instance."));
        return false;
    }
    return application->thread() == QThread::currentThread();
}

} // namespace Vyn::OvraBase::ThreadUtils
