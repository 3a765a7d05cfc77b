#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The ovrabase authors
# SPDX-License-Identifier: MIT
"""Writes docs/performance.md, its plots and the table of figures in README.md.

  tools/performance.py                  from the figures in docs/performance.json
  tools/performance.py RESULTS BUILD    first puts new figures into that file: from the files of Google
                                        Benchmark in the folder RESULTS, of programs of the build BUILD
"""

import glob
import html
import json
import math
import os
import pathlib
import re
import statistics
import subprocess
import sys
from dataclasses import dataclass, field

ROOT = pathlib.Path(__file__).resolve().parent.parent
FIGURES = ROOT / "docs/performance.json"


@dataclass
class Pair:
    """A benchmark of the library beside that of a contender."""

    what: str
    own: str
    contender: str
    other: str
    in_readme: str = ""  # how the README calls it


@dataclass
class Claim:
    """A section of the page: a table of pairs and a plot. Without lines, the plot shows the ratios of the pairs."""

    name: str
    title: str
    text: str
    pairs: list
    lines: dict = field(default_factory=dict)  # title: name of a benchmark, with {0} for x
    x: list = field(default_factory=list)
    x_title: str = ""
    y_title: str = "time"
    per_second: bool = False
    ratio_title: str = "times as fast as the contender"


def each(values, pair):
    return [pair(value) for value in values]


LENGTHS = [2, 4, 8, 16, 32, 48, 64, 100, 256, 1024]
TEXTBOOK = "the textbook algorithm"
CP = "`cp -r` and one `sync`"
CLAIMS = [
    Claim("distance", "Edit distance over length",
          "`damerauLevenshteinDistance()` and a `DamerauLevenshteinMatcher` that is made once for many texts, with texts "
          "of equal length. The textbook algorithm computes each cell of a table; the library computes up to 64 cells "
          "at once.",
          each([8, 16, 32, 64, 256, 1024], lambda n: Pair(
              f"function, {n} ASCII characters", f"pairs/latin_direct/{n}/{n}", TEXTBOOK, f"pairs/latin_plain/{n}/{n}",
              "edit distance of two texts of 32 characters" if n == 32 else ""))
          + each([16, 64, 256], lambda n: Pair(
              f"function, {n} ideographs", f"pairs/ideographs_direct/{n}/{n}", TEXTBOOK, f"pairs/ideographs_plain/{n}/{n}"))
          + each([16, 32, 256], lambda n: Pair(
              f"function, {n} ideographs", f"pairs/ideographs_direct/{n}/{n}", "rapidfuzz-cpp",
              f"pairs/ideographs_peer/{n}/{n}"))
          + each([16, 32, 256], lambda n: Pair(
              f"matcher, {n} ideographs", f"prepared/ideographs_matcher/{n}/{n}", "rapidfuzz-cpp, cached",
              f"prepared/ideographs_peerCached/{n}/{n}")),
          {"textbook algorithm": "pairs/latin_plain/{0}/{0}", "function": "pairs/latin_direct/{0}/{0}",
           "matcher": "prepared/latin_matcher/{0}/{0}", "rapidfuzz-cpp": "pairs/latin_peer/{0}/{0}",
           "rapidfuzz-cpp, cached": "prepared/latin_peerCached/{0}/{0}"},
          LENGTHS, "length of both texts in UTF-16 units", "time per distance"),
    Claim("part", "Distance to a part of a text",
          "`damerauLevenshteinSubstringDistance()` computes the least distance between a pattern and any part of a text.",
          each([(16, 64), (8, 100), (32, 256), (64, 1024)], lambda n: Pair(
              f"{n[0]} ideographs in {n[1]}", f"pairs/ideographs_directPart/{n[0]}/{n[1]}", TEXTBOOK,
              f"pairs/ideographs_plainPart/{n[0]}/{n[1]}"))
          + each([(16, 64), (64, 1024)], lambda n: Pair(
              f"{n[0]} ASCII characters in {n[1]}", f"pairs/latin_directPart/{n[0]}/{n[1]}", TEXTBOOK,
              f"pairs/latin_plainPart/{n[0]}/{n[1]}"))),
    Claim("search", "Suggestions from a list of names",
          "Typed names are compared with 240 names of assets. The rows \"any part\" use `substringDistance()`. "
          "What is named \"at most 3\" asks only for distances of at most 3, and compares with 5,040 names. "
          "All times and ratios are per comparison of two names.",
          [Pair("matcher", "search/matcher", TEXTBOOK, "search/plain", "search of a typed name in many names, with one `DamerauLevenshteinMatcher`"),
           Pair("matcher, any part", "search/matcherPart", TEXTBOOK, "search/plainPart"),
           Pair("matcher, at most 3", "search/matcherLimited", "the matcher without a limit", "search/matcher"),
           Pair("matcher", "search/matcher", "rapidfuzz-cpp, cached", "search/peerCached"),
           Pair("matcher, at most 3", "search/matcherLimited", "rapidfuzz-cpp, cached, at most 3", "search/peerLimited")]),
    Claim("escape", "Escaped texts",
          "`asStringLiteral()` and `escapeJSON()` beside a look-up for each character. Each text has at least the number of "
          "bytes in its row, in UTF-8.",
          [Pair(f"{function}, {text}, {size:,} bytes", f"{form}/library/text:{kind}/size:{size}", "one look-up per character",
                f"{form}/plain/text:{kind}/size:{size}")
           for form, function in (("literal", "`asStringLiteral()`"), ("json", "`escapeJSON()`"))
           for kind, text in enumerate(("a path", "lines", "escapes only")) for size in (100, 10000)]),
    Claim("long", "Long texts",
          "Here \"×\" is the time for about 2 MB of the input that is slowest for a function, divided by the time for about "
          "1 MB. It is about 2 if the time grows in proportion to the length. It can be more if the memory that the function "
          "uses fits into the processor's caches for 1 MB, but not for 2 MB. \"time\" is the time for 1 MB.",
          [Pair(title, f"{name}/1", "2 MB beside 1 MB", f"{name}/2") for title, name in (
              ("`parseInput()`, dashes", "parseDashes"), ("`parseInput()`, many options", "parseManyOptions"),
              ("`substituteInString()`, open braces", "substitute/opened"), ("`substituteInString()`, keys", "substitute/keys"),
              ("`makeValidXMLTag()`", "ofQString/xml"), ("`getCopyName()`", "ofQString/copies"),
              ("`stringToMeter()`", "ofQString/points"))],
          ratio_title="time for 2 MB / time for 1 MB"),
    Claim("hash", "Content hashes",
          "`dataToHash()` and `MurmurHash3_x64_128()` beside the same algorithm as it was published. XXH3, another "
          "algorithm, is there for comparison.",
          each([16, 1 << 10, 1 << 16, 1 << 20], lambda n: Pair(
              f"`MurmurHash3_x64_128()`, {n:,} bytes", f"library/{n}", "the published algorithm", f"plain/{n}"))
          + [Pair("`dataToHash()`, 1,048,576 bytes", "dataToHash/1048576", "the published algorithm", "plain/1048576"),
             Pair("`dataToHash()`, 1,048,576 bytes", "dataToHash/1048576", "XXH3", "xxh3/1048576"),
             Pair("`fileDataToHash()`, 1 GiB", "libraryFile/real_time", "reading and hashing pieces", "plainFile/real_time")],
          {"published algorithm": "plain/{0}", "MurmurHash3_x64_128()": "library/{0}", "dataToHash()": "dataToHash/{0}", "XXH3": "xxh3/{0}"},
          [16, 1 << 10, 1 << 16, 1 << 20, 1 << 22], "bytes"),
    Claim("log", "Log messages",
          "A whole message, from the statement to a delegate that takes QStrings. spdlog calls the same delegate through "
          "a sink that makes the same QStrings. All records pass one lock, in both. In the last row, both drop the message.",
          each([1, 2, 4, 8], lambda n: Pair(
              f"bound logger, {n} thread{'s' if n > 1 else ''}", f"boundLogger/real_time/threads:{n}",
              "spdlog with such a sink", f"spdlogSink/real_time/threads:{n}"))
          + [Pair("logger that is not bound", "unboundLogger", "spdlog's null sink", "spdlogNullSink")],
          {"bound logger": "boundLogger/real_time/threads:{0}", "spdlog": "spdlogSink/real_time/threads:{0}"},
          [1, 2, 4, 8], "threads that log", "messages per second", True),
    Claim("service", "Services", "Look-ups of 50 services. The contender takes a lock and searches a table of 50 entries for each.",
          [Pair("`service<T>()`", "serviceLookup", "a lock and an `std::unordered_map`", "lockedMapFind")]),
    Claim("start", "Start of a process", "A program that links the library, beside one that links Qt Gui alone.",
          [Pair("start and end", "start/library/real_time", "a program that links Qt Gui alone", "start/guiAlone/real_time",
                "start and end of a program that links the library")]),
    Claim("copy", "Copies that survive a power cut",
          "Files of 0 to 8 KB in folders of 100. `QFile::copy()` itself waits for the disk after each file.",
          [Pair(f"{title}, {n:,} files", f"{name}/{n}/real_time", contender, f"{other}/{n}/real_time",
                f"`copyWithBackup()` of {n:,} small files" if n == in_readme else "")
           for title, name, contender, other, in_readme in (
               ("`copyWithBackup()`", "copyManyWithBackup", CP, "cpAndSync", 10000),
               ("`copyRecursively()`", "copyFolder", CP, "cpAndSync", 0),
               ("`copyWithBackup()`", "copyManyWithBackup", "`QFile::copy()`", "copyAndSyncEach", 1000))
           for n in (100, 1000, 10000)],
          {"cp -r and one sync": "cpAndSync/{0}/real_time", "copyWithBackup()": "copyManyWithBackup/{0}/real_time",
           "copyRecursively()": "copyFolder/{0}/real_time", "QFile::copy()": "copyAndSyncEach/{0}/real_time"},
          [100, 1000, 10000], "files"),
    Claim("removal", "Removal of folders", "`removeDirRecursiveIfItExists()` removes 100 folders with empty files.",
          each([1000, 10000, 100000], lambda n: Pair(
              f"{n:,} files", f"libraryRemoval/{n}/real_time", "`rm -rf`", f"systemRemoval/{n}/real_time",
              "removal of 100,000 files" if n == 100000 else "")),
          {"rm -rf": "systemRemoval/{0}/real_time", "library": "libraryRemoval/{0}/real_time"},
          [1000, 10000, 100000], "files"),
    Claim("names", "Unique names", "`getUniqueFileName()` in a folder where the first names are taken.",
          each([1, 10, 100, 1000, 10000], lambda n: Pair(
              f"{n:,} taken name{'s' if n > 1 else ''}", f"libraryName/{n}", "testing one name after the other", f"plainName/{n}",
              "`getUniqueFileName()`, with 10,000 names taken" if n == 10000 else "")),
          {"one name after the other": "plainName/{0}", "getUniqueFileName()": "libraryName/{0}"},
          [1, 10, 100, 1000, 10000], "taken names"),
    Claim("bring", "Resources on the disk", "`ensureFileIsOnDisk()` copies one file again and again, each time under a new name.",
          each([100, 1000], lambda n: Pair(
              f"{n:,} copies", f"libraryBringsToDisk/{n}/real_time", "testing one name after the other",
              f"plainBringsToDisk/{n}/real_time")),
          {"one name after the other": "plainBringsToDisk/{0}/real_time",
           "ensureFileIsOnDisk()": "libraryBringsToDisk/{0}/real_time"},
          [100, 1000], "copies"),
    Claim("intake", "The asset intake",
          "`asset_intake` takes in 10,000 new files, 1 GiB in all, and hashes each.",
          [Pair("10,000 files", "intake/real_time", "`cp -r`, a hash of each file and one `sync`", "copyAndHash/real_time",
                "copying 10,000 new files into an asset library, with their hashes")]),
]


# Figures

def output(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return ""


def machine(build, context):
    cache = (build / "CMakeCache.txt").read_text()
    compiler = re.search(r"^CMAKE_CXX_COMPILER:\w+=(.*)$", cache, re.M)[1]
    system = re.search(r'^PRETTY_NAME="(.*)"$', pathlib.Path("/etc/os-release").read_text(), re.M)[1]
    model = re.search(r"^model name\s*: (.*)$", pathlib.Path("/proc/cpuinfo").read_text(), re.M)
    memory = int(re.search(r"^MemTotal:\s*(\d+)", pathlib.Path("/proc/meminfo").read_text(), re.M)[1])
    return {
        "Date": context["date"][:10],
        "Processor": f"{context['num_cpus']} × {model[1] if model else os.uname().machine}",
        "Memory": f"{memory / 2**20:.0f} GiB",
        "System": f"{system}, Linux {os.uname().release.split('-')[0]}",
        "File system": output("stat", "-f", "-c", "%T", os.environ.get("TMPDIR", "/tmp")),
        "Compiler": output(compiler, "--version").split("\n")[0] + ", Release",
        "Qt": output("pkg-config", "--modversion", "Qt6Core") or output("qmake6", "-query", "QT_VERSION"),
        "Load when the last program began": f"{context['load_avg'][0]:.1f}" if context.get("load_avg") else "unknown",
    }


def collect(results, build):
    """Puts new figures into docs/performance.json; the figures of other benchmarks stay.

    A figure is the mean time of an iteration in one repetition, in nanoseconds, per item where a benchmark
    counts items. It is processor time, unless the name of the benchmark says "real_time".
    """
    figures = json.loads(FIGURES.read_text()) if FIGURES.exists() else {"times": {}}
    for path in sorted(glob.glob(f"{results}/*.json")):
        report = json.loads(pathlib.Path(path).read_text())
        figures["machine"] = machine(build, report["context"])
        times = {}
        for run in report["benchmarks"]:
            if run["run_type"] == "iteration" and not run.get("error_occurred"):
                unit = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[run["time_unit"]]
                time = run["real_time" if "real_time" in run["name"] else "cpu_time"] * unit
                if "items_per_second" in run:
                    time = 1e9 / run["items_per_second"]
                times.setdefault(run["name"], []).append((run["repetition_index"], float(f"{time:.4g}")))
        for name, repetitions in times.items():
            figures["times"][name] = [time for _, time in sorted(repetitions)]
    lines = [f"{json.dumps(name)}: {json.dumps(times)}" for name, times in sorted(figures["times"].items())]
    FIGURES.write_text('{"machine": %s,\n"times": {\n%s\n}}\n' % (
        json.dumps(figures["machine"], ensure_ascii=False, indent=0), ",\n".join(lines)))


@dataclass
class Ratio:
    """How many times as fast as its contender the library is: one figure for each repetition."""

    pair: Pair
    values: list
    time: float

    @property
    def median(self):
        return statistics.median(self.values)

    def cells(self):
        return f"**{short(self.median)}** | {short(min(self.values))} to {short(max(self.values))}"


def short(value):
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}" if value >= 10 else f"{value:.2f}"


def time_text(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def ratios_of(claim, times):
    """Returns the ratios of the pairs that were measured.

    The repetitions run in random order. The time of the contender's n-th repetition is divided by that of
    the library's n-th one, because the two probably ran close to each other.
    """
    return [Ratio(pair, [b / a for a, b in zip(times[pair.own], times[pair.other])],
                  statistics.median(times[pair.own]))
            for pair in claim.pairs if pair.own in times and pair.other in times]


# Plots

COLOURS = ["#d55e00", "#0072b2", "#009e73", "#cc79a7", "#e69f00"]  # told apart by the colour-blind
STYLE = """text { font: 13px sans-serif; fill: #24292f } .axis { stroke: #8c959f } .grid { stroke: #d0d7de }
@media (prefers-color-scheme: dark) { text { fill: #e6edf3 } .axis { stroke: #7d8590 } .grid { stroke: #30363d } }"""


def svg(width, height, parts):
    return (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}">\n'
            f"<style>{STYLE}</style>\n" + "\n".join(parts) + "\n</svg>\n")


def label(x, y, text, anchor="start", extra=""):
    return f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}"{extra}>{html.escape(text.replace("`", ""))}</text>'


def rule(x1, y1, x2, y2, kind="grid"):
    return f'<line class="{kind}" x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}"/>'


def scale(low, high, begin, end):
    """Returns the ticks of a logarithmic axis and a function from a value to its coordinate.

    The ticks are round values. They begin at or below low and end at or above high (or 0.1 % inside). The
    first one has the coordinate begin, the last one the coordinate end.
    """
    steps = (1, 2, 5) if high < 100 * low else (1,)
    marks = [step * 10.0 ** exponent for exponent in range(-3, 13) for step in steps]
    first = max(mark for mark in marks if mark <= low * 1.001)
    last = min(mark for mark in marks if mark >= high * 0.999 and mark > first)
    return ([mark for mark in marks if first <= mark <= last],
            lambda value: begin + math.log(value / first) / math.log(last / first) * (end - begin))


def plain_number(value):
    return f"{value:,.0f}" if value >= 1 else f"{value:g}"


def line_plot(claim, times):
    left, top, right, bottom, width = 90, 40, 520, 320, 720
    series = []
    for title, name in claim.lines.items():
        points = [(x, statistics.median(times[name.format(x)])) for x in claim.x if name.format(x) in times]
        if points:
            series.append((title, [(x, 1e9 / y if claim.per_second else y) for x, y in points]))
    values = [y for _, points in series for _, y in points]
    y_ticks, to_y = scale(min(values), max(values), bottom, top)

    def to_x(x):
        return left + math.log(x / claim.x[0]) / math.log(claim.x[-1] / claim.x[0]) * (right - left)

    parts = [label(left, 22, claim.y_title)]
    for tick in y_ticks:
        parts += [rule(left, to_y(tick), right, to_y(tick)), label(left - 8, to_y(tick) + 4, plain_number(tick) if claim.per_second else time_text(tick), "end")]
    last_end = 0
    for x in claim.x:
        at = to_x(x)
        parts.append(rule(at, bottom, at, bottom + 5, "axis"))
        if at - 4 * len(plain_number(x)) > last_end:
            parts.append(label(at, bottom + 20, plain_number(x), "middle"))
            last_end = at + 4 * len(plain_number(x))
    parts += [rule(left, bottom, right, bottom, "axis"), label((left + right) / 2, bottom + 42, claim.x_title, "middle")]
    for index, (title, points) in enumerate(series):
        colour = COLOURS[index]
        path = [(to_x(x), to_y(y)) for x, y in points]
        parts.append(f'<polyline fill="none" stroke="{colour}" stroke-width="2" points="'
                     + " ".join(f"{x:.1f},{y:.1f}" for x, y in path) + '"/>')
        parts += [f'<circle cx="{x:.1f}" cy="{y:.1f}" r="3" fill="{colour}"/>' for x, y in path]
        y = top + 20 + 22 * index
        parts += [f'<rect x="{right + 16}" y="{y - 10}" width="12" height="12" fill="{colour}"/>', label(right + 34, y, title)]
    return svg(width, bottom + 56, parts)


def ratio_plot(claim, ratios):
    left, right, width, top, step = 350, 640, 720, 34, 24
    bottom = top + step * len(ratios)
    values = [value for ratio in ratios for value in ratio.values]
    ticks, to_x = scale(min(values + [1]), max(values + [1]), left, right)
    parts = []
    for tick in ticks:
        parts += [rule(to_x(tick), top, to_x(tick), bottom, "axis" if tick == 1 else "grid"),
                  label(to_x(tick), bottom + 18, plain_number(tick), "middle")]
    contenders = list(dict.fromkeys(ratio.pair.contender for ratio in ratios))
    for index, ratio in enumerate(ratios):
        y, colour = top + step * (index + 0.5), COLOURS[1 + contenders.index(ratio.pair.contender) % 4]
        parts += [label(left - 12, y + 4, ratio.pair.what, "end"),
                  f'<line stroke="{colour}" stroke-width="2" x1="{to_x(min(ratio.values)):.1f}" y1="{y}" '
                  f'x2="{to_x(max(ratio.values)):.1f}" y2="{y}"/>',
                  f'<circle cx="{to_x(ratio.median):.1f}" cy="{y}" r="5" fill="{colour}"/>',
                  label(right + 14, y + 4, short(ratio.median))]
    x = left
    for contender in contenders:
        colour = COLOURS[1 + contenders.index(contender) % 4]
        parts += [f'<rect x="{x}" y="8" width="12" height="12" fill="{colour}"/>', label(x + 18, 19, contender)]
        x += 40 + 7 * len(contender)
    parts.append(label((left + right) / 2, bottom + 38, claim.ratio_title + "; the lines span all repetitions", "middle"))
    return svg(max(width, x), bottom + 50, parts)


# Pages

def section(claim, times):
    ratios = ratios_of(claim, times)
    if not ratios:
        return []
    picture = f"images/performance-{claim.name}.svg"
    (ROOT / "docs" / picture).write_text(line_plot(claim, times) if claim.lines else ratio_plot(claim, ratios))
    page = [f"## {claim.title}", "", claim.text, "", f"![{claim.title}]({picture})", "",
            "| library | contender | × | all repetitions | time |", "|---|---|---|---|---|"]
    page += [f"| {ratio.pair.what} | {ratio.pair.contender} | {ratio.cells()} | {time_text(ratio.time)} |" for ratio in ratios]
    return page + [""]


def write_page(figures):
    times = figures["times"]
    page = ["# Performance", "",
            "<!-- written by tools/performance.py from docs/performance.json; tools/bench.sh measures anew -->", "",
            "The column \"×\" says how many times as fast as a contender the library is: the time of the contender, divided "
            "by that of the library. Above 1 the library is faster. One run measures both, with their repetitions in random "
            "order. The figure is the median of the repetitions. \"All repetitions\" has the smallest and the largest ratio, "
            "\"time\" the median time of the library: of one distance for edit distances, of one message for log messages, "
            "and of one look-up for services. `tools/bench.sh` measures again and writes this page.",
            "", "| | |", "|---|---|"]
    page += [f"| {key} | {value} |" for key, value in figures["machine"].items()]
    absent = [title for title, name in (("rapidfuzz-cpp", "search/peerCached"), ("XXH3", "xxh3/16")) if name not in times]
    if absent:
        page += ["", f"Contenders without figures: {', '.join(absent)}."]
    page.append("")
    for claim in CLAIMS:
        page += section(claim, times)
    (ROOT / "docs/performance.md").write_text("\n".join(page).rstrip() + "\n")


def write_readme(figures):
    rows = ["| work | compared with | times as fast |", "|---|---|---|"]
    for claim in CLAIMS:
        rows += [f"| {ratio.pair.in_readme} | {ratio.pair.contender} | {short(ratio.median)} |"
                 for ratio in ratios_of(claim, figures["times"]) if ratio.pair.in_readme]
    readme = ROOT / "README.md"
    begin, end = "<!-- figures: written by tools/performance.py -->\n", "<!-- end of figures -->"
    before, rest = readme.read_text().split(begin)
    readme.write_text(before + begin + "\n".join(rows) + "\n\n" + end + rest.split(end)[1])


if len(sys.argv) > 2:
    collect(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
written = json.loads(FIGURES.read_text())
write_page(written)
write_readme(written)
