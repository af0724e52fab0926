"""Planar curves, chains and regions: Kurvo for Python and numpy.

>>> import kurvo
>>> plate = kurvo.Region.rectangle((0, 0), (90, 40)) - kurvo.Region.circle((20, 20), 8)
>>> round(plate.offset(-1).area, 3)
3089.531

Lengths are in the caller's unit, angles in radians, y points up. Points are pairs or arrays whose
last side is 2 or 3 long; z is left out. Every call that asks about many points or parameters takes
an array of any shape and answers with arrays of that shape. Numbers that are not finite, and what
the library refuses, raise kurvo.Error, wrong types TypeError, wrong shapes and words ValueError.

Objects are values: nothing changes them once they are made, but for a curve's `attributes`. So any
number of threads may ask them. What a region holds, its loops, their curves and the arrays of
these, are views, which keep it alive.

The doors to other packages are modules, loaded when they are named: kurvo.svg, kurvo.polygons
(shapely), kurvo.fonts (fontTools), kurvo.dxf (ezdxf), kurvo.plotting (matplotlib), kurvo.cluster
(dask.distributed).
"""

from __future__ import annotations

import importlib
from typing import Any

from ._kurvo import (
    INSIDE,
    ON,
    OUTSIDE,
    Chain,
    Curve,
    Moments,
    Region,
    Report,
    outline_version,
    tolerance,
    tolerances,
)
from .batch import OutlineBatch
from .errors import Error, OutOfMemory, Stopped

__all__ = [
    "INSIDE",
    "ON",
    "OUTSIDE",
    "Chain",
    "Curve",
    "Error",
    "Moments",
    "OutOfMemory",
    "OutlineBatch",
    "Region",
    "Report",
    "Stopped",
    "outline_version",
    "tolerance",
    "tolerances",
]

_DOORS = ("cluster", "dxf", "fonts", "picture", "plotting", "polygons", "svg")


def __getattr__(name: str) -> Any:
    if name in _DOORS:
        return importlib.import_module(f"{__name__}.{name}")
    raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
