#!/bin/bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds the library, its tests, examples, benchmarks and a program that replays the fuzzers' inputs
# for Windows with MinGW-w64. Runs them under Wine, without a display, except the benchmarks that do not
# compare results of their contenders. Installs what is missing on Debian 12 (as root or with sudo). The
# first call builds Qt for Windows, see tools/windows/build-dependencies.sh.
#
#   tools/test-windows.sh             does all of this, and makes a ZIP of the library in build/packages
#   tools/test-windows.sh text files  builds and runs only text_tests and files_tests
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" build-essential dpkg-dev g++-mingw-w64-x86-64-posix googletest \
    libclang-rt-14-dev qt6-base-dev-tools wine wine64

prefix=$(tools/windows/build-dependencies.sh)
build=build/windows
mkdir -p "$build/bin/platforms"

# There is no package of FreeImage for MinGW, so the tests use a replacement.
standIn=tests/windows/freeimage_stand_in
x86_64-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -Werror -O2 -shared "$standIn/FreeImage.cpp" \
    -o "$build/bin/libfreeimage.dll"

fuzzerHeaders=$(dirname "$(dirname "$(dpkg -L libclang-rt-14-dev | grep '/FuzzedDataProvider.h$')")")
quietly "configure windows" cmake --preset windows -DOVRABASE_WINDOWS_PREFIX="$prefix" \
    -DOVRABASE_BUILD_FUZZERS=ON -DOVRABASE_FUZZED_DATA_PROVIDER="$fuzzerHeaders" \
    -DOVRABASE_BUILD_BENCHMARKS=ON -Dbenchmark_DIR="${prefix%/prefix}/benchmark/lib/cmake/benchmark" \
    -DFreeImage_INCLUDE_DIR="$PWD/$standIn" -DFreeImage_LIBRARY="$PWD/$build/bin/libfreeimage.dll"
quietly "build windows" cmake --build --preset windows -j "$jobs" ${1:+--target "${@/%/_tests}"}
quietly "exports" tools/check-exports.sh "$build/bin/libovrabase.dll"

# Windows looks for libraries in the folder of the program, and Qt for its platform plug-in in the folder
# "platforms" in it.
cp -u "$prefix"/bin/{Qt6Core,Qt6Gui,libfmt,libspdlog}.dll "$build/bin"
cp -u "$prefix/plugins/platforms/qminimal.dll" "$build/bin/platforms"
for dll in libstdc++-6 libgcc_s_seh-1 libwinpthread-1; do
    cp -u "$(x86_64-w64-mingw32-g++-posix -print-file-name=$dll.dll)" "$build/bin"
done

# A new Windows installation for each run, without what a killed run left in the registry.
export WINEDEBUG=-all WINEPREFIX=$PWD/$build/wine
unset DISPLAY WAYLAND_DISPLAY
export WINEDLLOVERRIDES='mscoree,mshtml=' # otherwise the first start asks to install Mono and Gecko
# Wine hides the variables of Qt on this machine from its programs. It passes a variable on, without the
# first four letters, if its name begins with "WINEQT_".
export WINEQT_QPA_PLATFORM=minimal
if [ -d "$WINEPREFIX" ]; then
    wineserver -k || true # ends a server that a killed run left
    rm -rf "$WINEPREFIX"
fi
mkdir "$WINEPREFIX"
trap 'wineserver -k || true; rm -rf "$WINEPREFIX"' EXIT
# If a test started the server, the server would keep the output of that test open.
wineserver -p
quietly "start Wine" timeout 300 wine wineboot
quietly "no display" timeout 60 wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f

names=$(IFS='|'; echo "$*")
ctest --preset windows ${1:+--tests-regex "^($names)\$"} </dev/null
# What Wine does not let the tests try.
grep '^NOT TESTED' "$build/Testing/Temporary/LastTest.log" || true
[ $# -eq 0 ] || exit 0

# A benchmark whose contenders differ prints an error, but exits with status 0.
compare_contenders() {
    local source output
    for source in $(grep -l 'the contenders differ' benchmarks/*.cpp); do
        output=$(cmake -E chdir "$build/bin" timeout 300 \
            wine "$(basename -s .cpp "$source").exe" --benchmark_min_time=0.001)
        echo "$output"
        grep -q ' ns ' <<<"$output" || fail "$source measures nothing"
        [[ $output != *'ERROR OCCURRED'* ]] || fail "$source has contenders that differ"
    done
}
quietly "contenders of the benchmarks agree" compare_contenders

version=$(sed -n 's/^ *VERSION //p' CMakeLists.txt)
name=ovrabase-$version-win64
zip=$PWD/build/packages/$name.zip

# Packs the library, built without the development folder that the tests use, and the DLLs that it needs,
# but not the replacement of FreeImage.
make_zip() {
    cmake "$build" -DOVRABASE_DEV_RESOURCE_DIR=
    cmake --build "$build" -j "$jobs" --target ovrabase
    rm -rf "$build/zip" "$zip"
    mkdir -p "$build/zip/$name/bin" build/packages
    cp "$build"/bin/{Qt6Core,Qt6Gui,libfmt,libspdlog,libstdc++-6,libgcc_s_seh-1,libwinpthread-1}.dll \
        "$build/zip/$name/bin"
    cmake --install "$build" --prefix "$build/zip/$name" --strip
    cmake -E chdir "$build/zip" cmake -E tar cf "$zip" --format=zip "$name"
}
quietly "make the ZIP" make_zip

# Unpacks the ZIP, builds the consumer with it and runs it in the folder of the DLLs.
try_zip() {
    local unpacked=$PWD/$build/unpacked
    rm -rf "$unpacked"
    mkdir -p "$unpacked"
    cmake -E chdir "$unpacked" cmake -E tar xf "$zip"
    cmake -S tests/consumer -B "$unpacked/build" -G Ninja \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw-w64-x86_64.cmake" -DOVRABASE_WINDOWS_PREFIX="$prefix" \
        -Dovrabase_DIR="$unpacked/$name/lib/cmake/ovrabase"
    cmake --build "$unpacked/build"
    cp "$unpacked/build/consumer.exe" "$unpacked/$name/bin"
    cmake -E chdir "$unpacked/$name/bin" timeout 120 wine consumer.exe
}
quietly "a program runs from the ZIP" try_zip
