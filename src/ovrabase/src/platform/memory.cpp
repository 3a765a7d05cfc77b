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
    // Never destroyed: services of the ServiceLocator may use it in their destructors, at the end
    // of the process.
    static auto &hook = *new std::function<void(QObject *)>;
    return hook;
}

/// True if an object can wait, which means that its deletion is queued on the application's thread.
/// That is so from startWaiting() to the end of deleteWaitingObjects().
constinit std::atomic<bool> sCanWait = false;
/// True if an object began to wait after the last time this was set to false.
constinit std::atomic<bool> sHasWaiting = false;

/// Deletes the waiting objects, and those that begin to wait while others are deleted.
///
/// Each of the two Qt calls handles many objects. With one call for each object, Qt would search
/// the whole event queue each time.
void deleteWaitingObjects()
{
    do {
        sHasWaiting = false;
        // The functors that are queued for the application own the objects of other threads.
        // Removing the events destroys the functors. Calls that other code queued for the
        // application are removed as well. Its destructor would remove them otherwise.
        QCoreApplication::removePostedEvents(QCoreApplication::instance(), QEvent::MetaCall);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (sHasWaiting);
    sCanWait = false;
}

/// Runs when an application object is made. Qt runs post routines before it destroys the GUI.
void startWaiting()
{
    sCanWait = true;
    qAddPostRoutine(deleteWaitingObjects);
}
Q_COREAPP_STARTUP_FUNCTION(startWaiting)

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
    if (!application || !sCanWait) {
        delete object;
        return;
    }
    sHasWaiting = true;
    if (object->thread() == application->thread()) {
        object->deleteLater();
    } else {
        // The functor owns the object, which is also deleted if the functor is never called.
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
    if (const auto hook = ownershipHook()) { // a copy, because the hook may replace itself
        hook(object);
    }
}

} // namespace OvraBase
} // namespace Vyn
