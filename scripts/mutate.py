#!/usr/bin/env python3
"""Shows what the tests are worth: changes one operator or number of the library at a time and sees
which test notices.

The places are drawn from all of src/ with a seed. A change that does not compile, or that leaves
the object code as it was, is not counted. The others are killed by the first test that fails,
crashes or takes ten times as long as usual, or survive. The sources are copied first: the
repository is never touched.

    scripts/mutate.py --count 300 --seed 1              judged by one suite after the other
    scripts/mutate.py --suites unit,laws relate/ eval/  files whose path holds one of the words
    scripts/mutate.py --list --count 300 > places.txt   only lists what would be changed
    scripts/mutate.py --places places.txt               those again, wherever the lines have moved
    scripts/mutate.py --survivors left.txt              keeps what survives, as a list of places
"""
import argparse
import collections
import concurrent.futures
import dataclasses
import hashlib
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

from mutation_places import changed_text, chosen_places, read_places
from tried_changes import FLOORS, ROOT, configure, copy_sources, run


@dataclasses.dataclass
class Suite:
    folders: tuple
    tests: str = "*"  # a filter
    environment: dict = dataclasses.field(default_factory=dict)


TENTH = {"KURVO_CALLS": "1000", "KURVO_MEMORY_CALLS": "15", "KURVO_STACK_CALLS": "30"}
SUITES = {  # in the order of judgement
    "unit": Suite(FLOORS + ("refusals",)),
    "laws": Suite(("laws",)),
    "robust": Suite(("robust",), "-Digest.*", TENTH),  # a tenth of the calls, for speed
    "digests": Suite(("robust",), "Digest.*"),
    "client": Suite(("tools",)),
    "calls": Suite(("robust",), "-Digest.*"),  # all calls, as ctest makes them
}
USUAL_SUITES = "unit,laws,robust,digests,client"
PATIENCE = 10  # times the usual time of a program
LEAST_PATIENCE = 10.0  # seconds: what a busy machine may add
LIBRARY, SONAME = "src/libkurvo.so.1.0.0", "libkurvo.so.1"


@dataclasses.dataclass
class Program:
    suite: str
    folder: str
    path: str  # below the build
    usual: float = 60.0  # seconds, until measured


@dataclasses.dataclass
class Verdict:
    outcome: str  # "killed", "SURVIVES", "same code" or "no build"
    suite: str = ""
    by: str = ""


def culprit(how, log):
    """The test that failed, or that was running when the program ended."""
    text = log.read_text(errors="replace")
    found = re.search(r"\[  FAILED  \] (\w\S*?),? ", text + " ") if how == "failure" else None
    running = re.findall(r"\[ RUN      \] (\S+)", text)
    name = found[1] if found else running[-1] if running else "before the first test"
    return name if how == "failure" else f"{name} ({how})"


class Build:
    """The unchanged library with its tests, and the commands that made them."""

    def __init__(self, directory, jobs):
        self.source, self.path, self.jobs = directory / "source", directory / "build", jobs
        self.mutants = directory / "mutants"
        self.ccache = ["ccache"] if shutil.which("ccache") else []
        # What the build itself runs, as the client for its manual, finds the libraries there.
        libraries = f"{self.path / 'src'}:{self.path / 'outline'}"
        self.environment = {**os.environ, "CCACHE_BASEDIR": str(directory), "CCACHE_NOHASHDIR": "1",
                            "LD_LIBRARY_PATH": libraries}

    def prepare(self):
        copy_sources(self.source)
        linker = "-fuse-ld=lld" if shutil.which("ld.lld") else ""
        # Without a path to the library in them, programs take it from where the environment says.
        options = ["-DCMAKE_SKIP_BUILD_RPATH=ON", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
                   f"-DCMAKE_EXE_LINKER_FLAGS={linker}", f"-DCMAKE_SHARED_LINKER_FLAGS={linker}"]
        options += [f"-DCMAKE_{language}_COMPILER_LAUNCHER=ccache" for language in ("C", "CXX")
                    if self.ccache]
        configure(self.source, self.path, *options)
        subprocess.run(["ninja", "-C", self.path, f"-j{self.jobs}", "--quiet"], check=True,
                       env=self.environment)
        self.compile_commands = {}
        for entry in json.loads((self.path / "compile_commands.json").read_text()):
            self.compile_commands[re.search(r" -o (\S+)", entry["command"])[1]] = entry
        self.dependents = self.read_dependents()
        self.links = {}
        shutil.rmtree(self.mutants, ignore_errors=True)

    def read_dependents(self):
        """The objects that each source file is part of."""
        listing = subprocess.run(["ninja", "-C", self.path, "-t", "deps"], check=True,
                                 capture_output=True, text=True).stdout
        dependents, top = collections.defaultdict(list), f"{self.source}/"
        for line in listing.splitlines():
            if line.startswith("    "):
                path = os.path.normpath(self.path / line.strip())
                if path.startswith(top):
                    dependents[path[len(top):]].append(target)
            elif line:
                target = line.split(":")[0]
        return dependents

    def link_command(self, target):
        if target not in self.links:
            listing = subprocess.run(["ninja", "-C", self.path, "-t", "commands", target],
                                     check=True, capture_output=True, text=True).stdout
            self.links[target] = listing.strip().splitlines()[-1]
        return self.links[target]

    def programs(self, suites):
        return [Program(suite, folder, str(path.relative_to(self.path)))
                for suite in suites for folder in SUITES[suite].folders
                for path in sorted((self.path / "tests" / folder).glob("*_test"))
                if path.name != "robust_outline_test"]  # the other library's

    def run_tests(self, program, path, library, log):
        """How the program fails, '' if it passes."""
        suite = SUITES[program.suite]
        environment = {**os.environ, **suite.environment, "LD_LIBRARY_PATH": str(library)}
        command = [str(path), "--gtest_fail_fast", f"--gtest_filter={suite.tests}"]
        with log.open("w") as output:
            return run(command, max(LEAST_PATIENCE, PATIENCE * program.usual), log.parent, output,
                       environment)

    def measure(self, programs):
        """Makes sure that all tests pass as things are, and notes their usual times."""
        self.mutants.mkdir()
        for program in programs:
            start, log = time.monotonic(), self.mutants / "log"
            how = self.run_tests(program, self.path / program.path, self.path / "src", log)
            program.usual = time.monotonic() - start
            print(f"{program.suite:8} {program.path:44} {program.usual:6.1f} s", flush=True)
            if how:
                sys.exit(f"the unchanged sources fail: {culprit(how, log)}")


class Mutant:
    """One change: its objects and links, apart from the unchanged build."""

    def __init__(self, build, place):
        text = changed_text(place, build.source)
        self.build, self.place = build, place
        # The same change has the same name in every run, for the compiler cache.
        self.path = build.mutants / hashlib.sha256((place.path + text).encode()).hexdigest()[:16]
        self.overlay = self.path / "source"
        changed = self.overlay / place.path
        changed.parent.mkdir(parents=True)
        changed.write_text(text)
        self.renewed = {}  # object below the build: the changed one, None if the code is the same

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.path)

    def compiles(self, target):
        if target in self.renewed:
            return True
        entry, new = self.build.compile_commands[target], self.path / target
        new.parent.mkdir(parents=True, exist_ok=True)
        command = entry["command"].split()
        command[command.index("-o") + 1] = str(new)
        if entry["file"] == str(self.build.source / self.place.path):
            command[command.index(entry["file"])] = str(self.overlay / self.place.path)
        command[1:1] = [f"-I{self.overlay}/src", "-w",
                        f"-ffile-prefix-map={self.overlay}={self.build.source}"]
        done = subprocess.run(self.build.ccache + command, cwd=self.build.path,
                              env=self.build.environment, stderr=subprocess.DEVNULL)
        if done.returncode:
            return False
        same = new.read_bytes() == (self.build.path / target).read_bytes()
        self.renewed[target] = None if same else new
        return True

    def compile_all(self, prefix):
        """False when one of the objects below `prefix` that hold the place does not compile."""
        return all(self.compiles(target) for target in self.build.dependents[self.place.path]
                   if target.startswith(prefix))

    def link(self, target, output):
        """Links again, with what has changed in place of the unchanged objects."""
        command = self.build.link_command(target).split()
        command = [str(self.renewed.get(word) or word) for word in command]
        command[command.index("-o") + 1] = str(output)
        output.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(" ".join(command), shell=True, check=True, cwd=self.build.path)

    def fails(self, program):
        """How the program fails, '' if it passes. Only the programs that hold the library's objects
        are linked again."""
        path = self.build.path / program.path
        if "kurvo_objects.dir" in self.build.link_command(program.path):
            path = self.path / program.path
            folder = f"tests/{program.folder}/CMakeFiles/{path.name}.dir/"
            if not path.exists():
                if not self.compile_all(folder):
                    (self.path / "log").write_text("")
                    return "failure"
                self.link(program.path, path)
        return self.build.run_tests(program, path, self.path / "library", self.path / "log")

    def judged_by(self, programs):
        if not self.compile_all("src/"):
            return Verdict("no build")
        if not any(self.renewed.values()):
            return Verdict("same code")
        self.link(LIBRARY, self.path / "library" / SONAME)
        floor = self.place.path.split("/")[1]
        order = {suite: n for n, suite in enumerate(SUITES)}
        for program in sorted(programs, key=lambda p: (order[p.suite], p.folder != floor, p.usual)):
            how = self.fails(program)
            if how:
                return Verdict("killed", program.suite, culprit(how, self.path / "log"))
        return Verdict("SURVIVES")


def judge(build, place, programs):
    start = time.monotonic()
    with Mutant(build, place) as mutant:
        verdict = mutant.judged_by(programs)
    print(f"{verdict.outcome:9} {place.where()}: {place.change()}"
          f"{verdict.by and ' | ' + verdict.by} [{time.monotonic() - start:.0f} s]", flush=True)
    return place, verdict


def judge_all(build, places, programs, jobs):
    """The verdicts, as far as they go when the run is interrupted."""
    judged = []
    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        try:
            for place_and_verdict in pool.map(lambda p: judge(build, p, programs), places):
                judged.append(place_and_verdict)
        except KeyboardInterrupt:
            pool.shutdown(wait=False, cancel_futures=True)
    return judged


def summary(judged, suites):
    outcomes = collections.Counter(verdict.outcome for _, verdict in judged)
    killed_or_left = [(p, v) for p, v in judged if v.outcome in ("killed", "SURVIVES")]
    counted = len(killed_or_left)
    print(f"{len(judged)} places, {outcomes['no build']} do not compile, {outcomes['same code']} "
          f"leave the code as it was; {counted} counted")
    killed = 0
    for suite in suites:
        killed += sum(verdict.suite == suite for _, verdict in judged)
        print(f"killed up to {suite}: {killed} ({100 * killed / max(counted, 1):.1f} %)")
    for name, key in (("kind", lambda p: p.kind), ("folder", lambda p: p.path.split("/")[1])):
        of_all = collections.Counter(key(p) for p, _ in killed_or_left)
        left = collections.Counter(key(p) for p, v in killed_or_left if v.outcome == "SURVIVES")
        print(f"survivors by {name}: " + ", ".join(f"{k} {left[k]} of {of_all[k]}" for k in of_all))


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("words", nargs="*", help="parts of the files' paths; all files if none")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=100, help="of places")
    parser.add_argument("--places", type=pathlib.Path, help="a list of places instead of a draw")
    parser.add_argument("--list", action="store_true", help="print the list of places and stop")
    parser.add_argument("--survivors", type=pathlib.Path, help="the list of those that survive")
    parser.add_argument("--suites", default=USUAL_SUITES,
                        help=f"those that judge, of {','.join(SUITES)}; usually %(default)s")
    parser.add_argument("--directory", type=pathlib.Path, help="of the copy and its builds",
                        default=ROOT / "build" / "mutate")
    parser.add_argument("-j", "--jobs", type=int, default=1, help="changes tried side by side")
    options = parser.parse_args()
    options.suites = [suite for suite in SUITES if suite in options.suites.split(",")]
    return options


def main():
    options = arguments()
    gone = []
    if options.places:
        places, gone = read_places(options.places)
    else:
        places = chosen_places(options.seed, options.count, options.words)
    if options.list:
        print("\n".join(place.row() for place in places))
        return 0
    build = Build(options.directory.resolve(), options.jobs)
    build.prepare()
    programs = build.programs(options.suites)
    build.measure(programs)
    judged = judge_all(build, places, programs, options.jobs)
    left = sorted((p for p, verdict in judged if verdict.outcome == "SURVIVES"),
                  key=lambda p: (p.path, p.line, p.column))
    if options.survivors:
        options.survivors.write_text("".join(place.row() + "\n" for place in left))
    for place in left:
        print(f"survives: {place.where()}: {place.change()} in {place.text}")
    for row in gone:
        print(f"gone: {row}")
    summary(judged, options.suites)
    return 0


if __name__ == "__main__":
    sys.exit(main())
