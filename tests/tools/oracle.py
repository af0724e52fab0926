"""Curves as functions, by formulas of their own, for the tests that look at what the client writes."""
import json, math, os, subprocess, tempfile

import numpy as np

BOUND = 1e-9  # of the size of a drawing
WORK = tempfile.TemporaryDirectory()


def work(name):
    return os.path.join(WORK.name, name)


def kurvo(program, *arguments, statuses=(0,)):
    run = subprocess.run([program, *arguments], capture_output=True, text=True, timeout=60)
    assert run.returncode in statuses, (arguments, run.returncode, run.stderr)
    return run.stderr


def line(a, b):
    return lambda t: a + t * (b - a)


def turn(centre, u, v, start, end):
    return lambda t: centre + math.cos(start + t * (end - start)) * u + math.sin(start + t * (end - start)) * v


def spline(points, weights, knots):
    """De Boor's algorithm in homogeneous coordinates (Farin, Curves and Surfaces, 5th edition, 8.1)."""
    order = len(knots) - len(points)
    control = np.column_stack([np.asarray(points) * np.asarray(weights)[:, None], weights])
    low, high = knots[order - 1], knots[len(points)]

    def at(t):
        x = low + t * (high - low)
        span = max(order - 1, min(np.searchsorted(knots, x, "right") - 1, len(points) - 1))
        while knots[span] == knots[span + 1]:
            span -= 1
        d = [control[span - order + 1 + i] for i in range(order)]
        for r in range(1, order):
            for i in range(order - 1, r - 1, -1):
                left = knots[span - order + 1 + i]
                alpha = (x - left) / (knots[span + 1 + i - r] - left)
                d[i] = (1 - alpha) * d[i - 1] + alpha * d[i]
        return d[-1][:2] / d[-1][2]

    return at


def of_json(curve, y_up):
    """With y pointing up, as a DXF file has it."""
    flip = lambda p: np.array([p[0], p[1] if y_up else -p[1]])
    kind = curve["type"]
    if kind == "line":
        return [line(flip(curve["start"]), flip(curve["end"]))]
    if kind == "arc":
        centre, a, b = (flip(curve[name]) for name in ("centre", "start", "end"))
        start, end = (math.atan2(p[1] - centre[1], p[0] - centre[0]) for p in (a, b))
        sense = 1 if bool(curve.get("clockwise")) != y_up else -1  # mirrored
        end = start + sense * ((sense * (end - start)) % (2 * math.pi) or 2 * math.pi)
        r = curve["radius"]
        return [turn(centre, np.array([r, 0]), np.array([0, r]), start, end)]
    if kind == "composite":
        return [piece for part in curve["curves"] for piece in of_json(part, y_up)]
    points = [flip(p) for p in curve["points"]]
    n = len(points)
    return [spline(points, curve.get("weights", [1] * n), curve.get("knots", [0] * n + [1] * n))]


# ---- comparison


class Curves:
    STEPS = 48

    def __init__(self, curves):
        self.curves = curves
        grid = [[curve(i / self.STEPS) for i in range(self.STEPS + 1)] for curve in curves]
        self.grid = np.array(grid).reshape(len(curves), self.STEPS + 1, 2)
        self.size = max(1e-9, float(np.ptp(self.grid, axis=(0, 1)).max()))

    def distance(self, p):
        far = np.hypot(*np.moveaxis(self.grid - p, 2, 0))
        best = math.inf
        for index in np.argsort(far.min(axis=1))[:4]:
            middle = int(far[index].argmin())
            low, high = max(0, middle - 1) / self.STEPS, min(self.STEPS, middle + 1) / self.STEPS
            off = lambda t: math.dist(self.curves[index](t), p)
            while high - low > 1e-14:
                a, b = low + (high - low) / 3, high - (high - low) / 3
                low, high = (low, b) if off(a) < off(b) else (a, high)
            best = min(best, off(low), off(high), off(round(low, 12)))
            if best <= BOUND / 10 * self.size:
                break
        return best

    def off(self, other):
        return max(self.distance(curve(t)) for curve in other.curves for t in (0, 0.31, 0.5, 0.87, 1)) / self.size


def worst(a, b, what):
    assert a and b, (what, len(a), len(b))
    a, b = Curves(a), Curves(b)
    off = max(a.off(b), b.off(a))
    assert BOUND >= off, (what, off)
    return off


def read_json(path):
    file = json.load(open(path))
    y_up = file["sheet"].get("y_up", False)
    return [c for s in file["shapes"] for o in s["outlines"] for curve in o["curves"] for c in of_json(curve, y_up)]
