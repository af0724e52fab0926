"""Doors: what goes out comes back."""

import math
import unittest

import numpy as np

import kurvo

MIXED = kurvo.Region.rectangle((0, 0), (4, 4)).offset(1) - kurvo.Region.circle((2, 2), 1)
BENT = kurvo.Region.polygon([(0, 0), (5, 1), (2, 6)]).offset(0.5).fit("cubics", 1e-9)


def shapely_or_skip(test):
    try:
        import shapely.geometry
    except ImportError:
        test.skipTest("shapely is not installed")
    return shapely.geometry


class Svg(unittest.TestCase):
    def test_what_is_written_reads_back(self):
        for region in (MIXED, BENT):
            again = kurvo.svg.region(kurvo.svg.path(region))
            self.assertEqual([len(loop) for loop in again], [len(loop) for loop in region])
            for old, new in zip(region, again):
                for a, b in zip(old, new):
                    self.assertEqual(a.type, b.type)
                    t = np.linspace(0, 1, 7)
                    np.testing.assert_allclose(a.position(t), b.position(t), atol=1e-12)
        wide = kurvo.Curve.arc((1, 2), 3, 0.3, -5)
        (chain,) = kurvo.svg.chains(kurvo.svg.path(wide))
        self.assertAlmostEqual(chain.length, 15, places=12)
        quintic = kurvo.Curve.bezier([(0, 0), (1, 5), (2, -5), (3, 5), (4, -5), (5, 0)])
        (chain,) = kurvo.svg.chains(kurvo.svg.path(quintic))
        _, away = chain.nearest(quintic.position(np.linspace(0, 1, 50)))
        self.assertLess(away.max(), 1e-8)

    def test_the_grammar(self):
        rows = [  # text, length, end
            ("M1 1h2v3H1z", 10, (1, 1)),
            ("M.5.5L1.5e0.5", 1, (1.5, 0.5)),
            ("m1,1 1,0 0,1", 2, (2, 2)),
            ("M0 0C0 1 0 2 0 3S0 5 0 6", 6, (0, 6)),
            ("M0 0Q0 1 0 2T0 4", 4, (0, 4)),
            ("M0 0A1 1 0 0 1 2 0", math.pi, (2, 0)),
            ("M0 0a1 1 0 11.5.5", None, (0.5, 0.5)),
            ("M0 0A0 1 0 0 1 2 0", 2, (2, 0)),
            ("M0 0A1 1 0 0 1 4 0", 2 * math.pi, (4, 0)),  # grown until it reaches
            ("", 0, None),
        ]
        for text, length, end in rows:
            chains = kurvo.svg.chains(text)
            if length is not None:
                self.assertAlmostEqual(sum(c.length for c in chains), length, places=9, msg=text)
            if end:
                np.testing.assert_allclose(chains[-1][-1].end, end, atol=1e-12)
        for text in ("L0 0", "M0", "M0 0 X", "M0 0L1", "M0 0A1 1 0 2 0 1 1", "M0 0z1 1", "5"):
            with self.subTest(text), self.assertRaises(ValueError):
                kurvo.svg.chains(text)

    def test_ellipses_have_their_axes(self):
        turn, rx, ry = 0.5, 3.0, 1.0
        for large in (0, 1):
            for sweep in (0, 1):
                text = f"M0 0A{rx} {ry} {math.degrees(turn)} {large} {sweep} 2 1"
                (chain,) = kurvo.svg.chains(text)
                points = np.concatenate([c.position(np.linspace(0, 1, 20)) for c in chain])
                frame = points @ [[math.cos(turn), -math.sin(turn)], [math.sin(turn), math.cos(turn)]]
                unit = frame / [rx, ry]
                # On the circle through three of the points, of radius 1.
                a, b, c = unit[0], unit[len(unit) // 2], unit[-1]
                centre = np.linalg.solve(2 * np.array([b - a, c - a]), [b @ b - a @ a, c @ c - a @ a])
                np.testing.assert_allclose(np.hypot(*(unit - centre).T), 1, atol=1e-9)
                self.assertEqual(chain.area > 0, bool(sweep))
                swept = np.abs(np.unwrap(np.arctan2(*(unit - centre).T))[[0, -1]] @ [-1, 1])
                self.assertEqual(swept > math.pi, bool(large))

    def test_pictures(self):
        for shown in (MIXED, MIXED[0], MIXED[0][1], kurvo.Region()):
            self.assertIn("<path", shown._repr_svg_())


class Others(unittest.TestCase):
    def test_shapely(self):
        geometry = shapely_or_skip(self)
        out = kurvo.polygons.to_shapely(MIXED, 1e-4)
        self.assertTrue(out.is_valid)
        self.assertAlmostEqual(out.area, MIXED.area, delta=1e-4 * MIXED.length)
        self.assertAlmostEqual(kurvo.polygons.region(out).simplify().area, out.area, places=9)
        self.assertEqual(len(kurvo.polygons.region(geometry.Polygon())), 0)
        with self.assertRaises(TypeError):
            kurvo.polygons.region(geometry.Point(0, 0))

    def test_pens(self):
        pen = kurvo.fonts.RegionPen()
        kurvo.fonts.draw(BENT, pen, 1e-6)
        self.assertEqual([a.tobytes() for a in pen.region().pack()], [a.tobytes() for a in BENT.pack()])
        pen = kurvo.fonts.RegionPen()
        kurvo.fonts.draw(MIXED, pen, 1e-3, form="quadratics")
        self.assertAlmostEqual(pen.region().area, MIXED.area, delta=1e-3 * MIXED.length)
        pen = kurvo.fonts.RegionPen()
        pen.qCurveTo((1, 0), (0, 1), (-1, 0), (0, -1), None)  # no point on the curve
        self.assertEqual(len(pen.region()[0] if pen.closePath() is None else ()), 4)
        self.assertAlmostEqual(pen.region().area, 1 + 4 * (2 / 3) * 0.25, places=12)

    def test_glyphs(self):
        try:
            from fontTools.pens.areaPen import AreaPen
            from fontTools.ttLib import TTFont
        except ImportError:
            self.skipTest("fontTools is not installed")
        try:
            font = TTFont("/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf")
        except OSError:
            self.skipTest("the font DejaVu is not installed")
        glyphs = font.getGlyphSet()
        for name in ("ampersand", "Aring", "eight"):  # the second of components
            pen = AreaPen(glyphs)
            glyphs[name].draw(pen)
            self.assertAlmostEqual(kurvo.fonts.glyph(glyphs, name).area, pen.value, places=6)

    def test_dxf(self):
        try:
            import ezdxf
        except ImportError:
            self.skipTest("ezdxf is not installed")
        layout = ezdxf.new().modelspace()
        spline = kurvo.Curve.bspline(4, [(0, 0), (1, 3), (2, -3), (4, 4), (5, 0)], [0] * 4 + [1] + [2] * 4)
        rational = kurvo.Curve.nurbs(3, [(0, 0), (1, 1), (2, 0)], [1, 0.5, 1], [0, 0, 0, 1, 1, 1])
        for shown in (MIXED, spline, rational):
            back = kurvo.dxf.curves(kurvo.dxf.add(shown, layout))
            length = sum(curve.length() for curve in back)
            want = shown.length() if isinstance(shown, kurvo.Curve) else shown.length
            self.assertAlmostEqual(length, want, places=9)
        self.assertEqual([c.type for c in kurvo.dxf.curves(kurvo.dxf.add(spline, layout))], ["bspline"])
        again = kurvo.dxf.region(kurvo.dxf.add(MIXED, layout)).simplify()
        self.assertAlmostEqual(again.area, MIXED.area, places=9)
        slot = layout.add_lwpolyline([(0, 0, 0), (4, 0, 1), (4, 2, 0), (0, 2, 1)], format="xyb", close=True)
        self.assertAlmostEqual(kurvo.dxf.region([slot]).simplify().area, 8 + math.pi, places=9)
        self.assertAlmostEqual(kurvo.dxf.region([layout.add_circle((1, 1), 2)]).area, 4 * math.pi)
        with self.assertRaises(TypeError):
            kurvo.dxf.curves([layout.add_text("x")])

    def test_plots(self):
        points, codes = kurvo.plotting.vertices(MIXED)
        self.assertEqual((len(points), codes[0], codes[-1]), (len(codes), 1, 79))
        try:
            import matplotlib
        except ImportError:
            self.skipTest("matplotlib is not installed")
        matplotlib.use("agg")
        from matplotlib import pyplot

        axes = pyplot.figure().gca()
        MIXED.plot(axes, polygons=True, combs=0.1)
        self.assertEqual(len(axes.patches), 1)
