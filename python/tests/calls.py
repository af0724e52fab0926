"""What takes arrays, by name: each function is given one and asks about it."""

import kurvo

Curve, Chain, Region = kurvo.Curve, kurvo.Chain, kurvo.Region
BEND = Curve.bezier([(0, 0), (1, 2), (3, 0)])
LINE = Curve.line((0, 0), (4, 0))
SQUARE = Region.rectangle((0, 0), (3, 3))
BATCH = kurvo.OutlineBatch.of([SQUARE, Region.circle((1, 1), 1), Region()])
KNOTS = [0, 0, 0, 1, 1, 1]
WORDS, NUMBERS = SQUARE.pack()

CALLS = {
    "position": BEND.position,
    "derivative": BEND.derivative,
    "curvature": BEND.curvature,
    "nearest": BEND.nearest,
    "parameter": LINE.parameter,
    "split": BEND.split,
    "moved": BEND.moved,
    "mirrored": lambda a: BEND.mirrored((0, 0), a),
    "line": lambda a: Curve.line(a, (1, 5)),
    "bezier": Curve.bezier,
    "weights": lambda a: Curve.rational_bezier([(0, 0), (1, 1), (2, 0)], a),
    "bspline": lambda a: Curve.bspline(3, a, KNOTS),
    "knots": lambda a: Curve.bspline(3, [(0, 0), (1, 1), (2, 0)], a),
    "widths": lambda a: Curve.composite([LINE], a),
    "through": Curve.through,
    "polyline": Chain.polyline,
    "places": SQUARE[0].places,
    "lengths": SQUARE[0].lengths,
    "chain nearest": SQUARE[0].nearest,
    "trim": lambda a: SQUARE[0].trim(a, (1, 0.5)),
    "dashes": lambda a: SQUARE[0].stroke(0.1, dashes=a),
    "polygon": Region.polygon,
    "rectangle": lambda a: Region.rectangle(a, (1, 1)),
    "locate": SQUARE.locate,
    "turns": SQUARE.turns,
    "unpack words": lambda a: Region.unpack(a, NUMBERS),
    "unpack numbers": lambda a: Region.unpack(WORDS, a),
    "batch offset": BATCH.offset,
    "batch stroke": lambda a: BATCH.stroke(0.1, a),
    "batch nearest": BATCH.nearest,
}
# These take numbers, one at a time.
SCALARS = {
    "arc": lambda x: Curve.arc((0, 0), x, 0, x),
    "order": lambda x: Curve.bspline(x, [(0, 0), (1, 1), (2, 0)], KNOTS),
    "through order": lambda x: Curve.through([(0, 0), (1, 1), (2, 0)], x),
    "times": lambda x: BEND.derivative(0.5, x),
    "length": lambda x: BEND.length(0, x),
    "scaled": BEND.scaled,
    "rotated": BEND.rotated,
    "extended": lambda x: LINE.extended(x, x),
    "curve offset": lambda x: BEND.offset(x, 1e-3),
    "deviation": lambda x: BEND.offset(0.1, x),
    "flatten": SQUARE[0].flatten,
    "fit": lambda x: SQUARE.fit("arcs", x),
    "stroke": lambda x: SQUARE[0].stroke(x),
    "offset": SQUARE.offset,
    "tol": lambda x: SQUARE.simplify(tol=x),
    "gap": lambda x: Region(SQUARE[0], gap=x),
    "phase": lambda x: SQUARE[0].stroke(0.1, dashes=[1, 1], phase=x),
    "loop": lambda x: SQUARE[x],
    "tolerance": kurvo.tolerance,
    "threads": lambda x: BATCH.area(threads=x),
    "batch": lambda x: BATCH[x],
    "batch deviation": BATCH.flatten,
}
