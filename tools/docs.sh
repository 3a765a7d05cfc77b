#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
#
# Builds the site of all pages and public headers in build/doxygen/html. Fails on every warning, for
# example about a member without a comment.
#   tools/docs.sh         builds the site
#   tools/docs.sh --draw  also draws the pictures again, after a change of docs/images/*.dot
. "$(dirname "$0")/lib.sh"

install_packages doxygen graphviz python3

# A new drawing cannot be compared with the picture: another version of Graphviz writes other bytes. So
# each picture contains the hash of the .dot file that it was drawn from.
for text in docs/images/*.dot; do
    picture=${text%.dot}.svg
    hash=$(sha256sum <"$text" | cut -c 1-16)
    if [ "${1:-}" = --draw ]; then
        dot -Tsvg "$text" | sed "s|^<svg |<!-- drawn from $(basename "$text"), sha256 $hash -->\n&|" >"$picture"
    elif ! grep -qF "sha256 $hash" "$picture"; then
        echo "$picture is not drawn from $text: run tools/docs.sh --draw" >&2
        exit 1
    fi
done

tools/log-vocabulary.py --check
mkdir -p build
doxygen docs/Doxyfile >/dev/null
