"""Chains and regions."""

import math
import pickle
from fractions import Fraction
import threading
import unittest

import numpy as np

import kurvo

Chain, Region = kurvo.Chain, kurvo.Region
DISC = Region.circle((0, 0), 2)
SQUARE = Region.rectangle((0, 0), (3, 3))


def packed(region):
    return [column.tobytes() for column in region.pack()]


def exact_moments(polynomials):
    """Area and its moments of x(t), y(t) over [0, 1], closed: power series of fractions."""

    def times(a, b):
        product = [Fraction(0)] * (len(a) + len(b) - 1)
        for i, u in enumerate(a):
            for k, v in enumerate(b):
                product[i + k] += u * v
        return product

    def power(x, n):
        return times(x, power(x, n - 1)) if n else [Fraction(1)]

    sums = dict.fromkeys([(0, 0), (1, 0), (0, 1), (2, 0), (1, 1), (0, 2)], Fraction(0))
    for x, y in polynomials:
        slope = [k * c for k, c in enumerate(y)][1:]
        for m, n in sums:  # Green: the integral of x^m y^n is that of x^(m + 1) y^n / (m + 1) dy
            integrand = times(times(power(x, m + 1), power(y, n)), slope)
            sums[m, n] += sum((c / (k + 1) for k, c in enumerate(integrand)), Fraction(0)) / (m + 1)
    return sums


def power_series(points):
    """Of a Bezier curve, exactly."""
    n = len(points) - 1
    series = []
    for values in zip(*points):
        values = [Fraction(float(v)) for v in values]
        series.append([math.comb(n, k) * sum((-1) ** (k - i) * math.comb(k, i) * values[i]
                                             for i in range(k + 1)) for k in range(n + 1)])
    return series


class Regions(unittest.TestCase):
    def test_operators_split_the_plane(self):
        rng = np.random.default_rng(2)
        points = rng.uniform(-3, 4, (4000, 2))
        a = np.hypot(*points.T) < 2
        b = ((points > 0) & (points < 3)).all(axis=1)
        rows = [(DISC | SQUARE, a | b), (DISC & SQUARE, a & b), (DISC - SQUARE, a & ~b),
                (DISC ^ SQUARE, a ^ b)]
        for region, inside in rows:
            np.testing.assert_array_equal(region.locate(points) == kurvo.INSIDE, inside)
        self.assertAlmostEqual((DISC & SQUARE).area, math.pi, places=9)
        self.assertAlmostEqual(DISC.area + SQUARE.area, (DISC | SQUARE).area + math.pi, places=9)
        union = Region.combine("union", [DISC, SQUARE])
        self.assertEqual(packed(union), packed(DISC | SQUARE))
        self.assertEqual(len(Region.combine("union", [])), 0)
        with self.assertRaises(TypeError):
            DISC | 3

    def test_offset_stroke_fit(self):
        grown = SQUARE.offset(1)
        self.assertAlmostEqual(grown.area, 9 + 12 + math.pi, places=9)
        self.assertAlmostEqual(SQUARE.offset(1, join="miter").area, 25, places=9)
        self.assertEqual(len(SQUARE.offset(-2)), 0)
        line = Chain.polyline([(0, 0), (10, 0)])
        rows = [({}, 20), ({"cap": "square"}, 24), ({"cap": "round"}, 20 + math.pi),
                ({"dashes": [2, 1]}, 14), ({"dashes": [2, 1], "phase": 2}, 14 - 2)]
        for options, area in rows:
            self.assertAlmostEqual(line.stroke(1, **options).area, area, places=9, msg=options)
        self.assertAlmostEqual(Region.stroke([line, line.moved((0, 9))], 1, 0).area, 20, places=9)
        self.assertEqual({c.type for c in grown.fit("cubics", 1e-6)[0]}, {"line", "bezier"})

    def test_clip(self):
        line = Chain.polyline([(-9, 1), (9, 1)])
        inside, outside = SQUARE.clip(line)
        self.assertAlmostEqual(sum(chain.length for chain in inside), 3)
        self.assertAlmostEqual(sum(chain.length for chain in outside), 15)

    def test_origins_report_and_proceed(self):
        result = Region.combine("union", [DISC, SQUARE], origins=True)
        self.assertEqual(sum(len(loop) for loop in result), len(result.origins))
        self.assertEqual(set(result.origins["region"].tolist()), {0, 1})
        seen = []
        SQUARE.offset(1, proceed=lambda done: seen.append(done) or True)
        self.assertTrue(seen and seen == sorted(seen))
        with self.assertRaises(kurvo.Stopped):
            SQUARE.offset(1, proceed=lambda done: False)
        with self.assertRaises(ZeroDivisionError):
            SQUARE.offset(1, proceed=lambda done: 1 / 0)

    def test_packing_is_exact(self):
        for region in (DISC, DISC ^ SQUARE, Region(), Region([], rule="evenodd")):
            again = pickle.loads(pickle.dumps(region, 5))
            self.assertEqual((packed(again), again.rule), (packed(region), region.rule))
        words, numbers = DISC.pack()
        rows = [(words[:-1], numbers), (words, numbers[:-1]), (-words, numbers)]
        for bad in rows:
            with self.assertRaises(kurvo.Error):
                Region.unpack(*bad)
        with self.assertRaises(TypeError):
            Region.unpack(words.astype(float), numbers)

    def test_refusals(self):
        open_line = Chain.polyline([(0, 0), (1, 0), (1, 1)])
        rows = [
            (kurvo.Error, lambda: Region(open_line)),
            (ValueError, lambda: Region([], rule="odd")),
            (kurvo.Error, lambda: SQUARE.offset(math.inf)),
            (kurvo.Error, lambda: SQUARE.offset(math.nan)),
            (ValueError, lambda: SQUARE.offset(1, join="soft")),
            (TypeError, lambda: SQUARE.offset(1, tol="x")),
            (TypeError, lambda: SQUARE.offset(1, jion="miter")),
            (kurvo.Error, lambda: SQUARE.offset(1, tol=-1)),
            (kurvo.Error, lambda: open_line.stroke(-1)),
            (kurvo.Error, lambda: open_line.places([9])),
            (kurvo.Error, lambda: open_line.lengths([(7, 0.5)])),
            (ValueError, lambda: open_line.lengths([(0.5, 0.5)])),
            (kurvo.Error, lambda: open_line.flatten(0)),
            (IndexError, lambda: open_line[2]),
            (TypeError, lambda: Region.combine("union", [SQUARE, None])),
            (TypeError, lambda: DISC.locate([("a", "b")])),
        ]
        for number, (kind, call) in enumerate(rows):
            with self.subTest(number), self.assertRaises(kind):
                call()
        self.assertAlmostEqual(Region(open_line, gap=2).area, 0.5)

    def test_threads_ask_one_region(self):
        points = np.random.default_rng(3).uniform(-3, 3, (2000, 2))
        want = DISC.locate(points).tobytes()
        got = []
        ask = lambda: got.append((DISC.locate(points).tobytes(), packed(DISC | SQUARE)))
        threads = [threading.Thread(target=ask) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual([g[0] for g in got], [want] * 4)
        self.assertEqual({tuple(g[1]) for g in got}, {tuple(packed(DISC | SQUARE))})


class Chains(unittest.TestCase):
    def test_places_lengths_nearest_and_trim(self):
        chain = (DISC | SQUARE)[0]
        lengths = np.linspace(0, chain.length, 9)[:-1].reshape(2, 4)
        places = chain.places(lengths)
        self.assertEqual(places.shape, (2, 4))
        np.testing.assert_allclose(chain.lengths(places), lengths.ravel(), atol=1e-9)
        again, distance = chain.nearest(places["point"])
        np.testing.assert_allclose(distance, 0, atol=1e-12)
        np.testing.assert_allclose(again["point"], places["point"], atol=1e-9)
        part = chain.trim(places[0, 1], places[1, 2])
        self.assertAlmostEqual(part.length, lengths[1, 2] - lengths[0, 1], places=9)
        place, away = chain.nearest((9.0, 9.0))
        self.assertEqual(place["point"].tolist(), [3, 3, 0])
        self.assertAlmostEqual(away, 6 * math.sqrt(2))

    def test_flatten_keeps_its_deviation_and_shares_memory(self):
        chain = DISC[0]
        points, places = chain.flatten(0.01, places=True)
        np.testing.assert_allclose(np.hypot(*points.T), 2, atol=1e-12)
        middles = (points[1:] + points[:-1]) / 2
        self.assertLessEqual(2 - np.hypot(*middles.T).min(), 0.01)
        np.testing.assert_array_equal(points, places["point"][:, :2])
        self.assertIsNotNone(points.base)

    def test_sequences_join_and_meetings(self):
        chain = SQUARE[0]
        self.assertEqual([c.start.tolist() for c in chain],
                         [[0, 0], [3, 0], [3, 3], [0, 3]])
        np.testing.assert_array_equal(chain[-1].end, chain[0].start)
        self.assertEqual(chain.reversed().area, -chain.area)
        closed, rest = Chain.join(reversed([*chain, kurvo.Curve.line((9, 9), (8, 8))]))
        self.assertEqual((abs(closed.area), len(rest)), (9, 1))
        self.assertEqual(len(chain.meetings(DISC[0])), 2)
        eight = Chain.polyline([(0, 0), (2, 2), (2, 0), (0, 2)], closed=True)
        np.testing.assert_allclose(eight.meetings()["point"], [[1, 1, 0]], atol=1e-12)
        np.testing.assert_allclose(chain.box, [[0, 0], [3, 3]])
        np.testing.assert_allclose(chain.moments.centroid, [1.5, 1.5])
        self.assertEqual(pickle.loads(pickle.dumps(eight)).length, eight.length)

    def test_moments_against_rational_arithmetic(self):
        rng = np.random.default_rng(4)
        for _ in range(40):
            corners = rng.uniform(-5, 5, (rng.integers(3, 6), 2)) + rng.choice([0, 40])
            curves = []
            for start, end in zip(corners, np.roll(corners, -1, axis=0)):
                inner = rng.uniform(-5, 5, (rng.integers(0, 5), 2)) + start
                curves.append(np.vstack([start, inner, end]))
            got = Chain([kurvo.Curve.bezier(points) for points in curves]).moments
            sums = exact_moments([power_series(points) for points in curves])
            area, mx, my = sums[0, 0], sums[1, 0], sums[0, 1]
            x, y = mx / area, my / area
            size = np.ptp(np.vstack(curves), axis=0).max()
            scale = float(size * size / abs(area))
            rows = [(got.area, area, size**2), (got.centroid[0], x, size * scale),
                    (got.centroid[1], y, size * scale), (got.xx, sums[2, 0] - mx * x, size**4 * scale),
                    (got.xy, sums[1, 1] - mx * y, size**4 * scale),
                    (got.yy, sums[0, 2] - my * y, size**4 * scale)]
            for is_, want, unit in rows:
                self.assertLessEqual(abs(float(Fraction(float(is_)) - want)), 1e-14 * unit)
