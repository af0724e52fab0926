"""SVG path text: read as chains, written as curves that read back as the same.

y points where the text has it: down on most screens.

>>> import kurvo
>>> slot = kurvo.svg.region("M0 0H8A2 2 0 0 1 8 4H0A2 2 0 0 1 0 0Z")
>>> [curve.type for curve in slot[0]]
['line', 'arc', 'line', 'arc']
>>> kurvo.svg.path(kurvo.Region.rectangle((0, 0), (2, 1)))
'M0 0L2 0L2 1L0 1L0 0Z'
"""

from __future__ import annotations

import math
import re
from typing import Iterable, Iterator

from . import _kurvo

__all__ = ["chains", "region", "path"]

Curve, Chain, Region = _kurvo.Curve, _kurvo.Chain, _kurvo.Region
Pair = tuple[float, float]

_NUMBER = r"[+-]?(?:\d+\.?\d*|\.\d+)(?:[eE][+-]?\d+)?"
_TOKEN = re.compile(rf"[\s,]*(?:([MmZzLlHhVvCcSsQqTtAa])|({_NUMBER})|$)")
_FLAG = re.compile(r"[\s,]*([01])")
_COUNTS = {"M": 2, "L": 2, "H": 1, "V": 1, "C": 6, "S": 4, "Q": 4, "T": 2, "A": 7, "Z": 0}

# Of what SVG has no form for, in parts of the longer side of its box.
_DEVIATION = 1e-9
_WIDEST_ARC = 2.1  # radians: a wider one is written in parts, or its centre would lose digits
_CIRCLE = 1e-9  # relative: radii that differ by less are those of a circle


def _steps(text: str) -> Iterator[tuple[str, list[float]]]:
    """Commands with one set of numbers each."""
    at, command = 0, ""
    while True:
        token = _TOKEN.match(text, at)
        if not token:
            raise ValueError(f"path text: offset {at}: a command or a number is needed")
        if token.end() == len(text) and not token.group(1) and not token.group(2):
            return
        if token.group(1):
            command, at = token.group(1), token.end()
            if command in "Zz":
                yield command, []
                command = ""
                continue
        elif not command:
            raise ValueError(f"path text: offset {at}: a command is needed")
        numbers: list[float] = []
        for i in range(_COUNTS[command.upper()]):
            flag = command in "Aa" and i in (3, 4)
            token = (_FLAG if flag else _TOKEN).match(text, at)
            number = token and token.group(1 if flag else 2)
            if not token or not number:
                raise ValueError(f"path text: offset {at}: {command} wants another number")
            numbers.append(float(number))
            at = token.end()
        yield command, numbers
        command = {"M": "L", "m": "l"}.get(command, command)


def _arc(start: Pair, numbers: list[float], end: Pair) -> list[_kurvo.Curve]:
    """Circular arcs as such, others as rational Bezier curves (W3C, SVG 1.1, F.6)."""
    rx, ry, degrees, large, positive = abs(numbers[0]), abs(numbers[1]), *numbers[2:5]
    if start == end:
        return []
    if rx == 0 or ry == 0:
        return [Curve.line(start, end)]
    cos, sin = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    # In the frame in which the ellipse is the unit circle the chord runs from p to -p.
    dx, dy = (start[0] - end[0]) / 2, (start[1] - end[1]) / 2
    px, py = (cos * dx + sin * dy) / rx, (cos * dy - sin * dx) / ry
    half = math.hypot(px, py)
    grow = max(1.0, half)
    rx, ry, px, py, half = rx * grow, ry * grow, px / grow, py / grow, min(half, 1.0)
    away = math.sqrt((1 - half) * (1 + half)) * (1 if large != positive else -1) / half
    cx, cy = away * py, -away * px
    middle = ((start[0] + end[0]) / 2, (start[1] + end[1]) / 2)

    def image(x: float, y: float) -> Pair:
        x, y = rx * (x + cx), ry * (y + cy)
        return middle[0] + cos * x - sin * y, middle[1] + sin * x + cos * y

    if abs(rx - ry) <= _CIRCLE * rx:
        return [Curve.arc_between(image(0, 0), start, end, bool(positive))]
    a = math.atan2(py - cy, px - cx)
    sweep = math.atan2(-py - cy, -px - cx) - a
    sweep += math.tau * ((sweep < 0) - (sweep > 0)) if (sweep > 0) != bool(positive) else 0
    parts = math.ceil(abs(sweep) / (math.pi / 2) - 1e-9)
    step = sweep / parts
    weight = math.cos(step / 2)
    ends = [start, *(image(math.cos(a + i * step), math.sin(a + i * step)) for i in range(1, parts))]
    ends.append(end)
    curves = []
    for i in range(parts):
        at = a + (i + 0.5) * step
        control = image(math.cos(at) / weight, math.sin(at) / weight)
        curves.append(
            Curve.rational_bezier([ends[i], control, ends[i + 1]], [1.0, weight, 1.0])
        )
    return curves


class _Reader:
    def __init__(self) -> None:
        self.done: list[_kurvo.Chain] = []
        self.curves: list[_kurvo.Curve] = []
        self.at: Pair = (0.0, 0.0)
        self.start: Pair = (0.0, 0.0)
        self.control: Pair | None = None  # of the step before, for S and T
        self.before = ""

    def finish(self) -> None:
        if self.curves:
            self.done.append(Chain(self.curves))
        self.curves = []

    def line(self, to: Pair) -> None:
        if to != self.at:
            self.curves.append(Curve.line(self.at, to))

    def step(self, command: str, numbers: list[float]) -> None:
        kind = command.upper()
        if not self.before and kind != "M":
            raise ValueError("path text: it is to begin with M or m")
        ox, oy = self.at if command.islower() else (0.0, 0.0)
        if kind == "H":
            points = [(ox + numbers[0], self.at[1])]
        elif kind == "V":
            points = [(self.at[0], oy + numbers[0])]
        else:
            plain = numbers[5:] if kind == "A" else numbers
            points = [(ox + x, oy + y) for x, y in zip(plain[::2], plain[1::2])]
        if kind in "ST":
            same = self.control and self.before in ("CS" if kind == "S" else "QT")
            cx, cy = self.control if same and self.control else self.at
            points.insert(0, (2 * self.at[0] - cx, 2 * self.at[1] - cy) if same else self.at)
        self.draw(kind, numbers, points)
        self.control = points[-2] if kind in "CSQT" else None
        self.before = kind

    def draw(self, kind: str, numbers: list[float], points: list[Pair]) -> None:
        end = points[-1] if points else self.start
        if kind == "M":
            self.finish()
            self.start = end
        elif kind in "LHVZ":
            self.line(end)
        elif kind == "A":
            self.curves += _arc(self.at, numbers, end)
        else:
            self.curves.append(Curve.bezier([self.at, *points]))
        if kind == "Z":
            self.finish()
        self.at = end


def chains(text: str) -> list[_kurvo.Chain]:
    """The subpaths of path text. ValueError names the offset of a fault."""
    reader = _Reader()
    for command, numbers in _steps(text):
        reader.step(command, numbers)
    reader.finish()
    return reader.done


def region(text: str, rule: str = "nonzero") -> _kurvo.Region:
    """The region of path text; open subpaths are closed by lines."""
    return Region(chains(text), rule=rule, gap=math.inf)


def _numbers(*values: float) -> str:
    return " ".join(repr(v)[:-2] if repr(v).endswith(".0") else repr(v) for v in values)


def _curve_text(curve: _kurvo.Curve) -> str:
    kind = curve.type
    if kind == "arc":
        return _arc_text(curve)
    if kind in ("line", "bezier") and curve.degree <= 3:
        points = curve.points[1:] if len(curve.points) > 1 else curve.points
        return "LLQC"[curve.degree] + _numbers(*points.ravel().tolist())
    if kind == "composite":
        return "".join(_curve_text(piece) for piece in curve.pieces)
    (x0, y0), (x1, y1) = curve.box.tolist()
    deviation = _DEVIATION * max(x1 - x0, y1 - y0) or _DEVIATION
    return "".join(_curve_text(cubic) for cubic in Chain([curve]).fit("cubics", deviation))


def _arc_text(arc: _kurvo.Curve) -> str:
    sweep = arc.length() / arc.radius if arc.radius else 0.0
    parts = [arc]
    if sweep > _WIDEST_ARC:
        count = math.ceil(sweep / _WIDEST_ARC)
        parts = list(arc.split([i / count for i in range(1, count)]))
    flag = int(arc.counter_clockwise)
    return "".join(
        "A" + _numbers(arc.radius, arc.radius, 0.0, 0.0, float(flag), *part.points[1].tolist())
        for part in parts
    )


def path(shown: _kurvo.Region | _kurvo.Chain | _kurvo.Curve) -> str:
    """Path text of a region, a chain or a curve, each number with the digits that it needs.

    Lines, arcs and Bezier curves up to degree 3 are written as they are, others as cubics within
    1e-9 of their size. Gaps between curves are closed by lines, and so are regions.
    """
    if isinstance(shown, Region):
        return "".join(path(loop) + "Z" for loop in shown if len(loop))
    text, at = "", None
    curves: Iterable[_kurvo.Curve] = (shown,) if isinstance(shown, Curve) else iter(shown)
    for curve in curves:
        start = curve.points[0] if curve.type in ("line", "arc") else curve.start
        x, y = start.tolist()
        if (x, y) != at:
            text += ("L" if text else "M") + _numbers(x, y)
        text += _curve_text(curve)
        end = curve.points[1] if curve.type in ("line", "arc") else curve.end
        at = tuple(end.tolist())
    return text
