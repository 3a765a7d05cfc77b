// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "logging/LogSite_p.h"

#include <ovrabase/platform/memory.h>

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QObject>

#include <atomic>
#include <memory>
#include <typeinfo>
#include <utility>

namespace Vyn {
namespace {

constexpr OvraBase::LogPosition kParentedObject{
    "memory.cpp:30 Vyn::QObjectDeleteLater::operator ()()"};

QString typeNameOf(const QObject &object)
{
    return QString::fromLocal8Bit(typeid(object).name());
}

std::function<void(QObject *)> &ownershipHook()
{
    static auto &hook = *new std::function<void(QObject *)>; // services use it until the very end
    return hook;
}

/// Whether objects may wait for the main thread's event loop.
constinit std::atomic<bool> sMayWait = false;
/// Whether an object began to wait since this was last cleared.
constinit std::atomic<bool> sAnyWaits = false;

/// Deletes what still waits, and what that gives up in turn. Deleting the objects one by one would
/// search the whole event queue for each.
void deleteWaitingObjects()
{
    do {
        sAnyWaits = false;
        // The calls queued for the application own the objects of other threads. None of them runs
        // any more: the application's destructor would drop them too.
        QCoreApplication::removePostedEvents(QCoreApplication::instance(), QEvent::MetaCall);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (sAnyWaits);
    sMayWait = false;
}

/// Runs at the start of each application object. Its post routine runs before the GUI goes.
void followApplication()
{
    sMayWait = true;
    qAddPostRoutine(deleteWaitingObjects);
}
Q_COREAPP_STARTUP_FUNCTION(followApplication)

} // namespace

SharedObjectBase::SharedObjectBase() = default;
SharedObjectBase::SharedObjectBase(const SharedObjectBase &) = default;
SharedObjectBase &SharedObjectBase::operator=(const SharedObjectBase &) = default;
SharedObjectBase::~SharedObjectBase() = default;

void QObjectDeleteLater::operator()(QObject *object) const
{
    if (!object) {
        return;
    }
    if (const QObject *parent = object->parent()) {
        logAt(kParentedObject, OvraBase::Debug, Logger::Error,
            QStringLiteral(
                "Risk of double delete on a shared QObject of type %1 that has a parent of type %2")
                .arg(typeNameOf(*object), typeNameOf(*parent)));
    }

    QCoreApplication *application = QCoreApplication::instance();
    if (!application || !sMayWait) {
        delete object;
        return;
    }
    sAnyWaits = true;
    if (object->thread() == application->thread()) {
        object->deleteLater();
    } else {
        // The functor owns the object: it also dies if the functor is dropped without a call.
        QMetaObject::invokeMethod(
            application, [owner = std::shared_ptr<QObject>(object)]() mutable { owner.reset(); },
            Qt::QueuedConnection);
    }
}

namespace OvraBase {

void setForbidStealingOwnershipFuction(std::function<void(QObject *)> fn)
{
    ownershipHook() = std::move(fn);
}

void forbidStealingOwnership(QObject *object)
{
    if (const auto hook = ownershipHook()) { // a copy, as it may clear the one that is set
        hook(object);
    }
}

} // namespace OvraBase
} // namespace Vyn
