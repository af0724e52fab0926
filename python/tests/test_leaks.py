"""Nothing is left behind by calls, whether they answer or refuse.

Blocks of memory are counted, and the references of the arrays that came in. The sum of all
references, which a debug interpreter keeps, says nothing here: numpy and the extension do not tell
it of theirs, being built without.
"""

import gc
import sys
import time
import tracemalloc

import numpy as np
import pytest

import kurvo
from calls import BATCH, CALLS, SCALARS, SQUARE

GOOD = {"parameter": (1.0, 0.0), "line": (2.0, 0.0), "mirrored": (1.0, 2.0), "moved": (1.0, 2.0),
        "rectangle": (3.0, 4.0), "position": 0.5, "derivative": 0.5, "curvature": [[0.1, 0.2]],
        "weights": [1.0, 2.0, 1.0], "knots": [0.0, 0, 0, 1, 1, 1], "widths": [2.0], "split": [0.25],
        "places": [0.5], "lengths": [(0, 0.5)], "trim": [(0, 0.5)], "dashes": [0.5, 0.25],
        "unpack words": SQUARE.pack()[0], "unpack numbers": SQUARE.pack()[1],
        "batch offset": [0.1, 0.2, 0.3], "batch stroke": 0.1}
POINTS = np.array([(0.0, 0.0), (1.0, 2.0), (3.0, 0.5)])
BAD = [np.array([[value]]) for value in (np.nan, "x", None)]
ROWS = {name: [GOOD.get(name, POINTS), *BAD] for name in CALLS}
ROWS.update({name: [0.5, 2, float("nan"), None] for name in SCALARS})
MORE = {
    "views": lambda _: [curve.points for loop in SQUARE for curve in loop],
    "operators": lambda _: (SQUARE | SQUARE.offset(1), SQUARE ^ SQUARE),
    "columns": lambda _: (BATCH.join(BATCH[i:] for i in range(3)), list(BATCH)),
    "pickles": lambda _: [v.__reduce_ex__(4) for v in (SQUARE, SQUARE[0], SQUARE[0][0], BATCH)],
    "stopped": lambda _: SQUARE.offset(1, proceed=lambda done: 1 / 0),
    "reports": lambda _: SQUARE.offset(1, origins=True, report=kurvo.Report()).origins,
    "text": lambda _: kurvo.svg.region(kurvo.svg.path(SQUARE)),
}
TIMES = 50
ROUNDS = 6
SLACK = 0.7 * TIMES  # caches of the interpreter grow now and then


def held():
    gc.collect()
    return np.array([sys.getallocatedblocks(), tracemalloc.get_traced_memory()[0] / 64])


def often(call, arguments):
    for _ in range(TIMES):
        for argument in arguments:
            try:
                call(argument)
            except (TypeError, ValueError, IndexError, ArithmeticError):
                pass


@pytest.mark.parametrize("name", [*CALLS, *SCALARS, *MORE])
def test_nothing_is_kept(name):
    call = {**CALLS, **SCALARS, **MORE}[name]
    arguments = ROWS.get(name, [None])
    own = [argument for argument in arguments if isinstance(argument, np.ndarray)]
    counts = [sys.getrefcount(array) for array in own]
    tracemalloc.start()
    try:
        often(call, arguments)
        for tried in range(ROUNDS):  # what leaks does so each time
            time.sleep(tried**2 / 20)  # threads that other tests left come to an end
            before = held()
            often(call, arguments)
            grown = held() - before
            if (grown <= SLACK).all():
                break
    finally:
        tracemalloc.stop()
    assert (grown <= SLACK).all(), f"blocks, and parts of 64 bytes: {grown}"
    assert counts == [sys.getrefcount(array) for array in own]


def test_memory_of_the_libraries_goes_back():
    def resident():
        with open("/proc/self/statm", encoding="ascii") as file:
            return int(file.read().split()[1]) * 4096

    def work():
        for _ in range(50):
            (DISCS.offset(0.1), DISCS.flatten(1e-6), DISCS[3], DISCS.join([DISCS, DISCS]))

    DISCS = kurvo.OutlineBatch.of(kurvo.Region.circle((x, 0), 1) for x in range(100))
    work()
    before = resident()
    work()
    assert resident() - before < 4e6  # of some 200 MB that went through
