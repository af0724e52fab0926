"""fontTools, both ways: what draws on a pen becomes a region, a region draws on any pen.

fontTools itself is loaded only by `glyph`; regions are drawn on any object with the methods of a
pen.
"""

from __future__ import annotations

from typing import Any, Optional

from . import _kurvo

__all__ = ["RegionPen", "glyph", "draw"]

Pair = tuple[float, float]


class RegionPen:
    """A pen that gathers contours; open ones are closed.

    >>> import kurvo
    >>> pen = kurvo.fonts.RegionPen()
    >>> pen.moveTo((0, 0)); pen.lineTo((4, 0)); pen.qCurveTo((4, 4), (0, 4)); pen.closePath()
    >>> [curve.type for curve in pen.region()[0]]
    ['line', 'bezier', 'line']
    """

    def __init__(self, glyphs: Any = None) -> None:
        self._glyphs = glyphs  # by name, for components
        self._loops: list[_kurvo.Chain] = []
        self._curves: list[_kurvo.Curve] = []
        self._start: Optional[Pair] = None
        self._at: Pair = (0.0, 0.0)

    def region(self, rule: str = "nonzero") -> _kurvo.Region:
        """What was drawn."""
        return _kurvo.Region(self._loops, rule=rule)

    def moveTo(self, point: Pair) -> None:  # noqa: N802: the names of pens
        self._start = self._at = (float(point[0]), float(point[1]))

    def lineTo(self, point: Pair) -> None:  # noqa: N802
        self._add([point])

    def curveTo(self, *points: Pair) -> None:  # noqa: N802
        if len(points) <= 3:
            return self._add(list(points))
        from fontTools.pens.basePen import decomposeSuperBezierSegment  # type: ignore[import]

        for part in decomposeSuperBezierSegment(points):
            self._add(list(part))

    def qCurveTo(self, *points: Optional[Pair]) -> None:  # noqa: N802
        """A TrueType spline: between two control points lies a point half-way.

        Without a last point, which is None, it is closed and all are control points.
        """
        controls = [p for p in points if p is not None]
        if points[-1] is None:
            first, last = controls[0], controls[-1]
            self.moveTo(((first[0] + last[0]) / 2, (first[1] + last[1]) / 2))
            controls.append(self._at)
        for i, control in enumerate(controls[:-1]):
            end = controls[i + 1]
            if i + 2 < len(controls):
                end = ((control[0] + end[0]) / 2, (control[1] + end[1]) / 2)
            self._add([control, end])
        if len(controls) == 1:
            self._add(controls)

    def closePath(self) -> None:  # noqa: N802
        if self._start is not None and self._at != self._start:
            self._add([self._start])
        if self._curves:
            self._loops.append(_kurvo.Chain(self._curves))
        self._curves, self._start = [], None

    endPath = closePath

    def addComponent(self, name: str, transformation: Any) -> None:  # noqa: N802
        from fontTools.pens.transformPen import TransformPen  # type: ignore[import]

        self._glyphs[name].draw(TransformPen(self, transformation))

    def _add(self, points: list[Pair]) -> None:
        to = [(float(x), float(y)) for x, y in points]
        if len(to) > 1:
            self._curves.append(_kurvo.Curve.bezier([self._at, *to]))
        elif to[0] != self._at:
            self._curves.append(_kurvo.Curve.line(self._at, to[0]))
        self._at = to[-1]


def glyph(glyphs: Any, name: str) -> _kurvo.Region:
    """A glyph of a glyph set of fontTools, components included, by the non-zero rule."""
    pen = RegionPen(glyphs)
    glyphs[name].draw(pen)
    return pen.region()


def draw(
    shown: _kurvo.Region, pen: Any, deviation: float, *, form: str = "cubics"
) -> None:
    """Draws on a pen by lines and 'cubics' or 'quadratics' within a deviation (length)."""
    for loop in shown.fit(form, deviation):
        if not len(loop):
            continue
        start = tuple(loop[0].points[0].tolist())
        pen.moveTo(start)
        for i, curve in enumerate(loop):
            points = [tuple(p) for p in curve.points[1:].tolist()]
            if i + 1 == len(loop) and len(points) == 1 and points[0] == start:
                break  # closing draws it
            {1: pen.lineTo, 2: pen.qCurveTo, 3: pen.curveTo}[len(points)](*points)
        pen.closePath()
