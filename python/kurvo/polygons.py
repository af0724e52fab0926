"""shapely, both ways: polygons become lines, curves become polygons within a deviation."""

from __future__ import annotations

from typing import Any

import numpy as np

from . import _kurvo

__all__ = ["region", "to_shapely", "arrays"]


def _ring(ring: Any) -> _kurvo.Chain:
    points = np.asarray(ring.coords)[:, :2]
    if len(points) > 1 and (points[0] == points[-1]).all():
        points = points[:-1]
    return _kurvo.Chain.polyline(points, closed=True)


def region(geometry: Any) -> _kurvo.Region:
    """The region of a Polygon, a MultiPolygon or a collection of these, by the even-odd rule."""
    loops: list[_kurvo.Chain] = []

    def add(part: Any) -> None:
        if part.is_empty:
            return
        if hasattr(part, "geoms"):
            for inner in part.geoms:
                add(inner)
        elif part.geom_type == "Polygon":
            loops.extend(_ring(ring) for ring in (part.exterior, *part.interiors))
        else:
            raise TypeError(f"a {part.geom_type} has no inside")

    add(geometry)
    return _kurvo.Region(loops, rule="evenodd")


def arrays(shown: _kurvo.Region, deviation: float) -> list[np.ndarray[Any, Any]]:
    """The loops as closed polylines within a deviation (length), (n, 2) each.

    >>> import kurvo
    >>> [len(ring) for ring in kurvo.polygons.arrays(kurvo.Region.circle((0, 0), 1), 0.1)]
    [9]
    """
    return [loop.flatten(deviation) for loop in shown if len(loop)]


def to_shapely(shown: _kurvo.Region, deviation: float) -> Any:
    """A MultiPolygon within a deviation (length) of the region.

    The region is simplified first, so that its outer loops and holes are told apart.
    """
    from shapely.geometry import MultiPolygon, Polygon  # type: ignore[import]

    plain = shown.simplify()
    rings = [loop.flatten(deviation) for loop in plain]
    outer = [loop.area > 0 for loop in plain]
    parts: list[tuple[Any, list[Any]]] = []
    for ring, is_outer in zip(rings, outer):  # each outer loop is followed by its holes
        if is_outer:
            parts.append((ring, []))
        else:
            parts[-1][1].append(ring)
    return MultiPolygon([Polygon(shell, holes) for shell, holes in parts])
