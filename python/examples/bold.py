"""A bold of a font: every outline grows by the same length, arcs of circles at its corners.

    bold.py [FONT [TEXT [FOLDER]]]

Writes bold.ttf with the letters of the text, and bold.svg.
"""

import pathlib
import sys

import kurvo
from fontTools import subset
from fontTools.pens.reverseContourPen import ReverseContourPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTFont

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf"
GROWTH = 0.02  # of an em, on either side of a stem
DEVIATION = 0.0005  # of an em, of the quadratics of TrueType


def letters_of(path, text):
    options = subset.Options(hinting=False, layout_features=[], notdef_outline=True)
    font = TTFont(path)
    chosen = subset.Subsetter(options)
    chosen.populate(text=text)
    chosen.subset(font)
    return font


def main(path=FONT, text="Äffin & @ 68", folder="."):
    font = letters_of(path, text)
    em = font["head"].unitsPerEm
    growth = round(GROWTH * em)
    glyphs, names = font.getGlyphSet(), font.getGlyphOrder()
    plain = kurvo.OutlineBatch.of(kurvo.fonts.glyph(glyphs, name) for name in names)
    bold = plain.simplify(threads=2).offset(growth, threads=2, join="miter", miter_limit=2)
    assert not bold.codes.any()

    for name, outline in zip(names, bold):
        pen = TTGlyphPen(None)
        moved = kurvo.Region([loop.moved((growth, 0)) for loop in outline])
        kurvo.fonts.draw(moved, ReverseContourPen(pen), DEVIATION * em, form="quadratics")
        font["glyf"][name] = pen.glyph()
        width, bearing = font["hmtx"][name]
        font["hmtx"][name] = (width + 2 * growth, bearing)
    font.save(pathlib.Path(folder) / "bold.ttf")

    layers, x = [], 0
    cmap = font.getBestCmap()
    for letter in text:
        i = names.index(cmap[ord(letter)])
        for shape, fill in ((bold[i], "#e8b36a"), (plain[i], "#222")):
            loops = [loop.moved((x + growth, 0)) for loop in shape]
            layers.append((kurvo.Region(loops, rule=shape.rule), {"fill": fill}))
        x += font["hmtx"][names[i]][0]
    picture = kurvo.picture.sheet(layers, side=900)
    (pathlib.Path(folder) / "bold.svg").write_text(picture)
    print(f"{len(names)} glyphs, bolder by {growth} of {em} units")
    return font, plain, bold


if __name__ == "__main__":
    main(*sys.argv[1:])
