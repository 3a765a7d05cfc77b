# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Functions and settings for .ci/run and most scripts of this folder, which source this file.
# shellcheck shell=bash

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
jobs=$(nproc)
[ "$jobs" -le 2 ] || jobs=$((jobs - 1))

# ccache shares its results between checkouts.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=1
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-minimal}
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-/tmp}

# Debian packages that the build of the library needs.
build_packages=(g++ cmake ninja-build ccache pkg-config
    qt6-base-dev libspdlog-dev libfreeimage-dev libudev-dev)
test_packages=(libgtest-dev libgmock-dev umockdev e2fsprogs mount)

# quietly TITLE COMMAND...: runs the command. Prints one line if it succeeds and all of its output if it
# fails. Output to descriptor 3 is always printed.
{ true >&3; } 2>/dev/null || exec 3>&1
quietly() {
    local title=$1 begin=$SECONDS log
    shift
    log=$(mktemp)
    if "$@" 3>&1 >"$log" 2>&1 </dev/null; then
        printf '  %-44s %4d s\n' "$title" $((SECONDS - begin))
        rm -f "$log"
    else
        local status=$?
        cat "$log"
        rm -f "$log"
        printf '  %-44s FAILED (%d)\n' "$title" "$status" >&2
        return "$status"
    fi
}

# fail SENTENCE: prints the sentence and ends the script with an error.
fail() {
    echo "$*" >&2
    exit 1
}

# install_packages PACKAGE...: installs the missing ones with apt. The names are those of Debian 12.
install_packages() {
    local missing=() package
    for package; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    local sudo=
    [ "$(id -u)" -eq 0 ] || sudo=sudo
    quietly "apt-get update" $sudo apt-get -q update
    quietly "apt-get install ${missing[0]} …" \
        $sudo env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends "${missing[@]}"
}

# configure_and_build PRESET [CMAKE OPTION...]
configure_and_build() {
    local preset=$1
    shift
    quietly "configure $preset" cmake --preset "$preset" "$@"
    quietly "build $preset" cmake --build --preset "$preset" -j "$jobs"
}
