#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Installs the packages of tools/package.sh in a clean Debian system in a folder (as root, with chroot).
# First libovrabase6 alone: a program that is built on this machine must run there. Then the others: a
# project must build and run there. An archive of the clean system is kept in
# ${OVRABASE_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ovrabase}.
. "$(dirname "$0")/lib.sh"
packages=build/packages
tools=g++,cmake,ninja-build

if ! chroot / true 2>/dev/null; then
    echo "  the packages are NOT tested in a clean system: chroot is not allowed here"
    exit
fi
install_packages mmdebstrap

# dependencies PACKAGE: prints the names of the packages of Debian that our package PACKAGE depends on.
dependencies() {
    dpkg-deb -f "$packages/$1"_*.deb Depends | tr ',' '\n' | sed 's/(.*//; /ovrabase/d' | tr -d ' ' | sort -u
}

# make_system TAR PACKAGE...: makes a system with the essential packages, apt and the build tools.
# PACKAGE... are downloaded, but not installed.
make_system() {
    local tar=$1
    shift
    [ -n "$(apt-get indextargets 'Created-By: Packages' 'Origin: Debian')" ] || apt-get -q update
    apt-get indextargets 'Created-By: Packages' 'Origin: Debian' --format \
        "deb [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] \$(REPO_URI) \$(RELEASE) \$(COMPONENT)" \
        | sort -u >"$work/sources.list"
    apt-config dump Acquire | grep -E '::(Check-|.*Proxy)' >"$work/apt.conf" || true
    mmdebstrap --variant=apt --include="$tools" --skip=cleanup/apt --dpkgopt=force-unsafe-io \
        --aptopt="$work/apt.conf" --aptopt='APT::Install-Recommends "false"' \
        --customize-hook="APT_CONFIG=\$MMDEBSTRAP_APT_CONFIG apt-get install -y --download-only $*" \
        bookworm "${tar%.tar}.part.tar" "$work/sources.list"
    mv "${tar%.tar}.part.tar" "$tar" # so a file with this name is complete
}

# Builds the consumer on this machine with the unpacked packages.
build_program() {
    for package in "$packages"/lib*.deb; do
        dpkg-deb -x "$package" "$work/unpacked"
    done
    cmake -S tests/consumer -B "$work/program" -G Ninja -DCMAKE_PREFIX_PATH="$work/unpacked/usr"
    cmake --build "$work/program"
}

try_library_alone() {
    chroot "$root" sh -c 'apt-get install -y /packages/libovrabase6_*.deb'
    cp "$work/program/consumer" "$root/program"
    chroot "$root" /program
}

try_development() {
    chroot "$root" sh -c 'apt-get install -y /packages/*.deb libspdlog-dev' # the consumer logs to spdlog
    chroot "$root" sh -ec 'cmake -S /consumer -B /build -G Ninja && cmake --build /build && /build/consumer'
    chroot "$root" sh -ec 'zcat /usr/share/doc/libovrabase6/changelog.gz && cat /usr/share/doc/*ovrabase*/copyright'
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
root=$work/root

mapfile -t needed < <(dependencies libovrabase6 && dependencies libovrabase-dev && echo libspdlog-dev)
cache=${OVRABASE_CACHE_DIR:-${XDG_CACHE_HOME:-$HOME/.cache}/ovrabase}
system=$cache/debian-$(sha256sum <<<"$tools ${needed[*]}" | cut -c 1-12).tar
mkdir -p "$cache" "$root"
[ -e "$system" ] || quietly "make a clean Debian system" make_system "$system" "${needed[@]}"

tar xf "$system" -C "$root"
cp -r tests/consumer "$root/consumer"
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages"

quietly "build a program with the packages" build_program
quietly "run the program with libovrabase6 only" try_library_alone
quietly "build and run in the clean system" try_development
