"""Small SVG pictures, which notebooks show.

>>> import kurvo
>>> disc = kurvo.Region.circle((0, 0), 1)
>>> disc._repr_svg_().split(" ", 1)[0]
'<svg'
>>> picture = kurvo.picture.sheet([(disc, {"fill": "gold"}), (disc[0], {"stroke": "black"})])
>>> picture.count("<path")
2
"""

from __future__ import annotations

import math
import re
from typing import Iterable, Mapping, Union

from . import _kurvo
from .svg import path

__all__ = ["sheet", "svg"]

Shown = Union[_kurvo.Region, _kurvo.Chain, _kurvo.Curve]
Box = tuple[float, float, float, float]

_SIDE = 300  # pixels, of the longer side
_MARGIN = 0.05  # of it
_FINE = 1e-5  # of it: what is smaller is not written
_LINE = 1 / 150  # of it


def _boxes(shown: Shown) -> Iterable[Box]:
    parts: Iterable[_kurvo.Chain | _kurvo.Curve] = (
        list(shown) if isinstance(shown, _kurvo.Region) else [shown]
    )
    for part in parts:
        if isinstance(part, _kurvo.Curve) or len(part):
            (x0, y0), (x1, y1) = part.box.tolist()
            yield x0, y0, x1, y1


def sheet(layers: Iterable[tuple[Shown, Mapping[str, str]]], *, side: int = _SIDE) -> str:
    """A picture in which y points up, so many pixels long, of layers from the lowest up.

    Each is a shape with attributes of SVG. Regions are filled by their rule, others are lines.
    """
    shapes = list(layers)
    boxes = [box for shown, _ in shapes for box in _boxes(shown)] or [(0.0, 0.0, 1.0, 1.0)]
    x0, y0 = (min(box[i] for box in boxes) for i in (0, 1))
    x1, y1 = (max(box[i] for box in boxes) for i in (2, 3))
    size = max(x1 - x0, y1 - y0) or 1.0
    pad = _MARGIN * size
    width, height = x1 - x0 + 2 * pad, y1 - y0 + 2 * pad
    scale = side / max(width, height)
    decimals = max(0, math.ceil(-math.log10(_FINE * size)))

    def shorter(number: re.Match[str]) -> str:
        text = f"{float(number[0]):.{decimals}f}"
        return text.rstrip("0").rstrip(".") if decimals else text

    paths = []
    for shown, attributes in shapes:
        style = {"fill": "none", "stroke": "none", "stroke-width": f"{_LINE * size:.3g}"}
        if isinstance(shown, _kurvo.Region):
            style["fill-rule"] = "evenodd" if shown.rule == "evenodd" else "nonzero"
        style.update(attributes)
        words = " ".join(f'{name}="{value}"' for name, value in style.items())
        text = re.sub(r"-?\d+\.\d+(?:e[+-]\d+)?|-?\d+e[+-]\d+", shorter, path(shown))
        paths.append(f'<path d="{text}" {words}/>')
    return (
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{scale * width:.0f}" '
        f'height="{scale * height:.0f}" viewBox="{x0 - pad:.9g} {-(y1 + pad):.9g} '
        f'{width:.9g} {height:.9g}"><g transform="scale(1 -1)">\n' + "\n".join(paths) + "\n</g></svg>\n"
    )


def svg(shown: Shown) -> str:
    """A picture of one shape."""
    fill = {"fill": "#9cf"} if isinstance(shown, _kurvo.Region) else {}
    return sheet([(shown, {"stroke": "#036", **fill})])
