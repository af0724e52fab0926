"""Kurvo beside pyclipper, shapely, booleanOperations and fontTools: times, and who is right.

    peers.py            prints the table
    peers.py --write    puts it into docs/comparison.md

Everyone is asked about the same glyphs; pyclipper and shapely about polygons within a tenth of a
unit of them, which are made beforehand. An answer is right if all points just inside and just
outside of the true outline are so, judged by brute force, or if a number is within the same tenth.
"""

import argparse
import math
import pathlib
import platform
import statistics
import time

import kurvo
import numpy as np
from fontTools.pens.areaPen import AreaPen
from fontTools.pens.basePen import BasePen
from fontTools.pens.perimeterPen import PerimeterPen
from fontTools.pens.pointInsidePen import PointInsidePen
from fontTools.pens.pointPen import SegmentToPointPen
from fontTools.pens.recordingPen import DecomposingRecordingPen
from fontTools.ttLib import TTFont

FONTS = (
    "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf",
    "/usr/share/texmf/fonts/opentype/public/lm/lmroman10-regular.otf",
)
GLYPHS = 60  # of each font
DEVIATION = 0.1  # units: of polygons, and what a number may be off by
TRUE = 0.002  # likewise, of the judge's polygons
GROWTH = 20.0  # units
MOVED = (37.0, 23.0)  # units: the second shape of a union
BESIDE = 0.6  # units: so far from the true outline lie the judge's points
CLEAR = 0.9  # part of that, which they are to keep from all of it
REPEATS = 5
SCALE = 1024  # pyclipper counts in whole numbers


class Polygons(BasePen):
    """Polygons within a deviation: the second differences of a curve bound its height."""

    def __init__(self, deviation):
        super().__init__({})
        self.deviation, self.rings = deviation, []

    def _moveTo(self, point):
        self.rings.append([point])

    def _lineTo(self, point):
        self.rings[-1].append(point)

    def _curveToOne(self, *controls):
        points = np.array([self.rings[-1][-1], *controls], float)
        bend = 6 * np.hypot(*np.diff(points, 2, axis=0).T).max()
        count = max(1, math.ceil(math.sqrt(bend / (8 * self.deviation))))
        t = np.arange(1, count + 1)[:, None] / count
        for _ in range(3):
            points = points[..., :-1, :] + t[..., None] * np.diff(points, axis=-2)
        self.rings[-1] += points[:, 0].tolist()


class Cubics(BasePen):
    """Draws on by cubics, which quadratics are too."""

    def __init__(self, pen):
        super().__init__({})
        self._moveTo, self._lineTo, self._curveToOne = pen.moveTo, pen.lineTo, pen.curveTo
        self._closePath = pen.closePath


def polygons(draw, deviation):
    pen = Polygons(deviation)
    draw(pen)
    return [np.array(ring) for ring in pen.rings if len(ring) > 2]


class Shape:
    """A glyph in everyone's form."""

    def __init__(self, recording, moved=(0.0, 0.0)):
        from fontTools.pens.transformPen import TransformPen

        self.draw = lambda pen: recording.replay(TransformPen(pen, (1, 0, 0, 1, *moved)))
        pen = kurvo.fonts.RegionPen()
        self.draw(pen)
        self.region = pen.region()
        self.rings = polygons(self.draw, DEVIATION)
        self.true = polygons(self.draw, TRUE)
        self.whole = [np.round(ring * SCALE).astype(int).tolist() for ring in self.rings]

    def boolean(self):
        from booleanOperations.booleanGlyph import BooleanGlyph

        glyph = BooleanGlyph()
        self.draw(Cubics(SegmentToPointPen(glyph.getPointPen())))
        return glyph

    def multipolygon(self):
        return kurvo.polygons.to_shapely(kurvo.Region(
            [kurvo.Chain.polyline(ring, closed=True) for ring in self.rings]), DEVIATION)


def windings(points, rings):
    turns = np.zeros(len(points), int)
    x, y = points.T
    for ring in rings:
        (x0, y0), (x1, y1) = ring.T[:, :, None], np.roll(ring, -1, axis=0).T[:, :, None]
        left = (x1 - x0) * (y - y0) - (x - x0) * (y1 - y0)
        turns += ((y0 <= y) & (y1 > y) & (left > 0)).sum(axis=0)
        turns -= ((y0 > y) & (y1 <= y) & (left < 0)).sum(axis=0)
    return turns


def distances(points, rings):
    best = np.full(len(points), math.inf)
    for ring in rings:
        start, step = ring[:, None], (np.roll(ring, -1, axis=0) - ring)[:, None]
        square = np.maximum((step**2).sum(axis=2), 1e-300)
        t = np.clip(((points - start) * step).sum(axis=2) / square, 0, 1)
        best = np.minimum(best, np.hypot(*(points - start - t[..., None] * step).transpose(2, 0, 1)).min(axis=0))
    return best


def judged(shapes, growth, rng):
    """Points beside the true outline, and whether they are inside."""
    points = []
    for shape in shapes:
        for ring in shape.true:
            at = rng.integers(0, len(ring), 40)
            step = np.roll(ring, -1, axis=0)[at] - ring[at]
            normal = step[:, ::-1] * [1, -1] / np.maximum(np.hypot(*step.T), 1e-9)[:, None]
            side = rng.choice([-1, 1], (40, 1)) * growth + rng.choice([-BESIDE, BESIDE], (40, 1))
            points.append(ring[at] + step / 2 + side * normal)
    points = np.concatenate(points)
    inside = np.zeros(len(points), bool)
    away = np.full(len(points), math.inf)
    for shape in shapes:
        within = windings(points, shape.true) != 0
        far = distances(points, shape.true)
        inside |= within | (far < growth)
        away = np.minimum(away, abs(np.where(within, -far, far) - growth))
    clear = away > CLEAR * BESIDE
    return points[clear], inside[clear]


def right(answer, points, inside):
    rings, rule = answer
    turns = windings(points, rings)
    got = turns % 2 != 0 if rule == "evenodd" else turns != 0
    return bool((got == inside).all())


# What each gives is made into rings for the judge after the clock has stopped.


def of_kurvo(region):
    return kurvo.polygons.arrays(region, TRUE), "nonzero"


def of_shapely(geometry):
    parts = getattr(geometry, "geoms", [geometry])
    rings = (ring for part in parts if not part.is_empty for ring in (part.exterior, *part.interiors))
    return [np.array(ring.coords)[:-1] for ring in rings], "evenodd"


def of_clipper(paths):
    return [np.array(path) / SCALE for path in paths if len(path) > 2], "nonzero"


def of_boolean(glyph):
    return polygons(glyph.draw, TRUE), "nonzero"


def clipped(operation, a, b=()):
    import pyclipper

    clipper = pyclipper.Pyclipper()
    clipper.AddPaths(a, pyclipper.PT_SUBJECT, True)
    if b:
        clipper.AddPaths(b, pyclipper.PT_CLIP, True)
    rule = pyclipper.PFT_NONZERO
    return clipper.Execute(operation, rule, rule)


def grown(a):
    import pyclipper

    offset = pyclipper.PyclipperOffset(2, DEVIATION * SCALE)
    offset.AddPaths(a, pyclipper.JT_ROUND, pyclipper.ET_CLOSEDPOLYGON)
    return offset.Execute(GROWTH * SCALE)


def pen_value(pen, shape):
    shape.draw(pen)
    return pen.value


# Quarter circles of buffers: as many parts as keep the deviation.
QUARTER = math.ceil(math.pi / 4 / math.acos(1 - DEVIATION / GROWTH))

# Question, how it is judged, then of each library what is made ready, asked and given to the judge.
QUESTIONS = {
    "overlaps removed": (0.0, {
        "kurvo": (lambda a, b: a.region, lambda r: r.simplify(), of_kurvo),
        "pyclipper": (lambda a, b: a.whole, lambda p: clipped(1, p), of_clipper),
        "booleanOperations": (lambda a, b: a.boolean(), lambda g: g.removeOverlap(), of_boolean),
    }),
    "union of two": (0.0, {
        "kurvo": (lambda a, b: (a.region, b.region), lambda p: p[0] | p[1], of_kurvo),
        "pyclipper": (lambda a, b: (a.whole, b.whole), lambda p: clipped(1, *p), of_clipper),
        "shapely": (lambda a, b: (a.multipolygon(), b.multipolygon()), lambda p: p[0].union(p[1]), of_shapely),
        "booleanOperations": (lambda a, b: (a.boolean(), b.boolean()), lambda p: p[0].union(p[1]), of_boolean),
    }),
    "offset by 20": (GROWTH, {
        "kurvo": (lambda a, b: a.region, lambda r: r.offset(GROWTH), of_kurvo),
        "pyclipper": (lambda a, b: clipped(1, a.whole), grown, of_clipper),
        "shapely": (lambda a, b: a.multipolygon(), lambda m: m.buffer(GROWTH, QUARTER), of_shapely),
    }),
    "area": ("area", {
        "kurvo": (lambda a, b: a.region, lambda r: r.area, float),
        "shapely": (lambda a, b: a.multipolygon(), lambda m: m.area, float),
        "fontTools": (lambda a, b: a, lambda a: pen_value(AreaPen(None), a), float),
    }),
    "length": ("length", {
        "kurvo": (lambda a, b: a.region, lambda r: r.length, float),
        "shapely": (lambda a, b: a.multipolygon(), lambda m: m.length, float),
        "fontTools": (lambda a, b: a, lambda a: pen_value(PerimeterPen(None), a), float),
    }),
    "100 points inside": ("points", {
        "kurvo": (lambda a, b: a, lambda q: q[0].region.locate(q[1]) == kurvo.INSIDE, list),
        "shapely": (lambda a, b: a.multipolygon(), lambda q: contains(*q), list),
        "fontTools": (lambda a, b: a, lambda q: [inside_by_pen(q[0], p) for p in q[1]], list),
    }),
}


def contains(geometry, points):
    from shapely.geometry import Point
    from shapely.prepared import prep

    ready = prep(geometry)
    return [ready.contains(Point(p)) for p in points]


def inside_by_pen(shape, point):
    pen = PointInsidePen(None, tuple(point), evenOdd=False)
    shape.draw(pen)
    return pen.getResult()


def truth(kind, shape, other, growth_rng):
    rings = shape.true
    if kind == "area":
        return sum(0.5 * np.cross(ring, np.roll(ring, -1, axis=0)).sum() for ring in rings)
    if kind == "length":
        return sum(np.hypot(*(np.roll(ring, -1, axis=0) - ring).T).sum() for ring in rings)
    shapes = [shape, other] if other else [shape]
    points, inside = judged(shapes, 0.0 if kind == "points" else kind, growth_rng)
    return (points[:100], inside[:100]) if kind == "points" else (points, inside)


def is_right(kind, answer, want, shape):
    if kind in ("area", "length"):
        slack = DEVIATION * (truth("length", shape, None, None) if kind == "area" else len(shape.rings))
        return abs(abs(answer) - abs(want)) <= slack
    return answer == want[1].tolist() if kind == "points" else right(answer, *want)


def ask(kind, library, shapes, wants):
    ready, question, given = library
    took, good, parts = [], 0, []
    for (a, b), want in zip(shapes, wants):
        try:
            times = []
            for _ in range(REPEATS):
                put = (ready(a, b), want[0]) if kind == "points" else ready(a, b)
                start = time.process_time_ns()
                answer = question(put)
                times.append(time.process_time_ns() - start)
            took.append(min(times) / 1000)
            good += is_right(kind, given(answer), want, a)
        except Exception as error:  # noqa: BLE001: whatever it is, it is no answer
            parts.append(type(error).__name__)
    return took, good, parts


def table():
    rng = np.random.default_rng(1)
    shapes = []
    for path in FONTS:
        glyphs = TTFont(path).getGlyphSet()
        letters = [name for name in sorted(glyphs.keys()) if len(name) < 9]
        found = 0
        for name in rng.permutation(letters):
            recording = DecomposingRecordingPen(glyphs)
            glyphs[name].draw(recording)
            if found < GLYPHS and 9 < len(recording.value) < 200:
                found += 1
                shapes.append((Shape(recording), Shape(recording, MOVED)))
    libraries = ["kurvo", "pyclipper", "shapely", "booleanOperations", "fontTools"]
    lines = ["| question | asked | " + " | ".join(libraries) + " |", "|---" * (2 + len(libraries)) + "|"]
    for name, (kind, asked) in QUESTIONS.items():
        wants = [truth(kind, a, b if "two" in name else None, rng) for a, b in shapes]
        row = [name, str(len(shapes))]
        for library in libraries:
            if library not in asked:
                row.append("")
                continue
            took, good, failed = ask(kind, asked[library], shapes, wants)
            cell = f"{statistics.mean(took):.0f} ({statistics.median(took):.0f})" if took else "-"
            row.append(cell + ("" if good == len(shapes) else f" {good} right"))
            if failed:
                print(f"{name}, {library}: {len(failed)} without an answer, {set(failed)}")
        lines.append("| " + " | ".join(row) + " |")
        print(lines[-1], flush=True)
    return "\n".join(lines)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("--write", action="store_true")
    asked = parser.parse_args()
    text = table()
    if asked.write:
        page = pathlib.Path(__file__).parents[2] / "docs" / "comparison.md"
        before, _, behind = page.read_text().partition("<!-- python -->\n")
        behind = behind.partition("<!-- end of python -->")[2]
        stamp = f"Measured on {time.strftime('%-d %B %Y')}, Python {platform.python_version()}.\n\n"
        page.write_text(f"{before}<!-- python -->\n{stamp}{text}\n\n<!-- end of python -->{behind}")


if __name__ == "__main__":
    main()
