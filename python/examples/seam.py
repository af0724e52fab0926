"""A sleeve of a sewing pattern: its seam allowance, and notches that meet those of the armhole.

    seam.py [FOLDER]

The allowance is a parallel of the seam line, with square corners, and it is wider at the hem.
Writes seam.svg, true to size: a user unit is a millimetre.
"""

import pathlib
import sys

import kurvo
import numpy as np

ALLOWANCE, HEM = 10.0, 30.0  # millimetres
NOTCH = 6.0  # its length

CAP = [(0, 0), (45, 18), (95, 95), (160, 130), (225, 100), (285, 22), (330, 0)]  # sleeve head
WRIST = [(270, -380), (60, -380)]


def corners(chain):
    return [tuple(curve.start.tolist()) for curve in chain]


def main(folder="."):
    head = kurvo.Curve.through(CAP)
    under = [kurvo.Curve.line(CAP[-1], WRIST[0]), kurvo.Curve.line(WRIST[1], CAP[0])]
    hem = kurvo.Curve.line(*WRIST)
    seam = kurvo.Chain([head, under[0], hem, under[1]])
    piece = kurvo.Region(seam)

    cut = piece.offset(ALLOWANCE, join="miter", miter_limit=4)
    bottom = cut[0].box[0][1]
    low = [p for p in corners(cut[0]) if p[1] < bottom + 1e-6]
    cut = cut | kurvo.Region.rectangle(min(low), (max(low)[0], bottom + ALLOWANCE - HEM))

    # Notches where the armhole has its own: so far along the head from each end.
    length = head.length()
    places = kurvo.Chain([head]).places(np.array([110.0, length - 110.0, length - 120.0]))
    notches = []
    for place in places:
        at, along = place["point"][:2], place["tangent"][:2]
        outside = np.array([-along[1], along[0]]) / np.hypot(*along)
        notches.append(kurvo.Curve.line(at + outside * ALLOWANCE, at + outside * (ALLOWANCE - NOTCH)))
    thin = {"stroke": "black", "stroke-width": "1"}
    picture = kurvo.picture.sheet([
        (cut, {"fill": "#f4ead5", **thin}),
        (seam, {**thin, "stroke-dasharray": "6 4"}),
        *[(notch, {**thin, "stroke-width": "2", "stroke": "#c00"}) for notch in notches],
    ], side=700)
    (pathlib.Path(folder) / "seam.svg").write_text(picture)
    print(f"seam line {seam.length:.1f} mm, of it the head {length:.1f}; cloth {cut.area / 1e6:.4f} m2")
    return piece, cut


if __name__ == "__main__":
    main(*sys.argv[1:])
