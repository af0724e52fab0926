"""Batches: the same as one by one, for any number of threads, without copies."""

import pickle
import unittest

import numpy as np

import kurvo

RNG = np.random.default_rng(4)
REGIONS = [kurvo.Region.circle(c, r) for c, r in zip(RNG.uniform(-1, 1, (40, 2)), RNG.uniform(0.2, 1, 40))]
REGIONS += [kurvo.Region(), kurvo.Region.polygon(RNG.uniform(-1, 1, (9, 2)))]
BATCH = kurvo.OutlineBatch.of(REGIONS)
BOX = kurvo.Region.rectangle((-0.5, -0.5), (0.5, 0.5))
BOXES = kurvo.OutlineBatch.of([BOX])


def bits(result):
    columns = result.columns if isinstance(result, kurvo.OutlineBatch) else result
    return [np.asarray(column).tobytes() for column in columns]


class Batches(unittest.TestCase):
    def test_each_function_is_that_of_regions_on_any_threads(self):
        def one_by_one(change):
            return kurvo.OutlineBatch.of(change(region) for region in REGIONS)

        rows = [
            ("combine", ("difference", BOXES), {}, lambda r: r - BOX),
            ("simplify", (), {"tol": 1e-6}, lambda r: r.simplify(tol=1e-6)),
            ("offset", (0.1,), {"join": "miter"}, lambda r: r.offset(0.1, join="miter")),
            ("stroke", (0.1,), {"dashes": [0.2, 0.1]},
             lambda r: kurvo.Region.stroke(list(r), 0.1, dashes=[0.2, 0.1])),
            ("biarcs", (1e-3,), {}, lambda r: r.fit("arcs", 1e-3)),
        ]
        for name, arguments, options, change in rows:
            want = bits(one_by_one(change))
            for threads in (1, 2, 7):
                got = getattr(BATCH, name)(*arguments, threads=threads, **options)
                self.assertEqual(bits(got), want, (name, threads))
        by = np.linspace(-0.1, 0.1, len(BATCH))
        grown = BATCH.offset(by)
        self.assertEqual(bits(grown), bits(kurvo.OutlineBatch.of(
            region.offset(float(d)) for region, d in zip(REGIONS, by))))

    def test_numbers(self):
        for name in ("area", "length"):
            values, codes = getattr(BATCH, name)(threads=2)
            self.assertEqual(values.tolist(), [getattr(region, name) for region in REGIONS])
            self.assertFalse(codes.any())
        points = RNG.uniform(-2, 2, (len(BATCH), 2))
        with self.assertRaises(kurvo.Error):  # an earlier error says nothing
            BATCH[0].offset(float("nan"))
        found = BATCH.nearest(points, threads=3)
        self.assertEqual(bits(found), bits(BATCH.nearest(points)))
        for i, region in enumerate(REGIONS):
            if not len(region):
                self.assertEqual((found[0][i], np.isnan(found[2][i])), (-1, True))
                continue
            place, distance = region[0].nearest(points[i])
            self.assertEqual((found[1][i].tobytes(), found[2][i]), (place.tobytes(), distance))
        vertices, point_starts, loop_starts, _ = BATCH.flatten(0.01, threads=2)
        rings = [ring for region in REGIONS for ring in kurvo.polygons.arrays(region, 0.01)]
        np.testing.assert_array_equal(vertices, np.concatenate(rings))
        self.assertEqual(np.diff(point_starts).tolist(), [len(ring) for ring in rings])
        self.assertEqual(np.diff(loop_starts).tolist(), [len(region) for region in REGIONS])

    def test_codes_stay_in_their_row(self):
        numbers = BATCH.numbers.copy()
        numbers[BATCH.number_starts[3]] = np.nan
        words = BATCH.words.copy()
        words[BATCH.word_starts[5]] = 99  # another version
        bad = kurvo.OutlineBatch(words, BATCH.word_starts, numbers, BATCH.number_starts, BATCH.codes)
        for threads in (1, 2):
            grown = bad.offset(0.1, threads=threads)
            self.assertEqual(np.flatnonzero(grown.codes).tolist(), [3, 5])
            area, codes = grown.area(threads=threads)
            self.assertEqual(codes.tolist(), grown.codes.tolist())
            self.assertEqual(np.flatnonzero(np.isnan(area)).tolist(), [3, 5])
        good = BATCH.offset(0.1)
        for i in (0, 4, 6, -1):
            self.assertEqual(bits(grown[i].pack()), bits(good[i].pack()))
        with self.assertRaises(kurvo.Error) as caught:
            grown[3]
        self.assertEqual(caught.exception.name, "KURVO_ERR_NOT_FINITE")

    def test_nothing_is_copied(self):
        again = kurvo.OutlineBatch(*BATCH.columns)
        self.assertTrue(all(a is b for a, b in zip(again.columns, BATCH.columns)))
        buffers = []
        text = pickle.dumps(BATCH, protocol=5, buffer_callback=buffers.append)
        self.assertEqual(len(buffers), 5)
        self.assertLess(len(text), 1000)
        loaded = pickle.loads(text, buffers=buffers)
        self.assertTrue(np.shares_memory(loaded.numbers, BATCH.numbers))
        self.assertEqual(bits(loaded), bits(pickle.loads(pickle.dumps(BATCH, 2))))

    def test_rows_and_joined(self):
        parts = [BATCH[:5], BATCH[5:5], BATCH[9:2], BATCH[5:-1], BATCH[-1:]]
        self.assertEqual([len(part) for part in parts], [5, 0, 0, len(BATCH) - 6, 1])
        self.assertEqual(bits(kurvo.OutlineBatch.join(parts)), bits(BATCH))
        self.assertTrue(np.shares_memory(parts[3].numbers, BATCH.numbers))
        self.assertEqual(len(kurvo.OutlineBatch.join([])), 0)
        with self.assertRaises(ValueError):
            BATCH[::2]

    def test_hostile_columns_are_exceptions(self):
        words, word_starts, numbers, number_starts, codes = BATCH.columns
        rows = [
            (TypeError, (words.astype("i8"), word_starts, numbers, number_starts, codes)),
            (TypeError, (words[::2], word_starts, numbers, number_starts, codes)),
            (TypeError, (words, word_starts, numbers[None], number_starts, codes)),
            (TypeError, (words, word_starts, list(numbers), number_starts, codes)),
            (ValueError, (words, word_starts[:-1], numbers, number_starts, codes)),
            (ValueError, (words, word_starts[::-1].copy(), numbers, number_starts, codes)),
            (ValueError, (words, word_starts - 1, numbers, number_starts, codes)),
            (ValueError, (words, word_starts, numbers[:-1], number_starts, codes)),
            (ValueError, (words, word_starts[:0], numbers, number_starts[:0], codes[:0])),
        ]
        for number, (kind, columns) in enumerate(rows):
            with self.subTest(number), self.assertRaises(kind):
                kurvo.OutlineBatch(*columns)
        calls = [
            (ValueError, lambda: BATCH.area(threads=0)),
            (TypeError, lambda: BATCH.offset(1, proceed=print)),
            (ValueError, lambda: BATCH.offset([1, 2])),
            (kurvo.Error, lambda: BATCH.offset(float("nan"))),
            (ValueError, lambda: BATCH.nearest([(0, 0)])),
            (ValueError, lambda: BATCH.combine("minus", BOXES)),
            (IndexError, lambda: BATCH[len(BATCH)]),
        ]
        for number, (kind, call) in enumerate(calls):
            with self.subTest(number), self.assertRaises(kind):
                call()
        self.assertEqual(len(kurvo.OutlineBatch.of([]).offset(1)), 0)
        rng = np.random.default_rng(5)  # whatever the words hold
        for _ in range(300):
            torn = words.copy()
            torn[rng.integers(0, len(torn), 20)] = rng.integers(-9, 99, 20)
            kurvo.OutlineBatch(torn, word_starts, numbers, number_starts, codes).area(threads=2)

    def test_threads_have_the_tolerances_of_the_caller(self):
        gapped = kurvo.Chain.polyline([(0, 0), (1, 0), (1, 1), (0, 1e-4)])
        with kurvo.tolerance(1e-3):
            batch = kurvo.OutlineBatch.of([kurvo.Region(gapped)] * 40)
            self.assertFalse(batch.area(threads=4)[1].any())
        self.assertTrue(batch.area(threads=4)[1].all())
