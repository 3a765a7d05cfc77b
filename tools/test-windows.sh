#!/bin/bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds the library, its tests and its example for Windows with MinGW-w64 and runs them under Wine,
# without a display. Installs on Debian 12 what is missing (as root); the first call ever builds Qt
# for Windows, see tools/windows/build-dependencies.sh.
#
#   tools/test-windows.sh             everything
#   tools/test-windows.sh text files  the tests of these folders only
set -euo pipefail
cd "$(dirname "$0")/.."

packages=(build-essential cmake dpkg-dev g++-mingw-w64-x86-64-posix googletest ninja-build qt6-base-dev
    qt6-base-dev-tools wine wine64)
missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get -qq update
    apt-get -qq -y install --no-install-recommends "${missing[@]}" </dev/null >/dev/null
fi

prefix=$(tools/windows/build-dependencies.sh)
build=build/windows
log=$build/build.log
mkdir -p "$build/bin/platforms" "$build/freeimage"

# Runs a command that has nothing to say unless it fails.
quietly() {
    "$@" </dev/null >"$log" 2>&1 || { tail -n 60 "$log"; echo "Failed: $*"; exit 1; }
}

# No package brings FreeImage for MinGW.
standIn=tests/windows/freeimage_stand_in
quietly x86_64-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror -O2 -c "$standIn/FreeImage.cpp" \
    -o "$build/freeimage/FreeImage.o"
quietly x86_64-w64-mingw32-ar crs "$build/freeimage/libfreeimage.a" "$build/freeimage/FreeImage.o"

quietly cmake --preset windows -DOVRABASE_WINDOWS_PREFIX="$prefix" \
    -DFreeImage_INCLUDE_DIR="$PWD/$standIn" -DFreeImage_LIBRARY="$PWD/$build/freeimage/libfreeimage.a"
quietly cmake --build --preset windows --parallel "${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}" \
    ${1:+--target "${@/%/_tests}"}

# Windows finds libraries and Qt's platform plugin beside the program.
cp -u "$prefix"/bin/{Qt6Core,Qt6Gui,libfmt,libspdlog}.dll "$build/bin"
cp -u "$prefix/plugins/platforms/qminimal.dll" "$build/bin/platforms"
for dll in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
    cp -u "$(x86_64-w64-mingw32-g++-posix -print-file-name=$dll.dll)" "$build/bin"
done

# One Windows installation for all checkouts, so one user at a time. The server of Wine outlives its
# programs: it must neither hold the lock nor the end of this script.
export WINEDEBUG=-all WINEPREFIX=${prefix%/prefix}/wine
# Wine hides the variables of this machine's Qt from its programs, but for those that begin like this.
export WINEQT_QPA_PLATFORM=minimal
exec 9>"$WINEPREFIX.lock"
flock 9
trap 'wineserver -k 9>&- || true' EXIT
if [ ! -e "$WINEPREFIX/ready" ]; then
    quietly timeout 300 wine wineboot -i 9>&-
    quietly timeout 60 wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f 9>&-
    touch "$WINEPREFIX/ready"
fi

IFS='|'
ctest --preset windows ${1:+--tests-regex "^($*)\$"} </dev/null 9>&-
