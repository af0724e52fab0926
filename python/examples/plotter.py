"""A drawing for a pen plotter: shapes in front of each other, hatched, without hidden lines.

    plotter.py [FOLDER]

Writes plotter.hpgl, in units of 1/40 mm, and plotter.svg, what the pen covers.
"""

import math
import pathlib
import sys

import kurvo

PEN = 0.5  # millimetres
DEVIATION = 0.02


def scene():
    """From the front: a shape, the angle of its hatching and the distance of its lines."""
    moon = kurvo.Region.circle((62, 66), 26) - kurvo.Region.circle((73, 74), 22)
    hill = kurvo.svg.region("M0 0L0 26C20 52 44 44 60 26S104 8 130 34L130 0Z")
    far = kurvo.svg.region("M0 0L0 40Q34 78 70 44T130 52L130 0Z")
    return [(hill, 0.5, 2.2), (far, -0.6, 3.4), (moon, math.pi / 2, 1.5)]


def hatching(region, angle, distance):
    corners = [p for loop in region for p in loop.box.tolist()]
    x, y = ((min(c) + max(c)) / 2 for c in zip(*corners))
    reach = max(math.dist(a, b) for a in corners for b in corners)
    cos, sin = math.cos(angle), math.sin(angle)
    count = math.ceil(reach / distance)
    for i in range(-count, count + 1):
        at = (x - i * distance * sin, y + i * distance * cos)
        ends = [(at[0] + s * reach * cos, at[1] + s * reach * sin) for s in (-1, 1)]
        yield kurvo.Chain.polyline(ends[:: 1 if i % 2 else -1])  # to and fro


def in_order(chains):
    """Always on to the nearest start or end."""
    rest, at, out = list(chains), (0.0, 0.0), []
    while rest:
        ways = ((math.dist(at, end), i, back) for i, chain in enumerate(rest)
                for back, end in enumerate((chain[0].start, chain[-1].end)))
        _, i, back = min(ways)
        chain = rest.pop(i)
        out.append(chain.reversed() if back else chain)
        at = tuple(out[-1][-1].end)
    return out


def main(folder="."):
    folder, lines, front = pathlib.Path(folder), [], kurvo.Region()
    for shape, angle, distance in scene():
        seen = shape - front
        inner = seen.offset(-PEN)  # hatching keeps off the outline
        hatched, _ = inner.clip(list(hatching(inner, angle, distance)))
        _, outline = front.clip([kurvo.Chain(loop) for loop in shape]) if len(front) else ([], shape)
        lines += [*outline, *hatched]
        front = front | shape
    path = in_order(lines)

    text = ["IN;SP1;"]
    for chain in path:
        points = [f"{round(40 * x)},{round(40 * y)}" for x, y in chain.flatten(DEVIATION)]
        text.append(f"PU{points[0]};PD{','.join(points[1:])};")
    (folder / "plotter.hpgl").write_text("\n".join(text) + "\nPU;SP0;\n")

    ink = kurvo.Region.stroke(path, PEN / 2, cap="round")
    (folder / "plotter.svg").write_text(kurvo.picture.sheet([(ink, {"fill": "#124"})], side=800))
    drawn = sum(chain.length for chain in path)
    idle = sum(math.dist(a[-1].end, b[0].start) for a, b in zip(path, path[1:]))
    print(f"{len(path)} lines, {drawn:.0f} mm with the pen down, {idle:.0f} mm with it up")
    return lines, path, ink


if __name__ == "__main__":
    main(*sys.argv[1:])
