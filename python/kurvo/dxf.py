"""ezdxf, both ways: lines, arcs, circles, polylines with bulges and splines as what they are.

Entities are read by their attributes, so that this module loads nothing by itself.
"""

from __future__ import annotations

import math
from typing import Any, Iterable

from . import _kurvo

__all__ = ["curves", "region", "add"]

Curve = _kurvo.Curve


def _flat(point: Any) -> tuple[float, float]:
    return float(point[0]), float(point[1])


def _bulge(start: Any, end: Any, bulge: float) -> _kurvo.Curve:
    """The bulge is the tangent of a quarter of the sweep, counter-clockwise positive."""
    if bulge == 0:
        return Curve.line(start, end)
    # From the middle of the chord to the centre, in chords turned by a quarter to the left.
    off = (1 / bulge - bulge) / 4
    dx, dy = end[0] - start[0], end[1] - start[1]
    centre = ((start[0] + end[0]) / 2 - off * dy, (start[1] + end[1]) / 2 + off * dx)
    return Curve.arc_between(centre, start, end, bulge > 0)


def _polyline(points: list[Any], closed: bool) -> list[_kurvo.Curve]:
    ends = points[1:] + points[:1] if closed else points[1:]
    pairs = zip(points, ends)
    return [_bulge(_flat(a), _flat(b), a[2]) for a, b in pairs if _flat(a) != _flat(b)]


def _spline(entity: Any) -> _kurvo.Curve:
    points = [_flat(p) for p in entity.control_points]
    order, knots, weights = entity.dxf.degree + 1, list(entity.knots), list(entity.weights)
    if weights:
        return Curve.nurbs(order, points, weights, knots)
    return Curve.bspline(order, points, knots)


def curves(entities: Iterable[Any]) -> list[_kurvo.Curve]:
    """LINE, ARC, CIRCLE, LWPOLYLINE and SPLINE as curves, in their order.

    TypeError names another kind; so does one whose extrusion is not up.
    """
    out: list[_kurvo.Curve] = []
    for entity in entities:
        kind, data = entity.dxftype(), entity.dxf
        if data.get("extrusion", (0, 0, 1))[2] <= 0:
            raise TypeError(f"a {kind} that is seen from below")
        if kind == "LINE":
            out.append(Curve.line(_flat(data.start), _flat(data.end)))
        elif kind == "ARC":
            start, end = math.radians(data.start_angle), math.radians(data.end_angle)
            sweep = (end - start) % math.tau or math.tau
            out.append(Curve.arc(_flat(data.center), data.radius, start, sweep))
        elif kind == "CIRCLE":
            out.append(Curve.circle(_flat(data.center), data.radius))
        elif kind == "LWPOLYLINE":
            out += _polyline(list(entity.get_points("xyb")), entity.closed)
        elif kind == "SPLINE":
            out.append(_spline(entity))
        else:
            raise TypeError(f"a {kind} is no curve that is read here")
    return out


def region(entities: Iterable[Any], *, gap: float = 0.0, rule: str = "evenodd") -> _kurvo.Region:
    """The region that entities in any order and direction go around; what stays open is left."""
    closed, _ = _kurvo.Chain.join(curves(entities), gap=gap)
    return _kurvo.Region(list(closed), rule=rule)


def add(
    shown: _kurvo.Region | _kurvo.Chain | _kurvo.Curve, layout: Any, **attributes: Any
) -> list[Any]:
    """Adds entities to a layout, lines, arcs and splines; attributes as dxfattribs."""
    if isinstance(shown, Curve):
        return [_entity(piece, layout, attributes) for piece in shown.pieces]
    return [entity for part in shown for entity in add(part, layout, **attributes)]


def _entity(curve: _kurvo.Curve, layout: Any, attributes: dict[str, Any]) -> Any:
    points = curve.points.tolist()
    if curve.type == "composite":
        return [_entity(piece, layout, attributes) for piece in curve.pieces]
    if curve.type == "line":
        return layout.add_line(*points, dxfattribs=attributes)
    if curve.type == "arc":
        centre = curve.centre
        ends = points if curve.counter_clockwise else points[::-1]
        angles = [math.degrees(math.atan2(y - centre[1], x - centre[0])) for x, y in ends]
        return layout.add_arc(centre.tolist(), curve.radius, *angles, dxfattribs=attributes)
    count = len(points)
    order = count if curve.knots is None else len(curve.knots) - count
    knots = [0.0] * order + [1.0] * order if curve.knots is None else curve.knots.tolist()
    flat = [(x, y, 0.0) for x, y in points]
    if curve.weights is not None:
        return layout.add_rational_spline(
            flat, curve.weights.tolist(), order - 1, knots, dxfattribs=attributes
        )
    return layout.add_open_spline(flat, order - 1, knots, dxfattribs=attributes)
