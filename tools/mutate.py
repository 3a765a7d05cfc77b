#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
"""Puts small faults into the library, one at a time, and runs the tests of their folder, and for
src/ovrabase/src/files also the programs of tests/faults.

A fault that no test notices is a survivor: a test is missing, the code is not needed, or the fault does
not change the behaviour. Works on a copy of the committed sources in build/mutate, so an interruption
leaves no fault in the sources. A fault in a removal could remove anything, so the tests can write to
folders in memory only.
"""

import argparse
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import time

BUILD = pathlib.Path("build/mutate").absolute()
TREE = BUILD / "tree"
SOURCES = TREE / "src/ovrabase/src"

# The texts that are replaced, and their replacements. The spaces around an operator leave out templates,
# includes and streams.
SWAPS = {
    "comparison": [(" == ", " != "), (" != ", " == "), (" < ", " <= "), (" <= ", " < "),
                   (" > ", " >= "), (" >= ", " > ")],
    "condition": [(" && ", " || "), (" || ", " && "), ("if (!", "if ("), ("return true;", "return false;"),
                  ("return false;", "return true;")],
    "arithmetic": [(" + 1", ""), (" - 1", ""), ("++", "--"), (" += ", " -= ")],
}
CONSTANT = re.compile(r"(?<![\w.\"'])(\d+)(?![\w.\"'])")
CALL = re.compile(r"^\s+[\w:.>-]+\([^;{}]*\);$")
NO_CODE = re.compile(r"^\s*(//|#|using |namespace |template|static_assert|constexpr LogPosition|\"|$)")


def faults_of(path):
    """Returns (path, line number, kind, new line) for every possible fault in the file."""
    found = []
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if NO_CODE.match(line):
            continue
        code = line.split("//")[0]
        for kind, swaps in SWAPS.items():
            for old, new in swaps:
                for match in re.finditer(re.escape(old), code):
                    changed = code[:match.start()] + new + code[match.end():]
                    found.append((path, number, kind, changed))
        for match in CONSTANT.finditer(code):
            changed = code[:match.start()] + str(int(match[1]) + 1) + code[match.end():]
            found.append((path, number, "constant", changed))
        if CALL.match(code) and "return" not in code:
            found.append((path, number, "removed call", ";"))
    return found


# Runs a command in a process namespace of its own: all processes in it end with it, also those that Ninja
# starts in process groups of their own.
CONTAINED = ["unshare", "--pid", "--fork", "--kill-child", "--mount-proc"]
# Runs the command after the first argument, which names a folder. For the command, /mnt and /dev/shm are
# new folders in memory, its changes in /tmp and in the named folder are kept in memory, and all other files
# are read-only. When the command ends, its changes are lost.
ENCLOSED = ["unshare", "--mount", "sh", "-ec", """
    cut -d' ' -f2 /proc/self/mounts | sed 's/\\\\040/ /g' | sort -u | while read -r point; do
        mount -o remount,bind,ro "$point" 2>/dev/null || true
    done
    mount -t tmpfs -o size=2g tmpfs /mnt
    mount -t tmpfs tmpfs /dev/shm
    for folder in /tmp "$1"; do
        changes=$(mktemp -d -p /mnt)
        mkdir "$changes/new" "$changes/work"
        chmod --reference="$folder" "$changes/new"
        mount -t overlay overlay -o "lowerdir=$folder,upperdir=$changes/new,workdir=$changes/work" "$folder"
    done
    if touch / 2>/dev/null; then exit 1; fi
    shift
    export HOME=/mnt TMPDIR=/mnt XDG_RUNTIME_DIR=/mnt
    exec "$@"
""", "enclosed"]
MOST_MEMORY = 8 << 30


def run(arguments, seconds):
    """Returns whether the command succeeds in time. When it ends, or the time is over, all processes that it
    started are ended."""
    with subprocess.Popen([*CONTAINED, *arguments], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          stdin=subprocess.DEVNULL, start_new_session=True, preexec_fn=lambda:
                          resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))) as process:
        try:
            return process.wait(seconds) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return False


def tests(folder):
    """Returns a regular expression for the first word of the names of a folder's tests and test programs."""
    return "(files|faults)" if folder == "files" else folder


def build(folder):
    return run(["cmake", "--build", BUILD / "build", "-j2", "--target", *targets(folder)], 900)


def targets(folder):
    """Returns the targets of a folder's test programs."""
    listing = subprocess.run(["ninja", "-C", BUILD / "build", "-t", "targets", "all"],
                             capture_output=True, text=True, check=True).stdout
    return sorted({match[1] for match in re.finditer(rf"^({tests(folder)}_\w+): phony", listing, re.M)})


def test(folder, seconds=300):
    return run([*ENCLOSED, BUILD, "ctest", "--test-dir", BUILD / "build", "--no-tests=error",
                "--stop-on-failure", "-R", rf"^{tests(folder)}(_|$)"], seconds)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("count", type=int, help="the number of faults")
    parser.add_argument("--seed", type=int, default=1, help="the seed of the random choice of faults")
    parser.add_argument("--only", default="", help="change only files whose path contains this text")
    options = parser.parse_args()

    TREE.mkdir(parents=True, exist_ok=True)
    archive = subprocess.run(["git", "archive", "HEAD"], capture_output=True, check=True).stdout
    subprocess.run(["tar", "-x", "-C", TREE], input=archive, check=True)
    for path in SOURCES.rglob("*.cpp"):  # tar sets the date of the commit, so Ninja would keep an earlier fault
        path.touch()
    if not run([*ENCLOSED, BUILD, "true"], 10):
        sys.exit("run this as root: a fault could remove any file, and only root can make files read-only")
    # Test programs need no new link when only the library has changed.
    if not run(["cmake", "-S", TREE, "-B", BUILD / "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                "-DCMAKE_CXX_FLAGS_DEBUG=", "-DCMAKE_LINK_DEPENDS_NO_SHARED=ON",
                "-DOVRABASE_BUILD_EXAMPLES=OFF"], 300):
        sys.exit("the build cannot be configured")

    system = "/windows/" if os.name != "nt" else "/posix/"
    sources = [path for path in sorted(SOURCES.rglob("*.cpp"))
               if system not in path.as_posix() and "/stlab/" not in path.as_posix()
               and options.only in path.as_posix()]
    faults = [fault for path in sources for fault in faults_of(path)]
    random.Random(options.seed).shuffle(faults)
    limits = {}  # of the tests of a folder, in seconds
    for folder in sorted({path.relative_to(SOURCES).parts[0] for path in sources}):
        built = build(folder)
        begin = time.monotonic()
        if not (built and test(folder)):
            sys.exit(f"without a fault, the tests of {folder} cannot be built or fail")
        limits[folder] = 30 + 5 * (time.monotonic() - begin)

    caught, survivors = 0, []
    for path, number, kind, changed in faults:
        if caught + len(survivors) == options.count:
            break
        folder = path.relative_to(SOURCES).parts[0]
        original = path.read_text(encoding="utf-8")
        lines = original.splitlines()
        before, lines[number - 1] = lines[number - 1], changed
        path.write_text("\n".join(lines) + "\n", encoding="utf-8")
        if build(folder):  # a fault that does not compile does not count
            if test(folder, limits[folder]):
                place = f"{path.relative_to(TREE)}:{number}: {kind}"
                survivors.append(place)
                print(f"{place}\n  - {before.strip()}\n  + {changed.strip()}", flush=True)
            else:
                caught += 1
        path.write_text(original, encoding="utf-8")
    print(f"{caught} of {caught + len(survivors)} faults were caught")
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
