"""Drawing on axes of matplotlib, which is loaded when something is drawn."""

from __future__ import annotations

from typing import Any, Iterable

import numpy as np

from . import _kurvo

__all__ = ["plot", "vertices"]

_CHORD = 1e-3  # deviation of what is neither a line nor a Bezier curve, in parts of its size
_COMB = 33  # teeth of the comb of a curve

_MOVE, _LINE, _QUADRATIC, _CUBIC, _CLOSE = 1, 2, 3, 4, 79  # codes of matplotlib's paths

Shown = Any  # Region, Chain or Curve


def _chains(shown: Shown) -> list[_kurvo.Chain]:
    if isinstance(shown, _kurvo.Curve):
        return [_kurvo.Chain([shown])]
    return [shown] if isinstance(shown, _kurvo.Chain) else [loop for loop in shown if len(loop)]


def vertices(shown: Shown) -> tuple[np.ndarray[Any, Any], list[int]]:
    """Vertices, (n, 2), and codes of a path of matplotlib. Curves are cubics in it."""
    points: list[np.ndarray[Any, Any]] = []
    codes: list[int] = []
    for chain in _chains(shown):
        low, high = chain.box
        deviation = _CHORD * float(max(high - low)) or _CHORD
        cubics = chain.fit("cubics", deviation)
        points.append(cubics[0].points[:1])
        codes.append(_MOVE)
        for curve in cubics:
            points.append(curve.points[1:])
            step = _LINE if curve.type == "line" else {1: _LINE, 2: _QUADRATIC}.get(
                curve.degree, _CUBIC
            )
            codes += [step] * (len(curve.points) - 1)
        if isinstance(shown, _kurvo.Region):
            points.append(points[-1][-1:])
            codes.append(_CLOSE)
    return (np.concatenate(points) if points else np.empty((0, 2))), codes


def _comb(curve: _kurvo.Curve, scale: float) -> np.ndarray[Any, Any]:
    """Teeth against the curvature vector: pairs of points, (n, 2, 2)."""
    t = np.linspace(*curve.domain, _COMB)
    feet = curve.position(t)
    return np.stack([feet, feet - scale * curve.curvature(t)], axis=1)


def plot(
    shown: Shown, ax: Any = None, *, polygons: bool = False, combs: float = 0.0, **style: Any
) -> Any:
    """Draws a region filled, chains and curves as lines; gives the axes back.

    polygons draws control polygons besides, combs the curvature times so much (length squared).
    style goes to matplotlib's PathPatch.
    """
    from matplotlib.collections import LineCollection  # type: ignore[import]
    from matplotlib.patches import PathPatch  # type: ignore[import]
    from matplotlib.path import Path  # type: ignore[import]

    if ax is None:
        from matplotlib import pyplot  # type: ignore[import]

        ax = pyplot.gca()
        ax.set_aspect("equal")
    points, codes = vertices(shown)
    if codes:
        style.setdefault("fill", isinstance(shown, _kurvo.Region))
        ax.add_patch(PathPatch(Path(points, codes), **style))
    curves: Iterable[_kurvo.Curve] = (
        piece for chain in _chains(shown) for curve in chain for piece in curve.pieces
    )
    for curve in curves:
        if polygons and len(curve.points) > 2:
            ax.add_collection(LineCollection([curve.points], colors="0.6", linewidths=0.7))
        if combs and curve.type != "line":
            ax.add_collection(LineCollection(_comb(curve, combs), colors="C3", linewidths=0.5))
    ax.autoscale_view()
    return ax
