// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Tells ThreadSanitizer about Qt's recursive mutex, which locks inside Qt, where nothing is
/// instrumented. (QMutex does so itself, in its header.) The functions of the program replace those
/// of Qt, because the loader finds them first.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

bool QRecursiveMutex::tryLock(int timeout) QT_MUTEX_LOCK_NOEXCEPT
{
    static const auto lock = reinterpret_cast<bool (*)(QRecursiveMutex *, int)>(
        dlsym(RTLD_NEXT, "_ZN15QRecursiveMutex7tryLockEi"));
    const unsigned kind =
        __tsan_mutex_write_reentrant | (timeout < 0 ? 0U : unsigned{__tsan_mutex_try_lock});
    __tsan_mutex_pre_lock(this, kind);
    const bool locked = lock(this, timeout);
    __tsan_mutex_post_lock(this, locked ? kind : kind | __tsan_mutex_try_lock_failed, 0);
    return locked;
}

void QRecursiveMutex::unlock() noexcept
{
    static const auto unlockMutex = reinterpret_cast<void (*)(QRecursiveMutex *)>(
        dlsym(RTLD_NEXT, "_ZN15QRecursiveMutex6unlockEv"));
    __tsan_mutex_pre_unlock(this, __tsan_mutex_write_reentrant);
    unlockMutex(this);
    __tsan_mutex_post_unlock(this, __tsan_mutex_write_reentrant);
}
