"""Curves: makers, views, questions, errors, pickling."""

import gc
import math
import pickle
import unittest

import numpy as np

import kurvo

Curve = kurvo.Curve
POINTS = np.array([(0, 0), (1, 2), (3, 2), (4, 0)], float)
KNOTS = [0, 0, 0, 1, 2, 2, 2]
W = [1, 2, 0.5, 1]
CURVES = {
    "line": Curve.line((0, 0), (4, 2)),
    "arc": Curve.arc((1, 1), 2, 0.5, -2),
    "bezier": Curve.bezier(POINTS),
    "rational_bezier": Curve.rational_bezier(POINTS, W),
    "bspline": Curve.bspline(3, POINTS, KNOTS),
    "nurbs": Curve.nurbs(3, POINTS, W, KNOTS),
    "composite": Curve.composite([Curve.line((0, 0), (1, 0)), Curve.line((1, 0), (1, 3))], [1, 2]),
}


def bernstein(t, points, weights=None):
    """De Casteljau's points in homogeneous coordinates."""
    w = np.ones(len(points)) if weights is None else np.asarray(weights, float)
    h = np.column_stack([points * w[:, None], w])
    h = np.repeat(h[None], len(t), axis=0)
    for _ in range(len(points) - 1):
        h = h[:, :-1] * (1 - t)[:, None, None] + h[:, 1:] * t[:, None, None]
    return h[:, 0, :2] / h[:, 0, 2:]


class Questions(unittest.TestCase):
    def test_types_domains_and_positions(self):
        t = np.linspace(0, 1, 12).reshape(3, 4)
        flat = t.ravel()
        angle = 0.5 - 2 * flat
        want = {
            "line": flat[:, None] * [4, 2],
            "arc": 1 + 2 * np.column_stack([np.cos(angle), np.sin(angle)]),
            "bezier": bernstein(flat, POINTS),
            "rational_bezier": bernstein(flat, POINTS, W),
            # The first span as a Bezier curve: its last point is half-way.
            "bspline": bernstein(flat, np.array([(0, 0), (1, 2), (2, 2)], float)),
        }
        for name, curve in CURVES.items():
            self.assertEqual(curve.type, name)
            got = curve.position(t)
            self.assertEqual(got.shape, (3, 4, 2))
            if name in want:
                np.testing.assert_allclose(got.reshape(-1, 2), want[name], atol=1e-13)
            for i in np.ndindex(t.shape):  # one at a time: the same bits
                self.assertEqual(got[i].tolist(), curve.position(float(t[i])).tolist())
        self.assertEqual([CURVES[n].domain[1] for n in ("line", "bspline", "composite")], [1, 2, 3])

    def test_derivatives_curvature_and_lengths(self):
        h = 1e-6
        for name, curve in CURVES.items():
            t = 0.4
            slope = (curve.position(t + h) - curve.position(t - h)) / (2 * h)
            np.testing.assert_allclose(curve.derivative(t), slope, rtol=1e-6, atol=1e-6)
            chords = np.diff(curve.position(np.linspace(*curve.domain, 20001)), axis=0)
            self.assertAlmostEqual(
                curve.length(), np.hypot(*chords.T).sum(), delta=2e-3, msg=name
            )
        arc = CURVES["arc"]
        to_centre = arc.centre - arc.position(0.3)
        np.testing.assert_allclose(arc.curvature(0.3), to_centre / 4, atol=1e-12)

    def test_nearest_is_none_of_a_fine_sample(self):
        rng = np.random.default_rng(1)
        points = rng.uniform(-2, 5, (40, 2))
        for name, curve in CURVES.items():
            samples = curve.position(np.linspace(*curve.domain, 4001)[:-1])
            brute = np.hypot(*(points[:, None] - samples).transpose(2, 0, 1)).min(axis=1)
            t, distance = curve.nearest(points)
            self.assertTrue((distance <= brute + 1e-12).all() and (distance > brute - 4e-3).all(), name)
            reached = np.hypot(*(curve.position(t) - points).T)
            np.testing.assert_allclose(reached, distance, atol=1e-9)

    def test_meeting_points_lie_on_both(self):
        a, b = CURVES["bezier"], CURVES["arc"]
        pairs, shared = a.intersect(b)
        self.assertFalse(shared)
        self.assertGreater(len(pairs), 0)
        np.testing.assert_allclose(a.position(pairs[:, 0]), b.position(pairs[:, 1]), atol=1e-6)
        self.assertTrue(CURVES["line"].intersect(CURVES["line"])[1])


class Views(unittest.TestCase):
    def test_views_share_memory_and_keep_their_owner(self):
        spline = Curve.nurbs(3, POINTS, W, KNOTS)
        for get in ("points", "weights", "knots"):
            self.assertTrue(np.shares_memory(getattr(spline, get), getattr(spline, get)), get)
            self.assertFalse(getattr(spline, get).flags.writeable)
        region = kurvo.Region.polygon(POINTS)
        corner = region[0][1].points
        del region, spline
        gc.collect()
        kept = [kurvo.Region.polygon(POINTS + i) for i in range(100)]  # would take the memory
        np.testing.assert_array_equal(corner, POINTS[1:3])
        del kept

    def test_changes_make_new_curves_and_keep_attributes(self):
        for curve in CURVES.values():
            curve.attributes = (7, 2**63, 5)
            before = curve.position(0.25)
            other = [
                (curve.moved((1, 2)), before + [1, 2]),
                (curve.rotated(math.pi / 2), [-before[1], before[0]]),
                (curve.scaled(2), 2 * before),
                (curve.mirrored((0, 0), (1, 0)), before * [-1, 1]),
                (pickle.loads(pickle.dumps(curve)), before),
            ]
            for changed, want in other:
                np.testing.assert_allclose(changed.position(0.25), want, atol=1e-12)
                self.assertEqual(changed.attributes, (7, 2**63, 5))
            self.assertEqual(curve.position(0.25).tolist(), before.tolist())
            np.testing.assert_array_equal(curve.reversed().start, curve.end)


class Refusals(unittest.TestCase):
    def test_hostile_arrays_are_exceptions(self):
        bezier = CURVES["bezier"]
        strided = np.zeros((8, 2))[::2]
        frozen = np.array(POINTS)
        frozen.flags.writeable = False
        for good in (strided, frozen, POINTS[::-1], POINTS.astype("f4"), POINTS.astype(">f8")):
            np.testing.assert_array_equal(Curve.bezier(good).points, good)
        rows = [
            (TypeError, lambda: bezier.position("x")),
            (TypeError, lambda: bezier.position(1j)),
            (TypeError, lambda: bezier.position(None)),
            (TypeError, lambda: bezier.position([True])),
            (TypeError, lambda: bezier.position(np.array([0.5, None]))),
            (kurvo.Error, lambda: bezier.position(math.nan)),
            (kurvo.Error, lambda: bezier.position([0.5, math.inf])),
            (ValueError, lambda: Curve.bezier([1, 2, 3])),
            (ValueError, lambda: Curve.bezier(np.zeros((2, 4)))),
            (kurvo.Error, lambda: Curve.bezier(np.zeros((0, 2)))),
            (kurvo.Error, lambda: Curve.bspline(3, POINTS, KNOTS[:-1])),
            (kurvo.Error, lambda: Curve.bspline(3, POINTS, KNOTS[::-1])),
            (kurvo.Error, lambda: Curve.bspline(-3, POINTS, KNOTS)),
            (ValueError, lambda: Curve.rational_bezier(POINTS, [1, 2])),
            (kurvo.Error, lambda: Curve.composite([bezier], [0.0])),
            (TypeError, lambda: Curve.composite([1])),
            (ValueError, lambda: bezier.converted("ellipse")),
            (kurvo.Error, lambda: bezier.converted("arc")),
            (kurvo.Error, lambda: bezier.derivative(0.5, -1)),
            (AttributeError, lambda: bezier.radius),
            (ValueError, lambda: bezier.points.__setitem__((0, 0), 1)),
        ]
        for number, (kind, call) in enumerate(rows):
            with self.subTest(number), self.assertRaises(kind):
                call()

    def test_errors_name_function_and_cause(self):
        with self.assertRaises(kurvo.Error) as caught:
            CURVES["line"].scaled(0)
        error = pickle.loads(pickle.dumps(caught.exception))
        self.assertEqual((error.name, error.function), ("KURVO_ERR_SCALE", "KurvocvScale"))
        self.assertEqual(str(error), str(caught.exception))

    def test_tolerances_nest_and_end(self):
        with kurvo.tolerance(1e-3), kurvo.tolerance(angle=1e-4):
            self.assertEqual(kurvo.tolerances(), (1e-3, 1e-4))
        with self.assertRaises(ZeroDivisionError), kurvo.tolerance(1e-9):
            1 / 0
        self.assertEqual(kurvo.tolerances(), (1e-6, 1e-6))
        for bad in (0, -1, 0.1, math.nan):
            with self.assertRaises(kurvo.Error):
                kurvo.tolerance(bad)
