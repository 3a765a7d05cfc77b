// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <functional>

class QObject;

/// \file
/// Rules for objects that several owners or threads share.
namespace Vyn {

/// The common base of objects that shared pointers hold.
struct OVRABASE_EXPORT SharedObjectBase {
    SharedObjectBase();
    SharedObjectBase(const SharedObjectBase &other);
    SharedObjectBase &operator=(const SharedObjectBase &other);
    virtual ~SharedObjectBase();
};

/// A namespace of its own keeps the functions of Vyn out of the look-up of derived classes.
namespace noncopyable_ {

/// Forbids copying of the classes that derive from it.
class noncopyable {
public:
    noncopyable(const noncopyable &) = delete;
    noncopyable &operator=(const noncopyable &) = delete;

protected:
    noncopyable() = default;
    ~noncopyable() = default;
};

} // namespace noncopyable_

/// The deleter of shared pointers to QObjects: the object dies on the main thread, whichever
/// thread gave up the last pointer.
///
/// ```cpp
/// std::shared_ptr<QObject> shared(new QTimer, QObjectDeleteLater());
/// ```
///
/// An object of the main thread dies through deleteLater(), any other when the main thread's event
/// loop next runs. The end of the application object first deletes what still waits, in linear
/// time and while the GUI is there, with all else that deleteLater() was called for. From then on,
/// and without an application object, an object dies at once on the calling thread. A parent that
/// deletes the object too is a mistake: an object that has one is logged as an error and still
/// deleted. Null is ignored. Callable on any thread, as long as the application object is not being
/// destroyed at the same time. Throws nothing.
struct QObjectDeleteLater {
    /// Deletes \a object as the class says.
    OVRABASE_EXPORT void operator()(QObject *object) const;
};

namespace OvraBase {

/// Replaces the hook that forbidStealingOwnership() calls; an empty \a fn clears it.
/// Not thread-safe: install it once at start-up.
OVRABASE_EXPORT void setForbidStealingOwnershipFuction(std::function<void(QObject *)> fn);

/// Asks the application to keep other owners (a script engine, say) from taking \a object, by
/// calling its hook. Does nothing without a hook.
OVRABASE_EXPORT void forbidStealingOwnership(QObject *object);

} // namespace OvraBase
} // namespace Vyn
