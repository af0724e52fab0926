"""Small SVG pictures, which notebooks show.

>>> import kurvo
>>> kurvo.Region.circle((0, 0), 1)._repr_svg_().split(" ", 1)[0]
'<svg'
"""

from __future__ import annotations

from . import _kurvo
from .svg import path

__all__ = ["svg"]

_SIDE = 300  # pixels, of the longer side
_MARGIN = 0.05  # of it


def _box(shown: _kurvo.Region | _kurvo.Chain | _kurvo.Curve) -> tuple[float, float, float, float]:
    loops = [shown] if not isinstance(shown, _kurvo.Region) else [c for c in shown if len(c)]
    corners = [loop.box.tolist() for loop in loops] or [[[0.0, 0.0], [1.0, 1.0]]]
    return (
        min(low[0] for low, _ in corners),
        min(low[1] for low, _ in corners),
        max(high[0] for _, high in corners),
        max(high[1] for _, high in corners),
    )


def svg(shown: _kurvo.Region | _kurvo.Chain | _kurvo.Curve) -> str:
    """A picture in which y points up: regions filled by their rule, others as lines."""
    x0, y0, x1, y1 = _box(shown)
    size = max(x1 - x0, y1 - y0) or 1.0
    pad = _MARGIN * size
    width, height = x1 - x0 + 2 * pad, y1 - y0 + 2 * pad
    scale = _SIDE / max(width, height)
    rule, fill = "nonzero", "none"
    if isinstance(shown, _kurvo.Region):
        rule, fill = ("evenodd" if shown.rule == "evenodd" else "nonzero"), "#9cf"
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{scale * width:.0f}" '
        f'height="{scale * height:.0f}" viewBox="{x0 - pad:.9g} {-(y1 + pad):.9g} '
        f'{width:.9g} {height:.9g}"><path transform="scale(1 -1)" d="{path(shown)}" '
        f'fill="{fill}" fill-rule="{rule}" stroke="#036" stroke-width="{size / 150:.3g}"/></svg>'
    )
