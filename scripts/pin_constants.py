#!/usr/bin/env python3
"""Shows which named numeric constants of the library the tests hold.

Each constant under src/ is changed alone, in several ways; the library is rebuilt and the tests
run until the first failure. A change that no test notices is a survivor. The sources are copied
first: the repository is never touched.

    scripts/pin_constants.py                      all constants, every way
    scripts/pin_constants.py kNewtonSteps Slack   those whose name or file holds one of the words
    scripts/pin_constants.py --first              the next constant after the first change noticed
    scripts/pin_constants.py --list               only lists what would be changed
"""
import argparse
import pathlib
import re
import subprocess
import sys
import time

from tried_changes import DEFINITION, FLOORS, REALS, ROOT, configure, copy_sources, run

NO_NUMBER = re.compile(r"infinity\(\)|quiet_NaN\(\)|CV_|std::numeric_limits<\w+>::max\(\)\s*$")
WAYS = {
    "real": ["({}) * 10.0", "({}) / 10.0"],
    "integer": ["({}) + 1", "({}) - 1", "({}) / 4"],
}


def constants(words):
    """(path below the root, name, kind, start and end of the value in the text), in file order."""
    for path in sorted((ROOT / "src").rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        text, below = path.read_text(), path.relative_to(ROOT)
        for found in DEFINITION.finditer(text):
            if NO_NUMBER.search(found[3]):
                continue
            if words and not any(w in found[2] or w in str(below) for w in words):
                continue
            yield below, found[2], "real" if found[1] in REALS else "integer", found.span(3)


class Mutants:
    def __init__(self, directory, seconds, jobs, programs):
        self.source, self.build = directory / "source", directory / "build"
        self.seconds, self.jobs, self.programs = seconds, jobs, programs

    def prepare(self):
        """Copies the sources, builds them and makes sure that all tests pass as things are."""
        copy_sources(self.source)
        configure(self.source, self.build)
        if not self.builds():
            sys.exit("the unchanged sources do not build")
        noticed = self.noticed("foundation")
        if noticed:
            sys.exit(f"the unchanged sources fail: {noticed}")

    def builds(self):
        command = ["cmake", "--build", str(self.build), f"-j{self.jobs}"]
        return subprocess.run(command, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL).returncode == 0

    def noticed(self, floor):
        """The first test that fails, and how; '' when all pass. The floor's own tests come first,
        each program as a whole, then the other floors' and the client's, then the examples, the
        bounds on allocation and time, and last the digests, which tell of a change, not what is
        right."""
        for name in [floor] + [name for name in self.programs if name != floor]:
            for program in sorted((self.build / "tests" / name).glob("*_test")):
                bad = run([str(program), "--gtest_fail_fast", "--gtest_brief=1"], self.seconds,
                          program.parent)
                if bad:
                    return f"{program.name} ({bad})"
        bad = run(["ctest", f"-j{self.jobs}", "--stop-on-failure", "-R", "^example"], self.seconds,
                  self.build)
        if bad:
            return f"examples ({bad})"
        for suite in ("Allocation", "Findings", "Digest"):
            robust = self.build / "tests" / "robust" / "robust_test"
            bad = run([str(robust), f"--gtest_filter={suite}.*"], self.seconds, robust.parent)
            if bad:
                return f"{suite} alone ({bad})"
        return ""

    def try_change(self, below, span, way):
        path = self.source / below
        original = path.read_text()
        value = original[span[0]:span[1]]
        path.write_text(original[:span[0]] + way.format(value) + original[span[1]:])
        try:
            return self.noticed(below.parts[1]) if self.builds() else "the build"
        finally:
            path.write_text(original)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("words", nargs="*", help="parts of names or of files; all constants if none")
    parser.add_argument("--first", action="store_true",
                        help="leave a constant once one of its changes is noticed")
    parser.add_argument("--library-only", action="store_true",
                        help="leave out the tests of the client, the slowest")
    parser.add_argument("--list", action="store_true", help="list the constants and stop")
    parser.add_argument("--directory", type=pathlib.Path, help="of the copy and its build",
                        default=ROOT / "build" / "constants")
    parser.add_argument("--timeout", type=int, default=120, help="seconds for one test program")
    parser.add_argument("-j", "--jobs", type=int, default=2)
    options = parser.parse_args()

    chosen = list(constants(options.words))
    if options.list:
        for below, name, kind, _ in chosen:
            print(f"{name} ({kind}, {below})")
        return 0
    programs = FLOORS + ("refusals", "laws") + (() if options.library_only else ("tools",))
    mutants = Mutants(options.directory.resolve(), options.timeout, options.jobs, programs)
    mutants.prepare()
    survivors, tried = [], 0
    for below, name, kind, span in chosen:
        held = []
        for way in WAYS[kind]:
            start = time.monotonic()
            noticed = mutants.try_change(below, span, way)
            tried += 1
            change = way.format(name).replace("(", "").replace(")", "")
            print(f"{'held    ' if noticed else 'SURVIVES'} {change:40} {below}: "
                  f"{noticed or 'no test fails'} [{time.monotonic() - start:.0f} s]", flush=True)
            held.append(bool(noticed))
            if noticed and options.first:
                break
        if not any(held):
            survivors.append(f"{name} ({below})")
    print(f"{len(chosen)} constants, {tried} changes; held by no test: {len(survivors)}")
    for survivor in survivors:
        print(f"  {survivor}")
    return 1 if survivors else 0


if __name__ == "__main__":
    sys.exit(main())
