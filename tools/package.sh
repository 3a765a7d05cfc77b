#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Makes the Debian packages libovrabase6, libovrabase-dev and ovrabase-doc in build/packages, and checks
# them with lintian.
. "$(dirname "$0")/lib.sh"

install_packages "${build_packages[@]}" dpkg-dev lintian
quietly "configure packages" cmake -S . -B build/package -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_INSTALL_PREFIX=/usr -DOVRABASE_BUILD_TESTS=OFF -DOVRABASE_BUILD_EXAMPLES=OFF \
    -DOVRABASE_WARNINGS_AS_ERRORS=ON # as in the preset "release", so that ccache has the objects
quietly "build packages" cmake --build build/package -j "$jobs"
rm -f build/packages/*.deb
quietly "cpack" cpack --config build/package/CPackConfig.cmake -B build/packages
quietly "lintian" lintian --fail-on error build/packages/*.deb
