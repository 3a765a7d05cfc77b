# Builds for 64-bit Windows with MinGW-w64 on Debian. The compiler with the posix thread model is used,
# because the compiler with the win32 thread model has no std::mutex and no std::thread.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(OVRABASE_WINDOWS_PREFIX "" CACHE PATH "Where Qt, fmt and spdlog for Windows are installed")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES OVRABASE_WINDOWS_PREFIX)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${OVRABASE_WINDOWS_PREFIX})
list(APPEND CMAKE_PREFIX_PATH ${OVRABASE_WINDOWS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt's build programs (moc, rcc) run on this machine, so they come from the Qt installed for this machine.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR "/usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake")

set(CMAKE_CROSSCOMPILING_EMULATOR /usr/bin/wine)
