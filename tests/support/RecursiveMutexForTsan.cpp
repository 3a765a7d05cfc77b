// SPDX-FileCopyrightText: 2026 The ovrabase authors
// SPDX-License-Identifier: MIT

/// \file
/// Tells ThreadSanitizer about Qt's recursive mutex, which locks inside Qt, where nothing is
/// instrumented. (QMutex does so itself, in its header.) The functions of the program replace those
/// of Qt, because the loader finds them first.

#include <QMutex>

#include <dlfcn.h>
#include <sanitizer/tsan_interface.h>

namespace {

template<class Function>
Function qtFunction(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" bool tryLockRecursiveMutex(QRecursiveMutex *mutex, int timeout) noexcept
    __asm__("_ZN15QRecursiveMutex7tryLockEi");
extern "C" void unlockRecursiveMutex(QRecursiveMutex *mutex) noexcept
    __asm__("_ZN15QRecursiveMutex6unlockEv");

bool tryLockRecursiveMutex(QRecursiveMutex *mutex, int timeout) noexcept
{
    static const auto lock =
        qtFunction<bool (*)(QRecursiveMutex *, int)>("_ZN15QRecursiveMutex7tryLockEi");
    const unsigned kind =
        __tsan_mutex_write_reentrant | (timeout < 0 ? 0U : unsigned{__tsan_mutex_try_lock});
    __tsan_mutex_pre_lock(mutex, kind);
    const bool locked = lock(mutex, timeout);
    __tsan_mutex_post_lock(mutex, locked ? kind : kind | __tsan_mutex_try_lock_failed, 0);
    return locked;
}

void unlockRecursiveMutex(QRecursiveMutex *mutex) noexcept
{
    static const auto unlock =
        qtFunction<void (*)(QRecursiveMutex *)>("_ZN15QRecursiveMutex6unlockEv");
    __tsan_mutex_pre_unlock(mutex, __tsan_mutex_write_reentrant);
    unlock(mutex);
    __tsan_mutex_post_unlock(mutex, __tsan_mutex_write_reentrant);
}
