#!/usr/bin/env python3
"""Puts what scripts/compare.sh measured into the page that shows it.

usage: comparison_table.py RESULTS.tsv PAGE.md LOAD_BEFORE LOAD_AFTER
The table and the line on date, machine and versions replace what stands between the two markers of
the page. Of several runs of a cell the one of the median mean counts.
"""
import datetime
import platform
import re
import subprocess
import sys

BEGIN, END = "<!-- measured -->\n", "<!-- end of measured -->"
PACKAGES = {
    "2geom": "lib2geom-dev",
    "sisl": "libsisl-dev",
    "occt": "libocct-modeling-algorithms-dev",
    "boost": "libboost-dev",
    "boost_polygons": "libboost-dev",
    "polyclipping": "libpolyclipping-dev",
    "cgal_polygons": "libcgal-dev",
    "kurbo": "librust-kurbo-dev",
    "lyon": "librust-lyon-geom-dev",
}
FAIR = 0.99  # of its answers a library must have right to be the fastest


def output(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()
    except (OSError, subprocess.CalledProcessError):
        return "unknown"


def read(path):
    """The runs of each cell: {(row, size): {library: (mean, median, p90, worst, right, asked)}}"""
    cells = {}
    with open(path, encoding="utf-8") as file:
        for line in file:
            row, size, library, *numbers = line.rstrip("\n").split("\t")
            run = None if "-" in numbers else tuple(map(float, numbers))
            cells.setdefault((row, size), {}).setdefault(library, []).append(run)
    for cell in cells.values():
        for library, runs in cell.items():
            cell[library] = None if None in runs else sorted(runs)[len(runs) // 2]
    return cells


def number(nanoseconds, unit):
    value = nanoseconds / unit
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}"


def table(cells):
    libraries = ["kurvo"] + [p for p in PACKAGES if any(p in cell for cell in cells.values())]
    lines = ["| question, size | asked | " + " | ".join(libraries) + " |",
             "|---|---|" + "---|" * len(libraries)]
    for (row, size), cell in cells.items():
        unit, sign = (1e3, "µs") if cell["kurvo"] and cell["kurvo"][0] >= 1e4 else (1.0, "ns")
        fair = [run[0] for run in cell.values() if run and run[4] >= FAIR * run[5]]
        texts = []
        for library in libraries:
            if library not in cell:
                texts.append("")
                continue
            run = cell[library]
            if run is None:
                texts.append("no answer")
                continue
            mean, median, p90, _, right, asked = run
            text = f"{number(mean, unit)} ({number(median, unit)}, {number(p90, unit)})"
            if fair and mean == min(fair):
                text = f"**{text}**"
            texts.append(text if right == asked else f"{text} {right:.0f} right")
        asked = next(run[5] for run in cell.values() if run)
        lines.append(f"| {row}, {size}, {sign} | {asked:.0f} | " + " | ".join(texts) + " |")
    return "\n".join(lines)


def losses(cells):
    """The rows where another library is faster, or has more answers right."""
    faster, better = {}, {}
    for (row, size), cell in cells.items():
        ours = cell["kurvo"]
        others = {name: run for name, run in cell.items() if run and name != "kurvo"}
        fair = {name: run for name, run in others.items() if run[4] >= FAIR * run[5]}
        fastest = min(fair, key=lambda name: fair[name][0], default=None)
        if fastest and fair[fastest][0] < ours[0]:
            share = f"{fair[fastest][0] / ours[0]:.2f}"
            faster.setdefault((row, fastest), []).append((size, share))
        more = sorted(name for name, run in others.items() if run[4] > ours[4])
        if more:
            text = f"{ours[4]:.0f} of our {ours[5]:.0f} answers are right, more of " + ", ".join(more)
            better.setdefault((row, text), []).append(size)
    lines = [f"{row}: {library} takes " + ", ".join(f"{share} (size {size})" for size, share in found)
             + " of our time" for (row, library), found in faster.items()]
    lines += [f"{row}: {text} (size {', '.join(sizes)})" for (row, text), sizes in better.items()]
    return "Where we lose:\n\n" + "\n".join(f"- {line}" for line in lines)


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        return re.search(r"model name\s*: (.*)", file.read()).group(1)


def versions():
    texts = [f"Kurvo of commit {output('git', 'rev-parse', '--short', 'HEAD')}"]
    for library, package in PACKAGES.items():
        version = output("dpkg-query", "-W", "-f", "${Version}", package)
        texts.append(f"{library} {version} (`{package}`)")
    return ", ".join(texts)


def main():
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    results, page, before, after = sys.argv[1:]
    today = datetime.date.today()
    system = platform.freedesktop_os_release().get("PRETTY_NAME", "unknown")
    compiler = output("c++", "--version").split("\n")[0]
    rust = output("/usr/bin/rustc", "--version")
    cells = read(results)
    measured = (
        f"Measured on {today.day} {today:%B %Y}: {processor()}, {system}, {compiler}, {rust}; "
        f"load {before} before and {after} after.\n\n{versions()}.\n\n{table(cells)}\n\n{losses(cells)}\n")
    with open(page, encoding="utf-8") as file:
        text = file.read()
    head, rest = text.split(BEGIN)
    tail = rest.split(END)[1]
    with open(page, "w", encoding="utf-8") as file:
        file.write(head + BEGIN + measured + END + tail)


main()
