// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <functional>

class QObject;

/// \file
/// Base classes and a deleter for objects that several owners or threads share, and a function that
/// protects a QObject from other owners.
namespace Vyn {

/// A base class with a virtual destructor, for objects that shared pointers own.
struct OVRABASE_EXPORT SharedObjectBase {
    SharedObjectBase();
    SharedObjectBase(const SharedObjectBase &other);
    SharedObjectBase &operator=(const SharedObjectBase &other);
    virtual ~SharedObjectBase();
};

/// Contains noncopyable only, so that argument-dependent lookup for a derived class outside of Vyn
/// does not search Vyn.
namespace noncopyable_ {

/// A base class that makes derived classes non-copyable.
class noncopyable {
public:
    noncopyable(const noncopyable &) = delete;
    noncopyable &operator=(const noncopyable &) = delete;

protected:
    noncopyable() = default;
    ~noncopyable() = default;
};

} // namespace noncopyable_

/// A deleter for shared pointers to QObjects. While there is an application object, it deletes the
/// object on the main thread, whichever thread releases the last pointer.
///
/// ```cpp
/// std::shared_ptr<QObject> shared(new QTimer, QObjectDeleteLater());
/// ```
///
/// An object that lives in the main thread is deleted by deleteLater(), an object of another thread
/// by a call that is queued in the main thread's event loop. The destructor of the application
/// object first deletes the objects that still wait, and all other objects of the main thread for
/// which deleteLater() was called. The GUI still exists then. This takes linear time in the number
/// of objects. While there is no application object, an object is deleted immediately on the
/// calling thread.
struct QObjectDeleteLater {
    /// Deletes \a object as described for the class. Ignores null.
    ///
    /// If \a object has a parent, logs an error on the logger Debug, because the parent may delete
    /// \a object first. \a object is deleted all the same. Can be called on any thread; while the
    /// application object is being destroyed, on the main thread only.
    OVRABASE_EXPORT void operator()(QObject *object) const;
};

namespace OvraBase {

/// Sets the function that forbidStealingOwnership() calls. An empty \a fn removes it. Not
/// thread-safe: call it at start-up, before other threads call forbidStealingOwnership().
OVRABASE_EXPORT void setForbidStealingOwnershipFuction(std::function<void(QObject *)> fn);

/// Calls the function that the application set by setForbidStealingOwnershipFuction(), with
/// \a object. That function makes sure that no other owner, for example a script engine, takes
/// \a object over. Does nothing if no function is set.
OVRABASE_EXPORT void forbidStealingOwnership(QObject *object);

} // namespace OvraBase
} // namespace Vyn
