"""What the border of the language costs: nanoseconds of a call, of an element of an array, import.

An element takes what the library's own call takes and next to nothing besides; `more` is what a
single call takes above that. The best of many short runs: other work on the machine only adds.
"""

import subprocess
import sys
import timeit

import kurvo
import numpy as np

COUNT = 2048  # elements: one run is shorter than a time slice
Curve = kurvo.Curve
CURVES = {
    "line": Curve.line((0, 0), (4, 2)),
    "arc": Curve.arc((2, 0), 2, 0, 2),
    "cubic": Curve.bezier([(0, 0), (1, 2), (3, 2), (4, 0)]),
    "spline": Curve.bspline(4, [(0, 0), (1, 2), (2, -2), (3, 2), (4, 0)], [0] * 4 + [0.5] + [1] * 4),
}
CALLS = {
    "position": ("c.position(t)", "c.position(ts)"),
    "curvature": ("c.curvature(t)", "c.curvature(ts)"),
    "nearest, pair": ("c.nearest(p)", "c.nearest(ps)"),
    "nearest, array": ("c.nearest(q)", "c.nearest(ps)"),
}
IMPORT = (
    "import time, numpy; t = time.perf_counter(); import kurvo; print(time.perf_counter() - t)"
)


def nanoseconds(statement, names, number):
    runs = timeit.repeat(statement, globals=names, number=number, repeat=60)
    return 1e9 * min(runs) / number


def main():
    t = 0.3
    ts, p = np.full(COUNT, t), (1.5, 1.0)
    ps = np.tile(p, (COUNT, 1))
    pause = nanoseconds("pass", {}, 1000)
    print(f"{'':24}{'call':>8}{'element':>9}{'more':>8}   ns")
    for kind, c in CURVES.items():
        for name, (one, many) in CALLS.items():
            names = {"c": c, "t": t, "ts": ts, "p": p, "ps": ps, "q": np.array(p)}
            call = nanoseconds(one, names, 1000) - pause
            element = nanoseconds(many, names, 1) / COUNT
            print(f"{kind + ' ' + name:24}{call:8.0f}{element:9.1f}{call - element:8.0f}")
    ask = [sys.executable, "-c", IMPORT]
    best = min(float(subprocess.check_output(ask, text=True)) for _ in range(9))
    print(f"import beside numpy {1e3 * best:.1f} ms")


if __name__ == "__main__":
    main()
