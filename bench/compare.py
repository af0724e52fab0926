#!/usr/bin/env python3
"""Compares two runs of the benchmarks, slowest change first.

usage: compare.py OLD.json NEW.json
Each file comes from kurvo_bench --benchmark_out=FILE --benchmark_out_format=json, best with
--benchmark_repetitions=5; the fastest repetition counts, since noise only ever slows a run down.
"""
import json
import sys

NANOSECONDS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}


def fastest(path):
    times = {}
    with open(path, encoding="utf-8") as file:
        for run in json.load(file)["benchmarks"]:
            if run["run_type"] == "iteration" and not run.get("error_occurred"):
                time = run["cpu_time"] * NANOSECONDS[run["time_unit"]]
                times[run["run_name"]] = min(time, times.get(run["run_name"], time))
    return times


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    old, new = fastest(sys.argv[1]), fastest(sys.argv[2])
    print(f"{'benchmark':<50} {'old ns':>12} {'new ns':>12} {'new/old':>8}")
    for name in sorted(old.keys() & new.keys(), key=lambda n: -new[n] / old[n]):
        print(f"{name:<50} {old[name]:12.1f} {new[name]:12.1f} {new[name] / old[name]:8.2f}")
    for name in sorted(old.keys() ^ new.keys()):
        print(f"{name:<50} only in {'old' if name in old else 'new'}")


main()
