// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#include "ovrabase/platform/memory.h"

#include "logging/LogSite_p.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>

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
    static std::function<void(QObject *)> hook;
    return hook;
}

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
    if (!application || QCoreApplication::closingDown()) {
        delete object;
    } else if (object->thread() == application->thread()) {
        // No event loop may run any more: then the object dies with the application object.
        QObject::connect(application, &QObject::destroyed, object, [object] { delete object; });
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
