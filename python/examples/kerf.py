"""A part from a DXF drawing, cut by a laser that burns a kerf: the beam's path lies half of it away.

    kerf.py [part.dxf [FOLDER]]

Without a drawing one is made first. Arcs stay arcs and splines become arcs, so the machine is told
of no polygon. Writes cut.dxf and kerf.svg.
"""

import pathlib
import sys

import ezdxf
import kurvo

KERF = 1.2  # millimetres
DEVIATION = 0.005  # of arcs for splines


def draw_a_part(path):
    """A bracket: its entities lie in no order, and its upper edge is a spline."""
    drawing = ezdxf.new()
    layout = drawing.modelspace()
    layout.add_open_spline([(90, 30), (70, 52), (45, 8), (20, 66), (0, 40)], degree=3)
    layout.add_line((10, 0), (80, 0))
    layout.add_arc((80, 10), 10, 270, 360)
    layout.add_line((90, 10), (90, 30))
    layout.add_arc((10, 10), 10, 180, 270)
    layout.add_line((0, 40), (0, 10))
    for x in (12, 78):
        layout.add_circle((x, 12), 4)
    slot = [(30, 8, 0), (60, 8, 1), (60, 16, 0), (30, 16, 1)]
    layout.add_lwpolyline(slot, format="xyb", close=True)
    drawing.saveas(path)


def main(source=None, folder="."):
    folder = pathlib.Path(folder)
    if source is None:
        source = folder / "part.dxf"
        draw_a_part(source)
    part = kurvo.dxf.region(ezdxf.readfile(source).modelspace()).simplify()
    path = part.offset(KERF / 2).fit("arcs", DEVIATION)

    drawing = ezdxf.new()
    for loop in path:  # holes first: the part must not fall out before
        layer = "HOLES" if loop.area < 0 else "OUTLINE"
        kurvo.dxf.add(loop, drawing.modelspace(), layer=layer)
    drawing.saveas(folder / "cut.dxf")

    burnt = kurvo.Region.stroke(list(path), KERF / 2)
    picture = kurvo.picture.sheet([
        (part, {"fill": "#cde", "stroke": "#036", "stroke-width": "0.15"}),
        (burnt, {"fill": "#e63", "fill-opacity": "0.5"}),
        *[(loop, {"stroke": "#900", "stroke-width": "0.25"}) for loop in path],
    ], side=700)
    (folder / "kerf.svg").write_text(picture)
    kinds = [curve.type for loop in path for curve in loop]
    print(f"{len(path)} cuts, {path.length:.1f} mm: {kinds.count('line')} lines, {kinds.count('arc')} arcs")
    return part, path


if __name__ == "__main__":
    main(*sys.argv[1:])
