"""The examples: what they make is what they say, and their pictures are those that are shown."""

import math
import pathlib
import re
import sys

import numpy as np
import pytest

import kurvo

EXAMPLES = pathlib.Path(__file__).parents[1] / "examples"
sys.path.insert(0, str(EXAMPLES))


NUMBER = re.compile(r"-?\d+\.\d+")  # its last digits are the C library's


def same_picture(name, folder):
    made, shown = ((place / name).read_text() for place in (folder, EXAMPLES))
    assert NUMBER.sub("", made) == NUMBER.sub("", shown)
    numbers = ([float(number) for number in NUMBER.findall(text)] for text in (made, shown))
    assert next(numbers) == pytest.approx(next(numbers), abs=2e-3)


def test_kerf(tmp_path):
    ezdxf = pytest.importorskip("ezdxf")
    import kerf

    part, path = kerf.main(None, tmp_path)
    r = kerf.KERF / 2
    # Steiner's formula: an outline grows by L r + pi r^2, each of three holes shrinks by L r - pi r^2.
    want = part.area + r * part.length + (1 - 3) * math.pi * r * r
    assert path.area == pytest.approx(want, abs=kerf.DEVIATION * path.length)
    assert {curve.type for loop in path for curve in loop} == {"line", "arc"}
    again = kurvo.dxf.region(ezdxf.readfile(tmp_path / "cut.dxf").modelspace()).simplify()
    assert again.area == pytest.approx(path.area, abs=1e-6)
    same_picture("kerf.svg", tmp_path)


def test_seam(tmp_path):
    import seam

    piece, cut = seam.main(tmp_path)
    points = cut[0].places(np.linspace(0, cut[0].length, 500)[:-1])["point"]
    _, distance = piece[0].nearest(points)
    assert distance.min() > seam.ALLOWANCE - 1e-6
    assert np.median(distance) == pytest.approx(seam.ALLOWANCE, abs=1e-6)
    assert cut[0].box[0][1] == pytest.approx(seam.WRIST[0][1] - seam.HEM)
    same_picture("seam.svg", tmp_path)


def test_bold(tmp_path):
    pytest.importorskip("fontTools")
    from fontTools.ttLib import TTFont
    import bold

    if not pathlib.Path(bold.FONT).exists():
        pytest.skip("the font DejaVu is not installed")
    font, plain, bolder = bold.main(folder=tmp_path)
    made = TTFont(tmp_path / "bold.ttf")
    glyphs = made.getGlyphSet()
    for i, name in enumerate(made.getGlyphOrder()):
        read = kurvo.fonts.glyph(glyphs, name)
        slack = (0.5 + bold.DEVIATION * made["head"].unitsPerEm) * bolder[i].length
        assert abs(abs(read.area) - bolder[i].area) <= slack, name
        assert bolder[i].area > plain[i].simplify().area or not len(plain[i])
    same_picture("bold.svg", tmp_path)


def test_plotter(tmp_path):
    import plotter

    lines, path, ink = plotter.main(tmp_path)
    assert sorted(chain.length for chain in lines) == pytest.approx(sorted(chain.length for chain in path))
    strokes = re.findall(r"PU(.+?);PD(.+?);", (tmp_path / "plotter.hpgl").read_text())
    drawn = [np.array((a + "," + b).split(","), int).reshape(-1, 2) / 40 for a, b in strokes]
    length = sum(np.hypot(*np.diff(line, axis=0).T).sum() for line in drawn)
    assert length == pytest.approx(sum(chain.length for chain in path), rel=2e-3)
    (hill, *_), _, (moon, *_) = plotter.scene()
    upright = [line for line in drawn if len(line) == 2 and line[0, 0] == line[1, 0] and len(hill) == 1]
    hidden = moon & hill | hill.offset(-1)  # nothing of the moon is drawn here
    inside = [hidden.locate(line.mean(axis=0)) for line in upright if line[:, 0].min() > 1 and line[:, 0].max() < 129]
    assert inside and kurvo.INSIDE not in inside
    assert ink.area < plotter.PEN * length + len(path) * plotter.PEN**2
    same_picture("plotter.svg", tmp_path)
