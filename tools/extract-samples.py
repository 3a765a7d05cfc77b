#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
"""Writes each C++ sample of the pages and the public headers as a source file of its own.

    tools/extract-samples.py FOLDER

A sample is a fenced block that begins with "```cpp". By default it has statements that run in main(),
with all public headers, using directives for the namespaces Vyn, Vyn::OvraBase and Vyn::Core::Log,
and an application object. HTML comments before the fence, which readers do not see, change that:

    <!-- before: CODE -->       CODE stands before main(), or at the beginning of a source file. It is
                                left out of a "file" that begins with #include and has no main()
    <!-- sample: body CODE -->  statements; the statements CODE run before them
    <!-- sample: main CODE -->  like "body", but the sample makes the application object
    <!-- sample: file -->       a source file; the default if the block begins with #include or namespace
    <!-- sample: private -->    a source file that includes private headers: compiled and not run
    <!-- sample: private body CODE -->  the same for statements
    <!-- sample: same as PATH -->  not compiled; must be the whole text of a file of the project
    <!-- sample: part of PATH -->  not compiled; must be consecutive lines of such a file; the indentation
                                may differ
    <!-- sample: skip REASON -->   not compiled

A comment <!-- check: EXPRESSION --> after the fence is evaluated at the end of main(), and the sample
fails if the expression is false. It has no effect on a sample for which this script writes no main().
"""
import pathlib
import re
import subprocess
import sys
import textwrap

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADERS = "src/ovrabase/include"
COMMENT = re.compile(r"<!--\s*(before|sample|check):\s*(.*?)-->", re.S)
KINDS = ("body", "main", "file", "private body", "private", "same as", "part of", "skip")
PRELUDE = "#include \"prelude.h\"\nusing namespace Vyn;\nusing namespace Vyn::OvraBase;\n" \
    "using namespace Vyn::Core::Log;\n"


class Mistake(Exception):
    pass


def text_of(name):
    """Returns the Markdown text of a page or of the comments in a header, with the same line numbers."""
    text = (ROOT / name).read_text(encoding="utf-8")
    if not name.endswith(".h"):
        return text
    lines = [re.match(r"\s*/// ?(.*)|", line).group(1) or "" for line in text.split("\n")]
    for number in range(1, len(lines)):
        if lines[number].startswith("    ") and not lines[number - 1].strip() \
                and re.match(r"\s*///$", text.split("\n")[number - 1]):
            raise Mistake(f"{name}:{number + 1}: an indented sample is not checked: write it between ```cpp and ```")
    return "\n".join(lines)


def without_indentation(code):
    return "\n" + re.sub(r"^ +", "", code, flags=re.M)


def samples_of(name):
    """Yields (line, code, kind, argument of the kind, code before main(), checks) of each sample."""
    text = text_of(name)
    for fence in re.finditer(r"^( *)```cpp\n(.*?)^\1```$", text, re.M | re.S):
        line = text.count("\n", 0, fence.start(2)) + 1
        place = f"{name}:{line}"
        code = textwrap.dedent(fence.group(2))
        kind, argument, before = "body", "", ""
        if re.match(r"#include|namespace ", code):
            kind = "file"
        front = re.search(r"((?:<!--(?:(?!-->).)*-->\s*)*)\Z", text[:fence.start()], re.S).group(1)
        for comment in COMMENT.finditer(front):
            if comment.group(1) == "before":
                before += comment.group(2)
            elif comment.group(1) == "sample":
                kind = next((k for k in KINDS if comment.group(2).startswith(k)), None)
                if kind is None:
                    raise Mistake(f"{place}: not a kind of sample: {comment.group(2)}")
                argument = comment.group(2)[len(kind):].strip(" \n:")
        behind = re.match(r"\n?((?:\s*<!--\s*check:(?:(?!-->).)*-->)*)", text[fence.end():], re.S)
        checks = [comment.group(2).strip() for comment in COMMENT.finditer(behind.group(1))]
        yield line, code, kind, argument, before, checks


def source(name, line, code, kind, setup, before, checks):
    """Returns the source file of a sample. Compiler messages on the sample name the line of the page, except for
    includes and using directives at the beginning of statements. Those on code of comments do not."""
    tests = "".join(
        f'    if (!({check})) {{\n        std::fprintf(stderr, "not true: %s\\n", R"({check})");\n'
        "        return 1;\n    }\n" for check in checks)
    application = "    QGuiApplication sampleApplication(argc, argv);\n" \
        "    QStandardPaths::setTestModeEnabled(true);\n"
    opening = "int main([[maybe_unused]] int argc, [[maybe_unused]] char **argv)\n{\n"
    located = f'#line {line} "{name}"\n{code}'
    if kind == "private" or (kind == "file" and "int main(" in code):
        return f"{before}\n{located}"
    if kind == "file" and code.startswith("#include"):
        return f'{located}{PRELUDE}{opening}{application}{tests}}}\n'
    if kind == "file":
        return f"{PRELUDE}{before}\n{located}{opening}{application}{tests}}}\n"

    # Includes and using directives at the beginning of the statements belong before main().
    head = re.match(r"(?:(?:#include|using namespace) .*\n|\n)*", code).group(0)
    body = f'#line {line + head.count(chr(10))} "{name}"\n{code[len(head):]}'
    if kind == "private body":
        return f'{head}{before}\nvoid sample();\nvoid sample()\n{{\n{setup}\n{body}}}\n'
    if kind == "main":
        application = ""
    return f"{head}{PRELUDE}{before}\n{opening}{application}{setup}\n{body}{tests}}}\n"


def main(folder):
    pages = subprocess.run(["git", "ls-files", "*.md", f"{HEADERS}/*.h"], cwd=ROOT, check=True,
                           capture_output=True, text=True).stdout.split()
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True)
    includes = [f"#include <{name[len(HEADERS) + 1:]}>" for name in pages if name.endswith(".h")]
    includes += [f"#include <{name}>" for name in (
        "QColor", "QDir", "QFile", "QFileInfo", "QGuiApplication", "QPoint", "QStandardPaths",
        "QThread", "QTimer", "QTranslator", "spdlog/sinks/rotating_file_sink.h", "spdlog/spdlog.h",
        "cstdio", "future", "map", "memory")]
    (folder / "prelude.h").write_text("#pragma once\n" + "\n".join(includes) + "\n")

    written = skipped = 0
    for name in pages:
        for line, code, kind, argument, before, checks in samples_of(name):
            if kind == "same as":
                if (ROOT / argument).read_text(encoding="utf-8") != code:
                    raise Mistake(f"{name}:{line}: differs from {argument}")
            elif kind == "part of":
                if without_indentation(code) not in without_indentation((ROOT / argument).read_text(encoding="utf-8")):
                    raise Mistake(f"{name}:{line}: these lines are not in {argument}")
            elif kind == "skip":
                if not argument:
                    raise Mistake(f"{name}:{line}: skipped without a reason")
                skipped += 1
            else:
                file = re.sub(r"\W", "_", name) + f"_{line}.{'private.' if kind.startswith('private') else ''}cpp"
                (folder / file).write_text(
                    source(name, line, code, kind, argument, before, checks), encoding="utf-8")
                written += 1
    if not written:
        raise Mistake("no page contains a sample")
    print(f"{written} samples, {skipped} skipped")


try:
    main(*sys.argv[1:])
except Mistake as mistake:
    sys.exit(str(mistake))
