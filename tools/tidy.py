#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
"""Runs clang-tidy over the sources that standard input names: tidy.py BUILD CACHE JOBS

For each source without a complaint the cache has a file, whose name is a hash of everything that
clang-tidy sees: the source, each header that the compiler read for it, the compiler's arguments, the
settings and the version of clang-tidy. A source whose headers the build does not know is checked. A
source without a compile command in BUILD is left out.
"""

import concurrent.futures
import functools
import hashlib
import json
import pathlib
import re
import subprocess
import sys
import time

TIDY = "clang-tidy-14"
LONGEST_UNUSED = 30 * 24 * 3600


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


@functools.cache
def hash_of(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def dependencies(build):
    """Returns, for each object file with a valid record in ninja, the files that it was compiled from."""
    known = {}
    for block in output_of("ninja", "-C", build, "-t", "deps").split("\n\n"):
        head, *files = block.splitlines() or [""]
        if head.endswith("(VALID)"):
            known[head.split(":")[0]] = [pathlib.Path(build, file.strip()) for file in files]
    return known


def main():
    build, cache, jobs = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]), int(sys.argv[3])
    cache.mkdir(parents=True, exist_ok=True)
    for stamp in cache.iterdir():
        if time.time() - stamp.stat().st_mtime > LONGEST_UNUSED:
            stamp.unlink()
    root = str(pathlib.Path.cwd())
    settings = output_of(TIDY, "--version") + pathlib.Path(".clang-tidy").read_text(encoding="utf-8")
    files_of = dependencies(build)
    commands = {command["file"]: command["command"]
                for command in json.loads((build / "compile_commands.json").read_text(encoding="utf-8"))}

    def stamp_of(source):
        """Returns a path in the cache, or nothing if the headers are not known."""
        command = commands[source]
        files = files_of.get(re.search(r" -o (\S+)", command)[1])
        if not files:
            return None
        # Without the path of the checkout, so that the results serve every checkout.
        seen = [settings, command.replace(root, ""), *(hash_of(file) for file in files)]
        return cache / hashlib.sha256("\n".join(seen).encode()).hexdigest()

    def check(source):
        """Returns whether the source is free of complaints, and whether that was known."""
        stamp = stamp_of(source)
        is_known = bool(stamp) and stamp.exists()
        if not is_known:
            run = subprocess.run([TIDY, "-p", build, "--quiet", source], capture_output=True, text=True,
                                 check=False)
            if run.returncode != 0:
                print(run.stdout, run.stderr, file=sys.stderr)
                return False, False
        if stamp:
            stamp.touch()
        return True, is_known

    names = [f"{root}/{line.strip()}" for line in sys.stdin]
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        results = list(pool.map(check, [name for name in names if name in commands]))
    known = sum(is_known for _, is_known in results)
    print(f"  clang-tidy: {len(results)} sources, {known} of them known to be clean")
    return 0 if all(is_clean for is_clean, _ in results) else 1


if __name__ == "__main__":
    sys.exit(main())
