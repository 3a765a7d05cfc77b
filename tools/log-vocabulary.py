#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
"""Writes the tables of docs/log-vocabulary.md from the log sites of the source.

    tools/log-vocabulary.py           writes the tables. The last column, what to do, is written by hand
                                      and kept. It is empty for a new position, which is an error. A new
                                      text at a known position gets the column of another text there
    tools/log-vocabulary.py --check   fails if the tables differ from the source, or if the last column
                                      of a row is empty

A LOG_CONTEXT or LogPosition in a .cpp file that this script cannot read is an error. Other log sites
are not found.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ROOT / "src/ovrabase/src"
PAGE = ROOT / "docs/log-vocabulary.md"
BEGIN, END = "<!-- begin of the table -->\n", "<!-- end of the table -->"
# Sources that write only what their callers pass: records of the other sources, and forwarded records. The
# page describes forwarded records in a section that is written by hand.
MACHINERY = {"logging/LogSite.cpp", "logging/Logger.cpp", "logging/QtMessageCapture.cpp"}
STRING = r'"((?:[^"\\]|\\.)*)"'
# Placeholders for which the names in the source say too little.
PLACEHOLDERS = {"known first": "id of the first", "known second description": "description of the first",
                "read back": "path in that encoding", "type name of object": "type of the object",
                "type name of parent": "type of the parent"}
LEVELS = {"Info": "info", "Warning": "warning", "Error": "error"}


class Mistake(Exception):
    pass


def without_comments(code):
    return re.sub(r'("(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)*\')|//[^\n]*',
                  lambda match: match.group(1) or "", code)


def split(expression, separators):
    """Splits at the separators that are outside of brackets and literals."""
    parts, depth, begin, at = [], 0, 0, 0
    while at < len(expression):
        literal = re.compile(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)+\'').match(expression, at)
        if literal:
            at = literal.end()
            continue
        char = expression[at]
        if char in "([{":
            depth += 1
        elif char in ")]}":
            depth -= 1
        for separator in separators:
            if depth == 0 and expression.startswith(separator, at) and \
                    expression[at:at + 2] != "::" and expression[at - 1:at + 1] != "::":
                parts.append(expression[begin:at].strip())
                begin = at + len(separator)
                at = begin - 1
                break
        at += 1
    return parts + [expression[begin:].strip()]


def arguments_at(code, opening):
    """Returns the arguments of the call whose bracket opens at that index, and the index of its end."""
    depth, at = 0, opening
    while True:
        literal = re.compile(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)+\'').match(code, at)
        if literal:
            at = literal.end()
            continue
        depth += (code[at] in "([{") - (code[at] in ")]}")
        if depth == 0:
            return split(code[opening + 1:at], [","]), at
        at += 1


def name_of(expression):
    """Returns the placeholder of an expression: its names as words, without conversions, or its literals."""
    quoted = expression.startswith("logStr(")
    while True:
        inner = re.fullmatch(r"(?:logStr|view|textOf|QString::\w+|errorMessage|os::\w+)\((.*)\)",
                             expression, re.S)
        if inner:
            expression = inner.group(1)
            continue
        shorter = re.sub(r"(\.toStdString|\.c_str|\.message)\(\)$|^QFileInfo\(.*\)\.(?=fileName)", "",
                         expression)
        if shorter == expression:
            break
        expression = shorter
    alternatives = re.findall(STRING, expression)
    if alternatives:
        return " or ".join(alternatives)
    member = re.fullmatch(r"\w+(?:\.|->)(\w+)", expression)
    if member and expression != "known->first":
        expression = member.group(1)
    words = []
    for word in re.findall(r"[A-Za-z][a-z]*", re.sub(r"(?<!Of)\([^()]*\)|\bm(?=[A-Z])", "", expression)):
        if word.lower() not in words + ["string", "msg"]:
            words.append(word.lower())
    name = " ".join(words)
    text = "{" + PLACEHOLDERS.get(name, name) + "}"
    return f'"{text}"' if quoted else text


def texts_of(expression, code):
    """Returns the possible texts of a message expression."""
    choice = split(expression, ["?"])
    if len(choice) == 2:
        branches = split(choice[1], [":"])
        if len(branches) == 2:
            return texts_of(branches[0], code) + texts_of(branches[1], code)
    parts = split(expression, ["<<", "+", "%"])
    if len(parts) > 1:
        texts = [""]
        for part in parts:
            texts = [text + more for text in texts for more in texts_of(part, code)]
        return texts
    expression = parts[0]
    literals = rf"((?:{STRING}\s*)+)"
    called = re.match(rf"(?:QStringLiteral|QLatin1String|QString)\(\s*{literals}\)|u?{literals}"
                      r"(?:_s|_L1)?", expression)
    if called:
        text = "".join(re.findall(STRING, called.group(0))).replace("\\\\", "\\").replace('\\"', '"')
        rest, number = expression[called.end():].strip(), 0
        while rest.startswith(".arg("):
            arguments, end = arguments_at(rest, 4)
            for argument in arguments:
                number += 1
                text = text.replace(f"%{number}", name_of(argument))
            rest = rest[end + 1:].strip()
        return [text]
    if re.fullmatch(r"'[^\\]'", expression):
        return [expression[1]]
    if re.fullmatch(r"\w+", expression):
        made = re.findall(rf"\b{expression}\s*=\s*([^;]*?QStringLiteral[^;]*);", code)
        if made:
            return texts_of(made[-1], code)
    return [name_of(expression)]


def records_of(path):
    """Yields (position, logger, level, text, exception) for the log sites of a source."""
    relative = path.relative_to(SOURCES).as_posix()
    code = without_comments(path.read_text(encoding="utf-8"))

    def mistake(what, at=0):
        return Mistake(f"src/ovrabase/src/{relative}:{code.count(chr(10), 0, at) + 1}: {what}")

    positions = {name: "".join(re.findall(STRING, text)) for name, text in re.findall(
        rf"LogPosition\s+(\w+)\s*\{{\s*((?:{STRING}\s*)+)\}}\s*;".replace(STRING, r'"[^"]*"'), code)}
    used, contexts = set(), 0

    def caller_of(at):
        function = re.findall(r"^[\w:<>*&\[\] ]*?([\w:~]+)\([^;]*?\)[^;]*?\n?\{", code[:at], re.M)[-1]
        return f"{re.search(r'^namespace ([A-Z][^ ]*) ', code, re.M).group(1)}::{function}()"

    def positions_of(expression, at):
        """Returns the position that an expression names, or both positions of a conditional one."""
        nonlocal contexts
        found = []
        for name in re.split(r"[?:]", expression)[-2:] if "?" in expression else [expression]:
            if name.strip() == "LOG_CONTEXT":
                contexts += 1
                found.append(f"{path.name} {caller_of(at)}")
            elif name.strip() in positions:
                used.add(name.strip())
                found.append(positions[name.strip()])
            else:
                raise mistake(f"not LOG_CONTEXT, nor a LogPosition of this file: {name.strip()}", at)
        return found

    # Functions of this file that log for their callers: name -> (logger, level, text, parameters).
    helpers = {}
    for helper in re.finditer(
            r"(\w+)\(\s*(?:const LogPosition &|std::string_view )position\b", code):
        body = code[helper.start():code.index("\n}", helper.start())]
        call = re.search(r"logAt\(", body)
        if not call:
            raise mistake(f"{helper.group(1)}() takes a position but does not log", helper.start())
        where, service, level, message = arguments_at(body, call.end() - 1)[0]
        parameters = arguments_at(body, body.index("("))[0]
        names = [re.search(r"(\w+)$", parameter).group(1) for parameter in parameters]
        helpers[helper.group(1)] = (service, level, message, names)

    for call in re.finditer(r"\b(fail<([\w:]+)>|logAt|" + "|".join(list(helpers) or ["logAt"]) + r")\(", code):
        if re.search(r"(void|bool|\]\])\s+$", code[:call.start()]):
            continue # the definition of a helper
        arguments, _ = arguments_at(code, call.end() - 1)
        name, exception = call.group(1), (call.group(2) or "").split("::")[-1]
        if name.startswith("fail"):
            service, level, message = "Debug", "Error", arguments[1]
        elif name == "logAt":
            if any(arguments[0] in helper[3] for helper in helpers.values()):
                continue # inside a helper
            service, level, message = arguments[1:4]
        else:
            service, level, message, names = helpers[name]
            given = dict(zip(names, arguments))
            message = re.sub(r"\b(\w+)\b(?![^\"]*\"(?:[^\"]*\"[^\"]*\")*[^\"]*$)",
                             lambda word: given.get(word.group(1), word.group(1)), message)
        where = positions_of(arguments[0], call.start())
        texts = texts_of(message, code[:call.start()])
        if len(where) not in (1, len(texts)):
            raise mistake("not one text for each position", call.start())
        for number, text in enumerate(texts):
            yield (where[number % len(where)], service.split("::")[-1],
                   LEVELS[level.split("::")[-1]], text, exception)

    # Messages that are streamed to a logger.
    streams = re.compile(r"(\w+)(\(\w+\))?\s*\.\s*(info|warning|error)\(\s*"
                         r"(LOG_CONTEXT|std::string\((\w+)\.text\))\s*\)")
    for stream in streams.finditer(code):
        service = (stream.group(2) or "(Debug)")[1:-1]
        where = positions_of(stream.group(5) or "LOG_CONTEXT", stream.start())[0]
        written = re.match(r"\s*<<([^;]*);", code[stream.end():]) or \
            re.search(rf"^\s+{caller_of(stream.start())[:-2].split('::')[-1]}\([^;]*?\)\s*<<([^;]*);", code, re.M)
        if not written:
            raise mistake("cannot read what is written to this message", stream.start())
        yield where, service, stream.group(3), texts_of(written.group(1), code)[0], ""

    # Records that are filled in without a logger.
    records = re.compile(r"\.level = (\d);\s*\w+\.context = QString::fromStdString\(LOG_CONTEXT\);"
                         r"\s*\w+\.message =\s*([^;]*);")
    for record in records.finditer(code):
        yield (positions_of("LOG_CONTEXT", record.start())[0], "", list(LEVELS.values())[int(record.group(1))],
               texts_of(record.group(2), code)[0], "")

    lost = set(positions) - used
    if lost:
        raise mistake(f"cannot read how these positions are used: {', '.join(sorted(lost))}")
    if code.count("LOG_CONTEXT") != contexts:
        raise mistake("cannot read how LOG_CONTEXT is used")


def cell(text):
    if "`" not in text:
        return f"`{text}`" if text else ""
    # In <code>, Doxygen would begin a code span at a backtick, and make a link of a name with "::".
    return "<code>" + text.replace("`", "&#96;").replace("::", "&#58;&#58;") + "</code>"


def table(advice):
    """Returns the tables with the advice in the last column, and the records without advice."""
    rows, silent = [], []
    for path in sorted(SOURCES.rglob("*.cpp")):
        if path.relative_to(SOURCES).as_posix() not in MACHINERY:
            for position, logger, level, text, exception in records_of(path):
                todo = advice.get((cell(position), text), advice.get((cell(position), ""), ""))
                if not todo:
                    silent.append(f"{position}: {text}")
                rows.append((path.relative_to(SOURCES).parts[0], position,
                             f"| {cell(position)} | {level}{f' on `{logger}`' if logger else ''} | {cell(text)} | "
                             f"{cell(exception)} | {todo} |\n"))
    written = ""
    for folder in sorted({row[0] for row in rows}):
        written += f"\n## {folder.capitalize()}\n\n| position | record | text | thrown next | what to do |\n|---|---|---|---|---|\n"
        written += "".join(row[2] for row in sorted(set(rows)) if row[0] == folder)
    return written + "\n", silent


def main(*options):
    page = PAGE.read_text(encoding="utf-8")
    head, rest = page.split(BEGIN)
    old, tail = rest.split(END)
    advice = {}
    for row in re.finditer(r"^\| (.+?) \|[^|]*\| `(.*?)` \|[^|]*\| (.*?) \|$", old, re.M):
        # The second entry keeps the advice if the text of the position has changed.
        for text in (row.group(2), ""):
            advice[row.group(1), text] = row.group(3)
    new, silent = table(advice)
    if options != ("--check",):
        PAGE.write_text(head + BEGIN + new + END + tail, encoding="utf-8")
    elif new != old:
        raise Mistake("docs/log-vocabulary.md differs from the source: run tools/log-vocabulary.py")
    if silent:
        raise Mistake("docs/log-vocabulary.md does not say what to do about\n  " + "\n  ".join(silent))


try:
    main(*sys.argv[1:])
except Mistake as mistake:
    sys.exit(str(mistake))
