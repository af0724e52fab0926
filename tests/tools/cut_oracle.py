#!/usr/bin/python3
"""Runs machine code that the client makes and compares the way of the beam with what was drawn.

usage: cut_oracle.py KURVO DRAWING...
"""
import json, math, re, sys

try:
    import numpy as np
except ImportError:
    sys.exit(77)

from oracle import Curves, kurvo, line, read_json, turn, work

KURVO, *DRAWINGS = sys.argv[1:]
DEVIATION = 0.01
RADII, RADII_PART = 0.005, 0.001  # mm and part of the radius: what grbl refuses beyond, both together
WIDEST = math.radians(120) + 1e-3  # ends are rounded to 1e-4 mm


class Machine:
    """Modal groups, lines and arcs of RS-274. Cuts are lists of (curve, start, end)."""

    def __init__(self, code):
        self.at, self.on, self.feed, self.cuts, self.radii = np.zeros(2), False, None, [], 0
        self.mode, self.words = None, {}
        for text in code.replace("%", "").splitlines():
            words = re.findall(r"([A-Z])(-?[0-9.]+)", text)
            assert "".join(a + b for a, b in words) == text.replace(" ", ""), text
            self.block([(letter, float(number)) for letter, number in words])
        assert not self.on and self.mode == 0

    def block(self, words):
        letters = dict(words)
        motion = [n for letter, n in words if letter == "G" and n in (0, 1, 2, 3)]
        others = {n for letter, n in words if letter == "G"} - set(motion)
        assert others <= {21, 90, 91.1, 17, 94, 40, 61}, others
        self.feed = letters.get("F", self.feed)
        for letter, n in words:
            if letter == "M":
                assert n in (2, 3, 4, 5)
                self.on = n in (3, 4)
                if self.on:
                    assert letters["S"] > 0
                    self.cuts.append([])
        if not motion:
            return
        self.mode = motion[0]
        to = np.array([letters.get("X", self.at[0]), letters.get("Y", self.at[1])])
        assert self.on == (self.mode != 0), words
        if self.on:
            assert self.feed
            self.cuts[-1].append(self.curve(to, letters))
        self.at = to

    def curve(self, to, letters):
        at = self.at
        assert math.dist(at, to) > 0, "no way at all: an arc would be a full circle"
        if self.mode == 1:
            return line(at, to)
        centre = at + np.array([letters["I"], letters["J"]])
        r, other = math.dist(at, centre), math.dist(to, centre)
        self.radii = max(self.radii, abs(r - other))
        assert abs(r - other) <= RADII and abs(r - other) <= max(RADII_PART * r, 2e-4), (at, to, centre)
        start, end = (math.atan2(*(p - centre)[::-1]) for p in (at, to))
        sense = -1 if self.mode == 2 else 1
        sweep = sense * ((sense * (end - start)) % (2 * math.pi))
        assert abs(sweep) <= WIDEST, math.degrees(sweep)
        # The radius goes from the one to the other, as controllers have it.
        return lambda t: centre + (r + t * (other - r)) * np.array(
            [math.cos(start + t * sweep), math.sin(start + t * sweep)])


def inside(loops, p):
    """Even-odd; loops are lists of points."""
    odd = False
    for points in loops:
        a, b = points, np.roll(points, -1, axis=0)
        cross = (a[:, 1] > p[1]) != (b[:, 1] > p[1])
        a, b = a[cross], b[cross]
        odd ^= bool(np.sum(a[:, 0] + (p[1] - a[:, 1]) / (b[:, 1] - a[:, 1]) * (b[:, 0] - a[:, 0]) > p[0]) % 2)
    return odd


def loops_of(path):
    """Closed and open chains of the drawing, joined, as curves."""
    closed, opened = [], []
    file = json.load(open(path))
    for shape in file["shapes"]:
        for outline in shape["outlines"]:
            with open(work("one.json"), "w") as one:
                json.dump({"sheet": file["sheet"], "shapes": [{"outlines": [outline]}]}, one)
            (closed if outline["closed"] else opened).append(read_json(work("one.json")))
    return closed, opened


def points_of(curves, steps=64):
    return np.array([curve(i / steps) for curve in curves for i in range(steps)])


def check(drawing, kerf, lead_in, dialect):
    out, chains = work("cut.nc"), work("chains.json")
    flags = ["--unit", "mm", "-q"]
    kurvo(KURVO, "cut", drawing, "-o", out, *flags, "--kerf", f"{kerf}mm", "--lead-in", f"{lead_in}mm",
          "--feed", "1200", "--deviation", f"{DEVIATION}mm", "--dialect", dialect)
    kurvo(KURVO, "join", drawing, "-o", chains, *flags)
    sheet = json.load(open(chains))["sheet"].get("view")
    closed, opened = loops_of(chains)
    machine = Machine(open(out).read())
    assert machine.feed == 1200
    shift = np.array([sheet[0], -sheet[3]]) if drawing.endswith(".svg") else np.zeros(2)
    cuts = [[lambda t, c=c: c(t) + shift for c in cut] for cut in machine.cuts]
    assert len(cuts) == len(closed) + len(opened), (drawing, len(cuts), len(closed), len(opened))
    polygons = [points_of(loop) for loop in closed]
    edges, lines = Curves([c for loop in closed for c in loop]), Curves([c for o in opened for c in o] or [line(np.zeros(2), np.ones(2))])
    farthest, done = 0, []
    for cut in cuts:
        first, last = cut[0](0), cut[-1](1)
        is_open = lines.distance(cut[0](0.5)) <= DEVIATION and opened
        if is_open:
            farthest = max(farthest, *(lines.distance(c(t)) for c in cut for t in (0, 0.5, 1)))
            continue
        body = cut if math.dist(first, last) <= 1e-9 else cut[1:]  # without the lead-in
        assert math.dist(body[0](0), last) <= 1e-9, "does not come back to its start"
        for curve in cut:
            for t in (0.02, 0.5):
                p = curve(t)
                off = edges.distance(p)
                assert off >= kerf / 2 - DEVIATION, (drawing, p, off)
                if curve in body:
                    farthest = max(farthest, abs(off - kerf / 2))
                if off > DEVIATION:
                    assert not inside(polygons, p), (drawing, "in the part", p)
        ring = points_of(body, 16)
        for before in done:  # what lies inside comes first
            assert not inside([before], ring[0]) or kerf == 0 and len(ring) < 3, (drawing, "too late")
        done.append(ring)
    assert farthest <= DEVIATION, (drawing, farthest)
    # Nothing is forgotten: every curve that was drawn has a cut beside it.
    beam = Curves([c for cut in cuts for c in cut])
    corner = 2.5 * kerf / 2 + DEVIATION
    missed = max(beam.distance(c(t)) for c in edges.curves + lines.curves * bool(opened) for t in (0.1, 0.5, 0.9))
    assert missed <= corner, (drawing, missed)
    return farthest, machine.radii, sum(map(len, cuts))


for drawing in DRAWINGS:
    for kerf, lead_in, dialect in ((0.15, 2, "grbl"), (0, 0, "linuxcnc"), (1.2, 5, "linuxcnc")):
        far, radii, count = check(drawing, kerf, lead_in, dialect)
        print(f"{drawing.rsplit('/')[-1]}, kerf {kerf}: {count} moves, {far:.5f} mm off, radii differ by {radii:.5f} mm")
