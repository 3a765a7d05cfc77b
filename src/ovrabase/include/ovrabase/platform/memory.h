// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ovrabase/export.h>

#include <functional>

class QObject;

/// \file
/// Base classes and a deleter for objects that several owners or threads share.
namespace Vyn {

/// A base class with a virtual destructor, for objects that shared pointers own.
struct OVRABASE_EXPORT SharedObjectBase {
    SharedObjectBase();
    SharedObjectBase(const SharedObjectBase &other);
    SharedObjectBase &operator=(const SharedObjectBase &other);
    virtual ~SharedObjectBase();
};

/// Contains noncopyable only. Argument-dependent lookup for a class derived from it then does not
/// find the functions of Vyn.
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

/// A deleter for shared pointers to QObjects. It deletes the object on the main thread, whichever
/// thread releases the last pointer.
///
/// ```cpp
/// std::shared_ptr<QObject> shared(new QTimer, QObjectDeleteLater());
/// ```
///
/// An object that lives in the main thread is deleted by deleteLater(), an object of another thread
/// by a call that is queued in the main thread's event loop. When the application object is
/// destroyed, the objects that still wait are deleted first, while the GUI still exists, together
/// with all other objects for which deleteLater() was called. This takes linear time. Afterwards,
/// and as long as there is no application object, an object is deleted at once on the calling
/// thread.
struct QObjectDeleteLater {
    /// Deletes \a object as described for the class. Ignores null. Throws nothing.
    ///
    /// Logs an error on Debug if \a object has a parent, because the parent would delete it again.
    /// \a object is deleted all the same. Can be called on any thread; while the application object
    /// is being destroyed, on the main thread only.
    OVRABASE_EXPORT void operator()(QObject *object) const;
};

namespace OvraBase {

/// Sets the function that forbidStealingOwnership() calls. An empty \a fn removes it. Not
/// thread-safe: call it once, at start-up.
OVRABASE_EXPORT void setForbidStealingOwnershipFuction(std::function<void(QObject *)> fn);

/// Calls the application's function with \a object. That function makes sure that no other owner,
/// for example a script engine, takes \a object over. Does nothing if no function is set.
OVRABASE_EXPORT void forbidStealingOwnership(QObject *object);

} // namespace OvraBase
} // namespace Vyn
