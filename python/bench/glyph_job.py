"""Every glyph of many fonts: overlaps removed, made bolder and lighter, areas, arcs for a cutter.

    glyph_job.py table.npz                   does it and writes the table (.parquet with pyarrow)
    glyph_job.py --measure --every 16        one process, threads and a cluster beside each other
    glyph_job.py --chunks --every 80         what scheduler and transfer take by the size of a task

Fonts are those of Debian's packages fonts-dejavu, fonts-cantarell and fonts-lmodern, or --fonts.
--every takes each so-many-th glyph; --scheduler works on a running cluster.
"""

import argparse
import glob
import hashlib
import os
import time
import zlib

import kurvo
import numpy as np

FONTS = (
    "/usr/share/fonts/truetype/dejavu/*.ttf",
    "/usr/share/fonts/opentype/cantarell/*.otf",
    "/usr/share/texmf/fonts/opentype/public/lm*/*.otf",
)
GROWTH = 20.0  # units of the font
DEVIATION = 0.5  # likewise, of arcs
IN_MEMORY = 4096  # glyphs that one process works on at a time


def read(patterns, every=1):
    """Columns of names and the glyphs as a batch."""
    from fontTools.ttLib import TTFont

    fonts, names, regions, count = [], [], [], 0
    for path in (p for pattern in patterns for p in sorted(glob.glob(pattern))):
        with TTFont(path, lazy=True) as font:
            glyphs = font.getGlyphSet()
            for name in font.getGlyphOrder():
                count += 1
                if count % every == 0:
                    fonts.append(os.path.basename(path))
                    names.append(name)
                    regions.append(kurvo.fonts.glyph(glyphs, name))
    return {"font": np.array(fonts), "glyph": np.array(names)}, kurvo.OutlineBatch.of(regions)


def prints(batch):
    """A check sum of the bits of each outline."""
    words, word_starts, numbers, number_starts, _ = batch.columns
    ends = zip(word_starts[:-1], word_starts[1:], number_starts[:-1], number_starts[1:])
    sums = (zlib.crc32(numbers[c:d], zlib.crc32(words[a:b])) for a, b, c, d in ends)
    return np.fromiter(sums, "u4", len(batch))


def work(batch, threads=1, keep=("plain", "arcs")):
    """Of outlines that are not kept the table has area, code and check sum."""
    plain = batch.simplify(threads=threads)
    outlines = {
        "plain": plain,
        "bold": plain.offset(GROWTH, threads=threads),
        "light": plain.offset(-GROWTH, threads=threads),
        "arcs": plain.biarcs(DEVIATION, threads=threads),
    }
    table = {}
    for name, shapes in outlines.items():
        table[f"{name}_area"] = shapes.area(threads=threads)[0]
        table[f"{name}_code"] = shapes.codes
        table[f"{name}_crc"] = prints(shapes)
        if name in keep:
            table[name] = shapes
    return table


def moved(batch):
    """As many bytes as work gives, to the tenth, and none of its work."""
    return {name: kurvo.OutlineBatch(*(c.copy() for c in batch.columns)) for name in "abcd"}


def in_this_process(batch, threads):
    from kurvo import cluster

    return cluster.join(work(part, threads) for part in cluster.rows(batch, IN_MEMORY))


def digest(result):
    sha = hashlib.sha256()
    for column in result.values():
        for array in getattr(column, "columns", (column,)):
            sha.update(array)
    return sha.hexdigest()


def refused(result):
    return sum(int((v != 0).sum()) for name, v in result.items() if name.endswith("_code"))


def write(path, names, result):
    """A row a glyph. Outlines are lists of words and numbers, as Region.unpack takes them."""
    flat = dict(names)
    lists = ("words", "word_starts"), ("numbers", "number_starts")
    if not path.endswith(".parquet"):
        for name, column in result.items():
            if isinstance(column, kurvo.OutlineBatch):
                parts = zip(("words", "word_starts", "numbers", "number_starts", "codes"), column.columns)
                flat.update({f"{name}_{part}": array for part, array in parts})
            else:
                flat[name] = column
        np.savez(path, **flat)
        return
    import pyarrow
    import pyarrow.parquet

    for name, column in result.items():
        if isinstance(column, kurvo.OutlineBatch):
            flat[f"{name}_code"] = column.codes
            for values, starts in lists:
                flat[f"{name}_{values}"] = pyarrow.LargeListArray.from_arrays(
                    getattr(column, starts), getattr(column, values)
                )
        else:
            flat[name] = column
    pyarrow.parquet.write_table(pyarrow.table(flat), path)


def watched(client, do):
    """What do() gives, seconds on the clock and seconds of all processes that take part."""

    def spent():
        workers = sum(client.run(time.process_time).values()) if client else 0.0
        return time.process_time() + workers

    before, start = spent(), time.perf_counter()
    result = do()
    wall = time.perf_counter() - start
    return result, wall, spent() - before


def show(name, row, count):
    wall, cpu = row
    print(
        f"{name:16} {wall:8.2f} s  {cpu:8.2f} s of processors  {cpu / wall:5.2f} at work  "
        f"{1e6 * wall / count:8.1f} us a glyph  load {os.getloadavg()[0]:.1f}",
        flush=True,
    )


def measure(client, batch, modes, repeats):
    """The best of each mode, asked in turn; all must give the same bits."""
    best, digests = {}, set()
    for _ in range(repeats):
        for name, (engine, do) in modes.items():
            result, *row = watched(engine and client, do)
            digests.add(digest(result))
            show(name, row, len(batch))
            best[name] = tuple(map(min, row, best.get(name, row)))
    assert len(digests) == 1, "the results differ"
    print(f"digest {digests.pop()}, {refused(result)} refused\nbest of {repeats}, {len(batch)} glyphs:")
    base = best["one process"]
    for name, row in best.items():
        show(name, row, len(batch))
        print(
            f"{'':16} {base[0] / row[0]:6.3f} times as fast, "
            f"{100 * (row[1] / base[1] - 1):6.2f} % more processor time"
        )


def chunks(client, batch, repeats):
    """What the engine takes, beside what the work takes, by the size of a task."""
    from kurvo import cluster

    count = len(batch)
    own = min(watched(None, lambda: in_this_process(batch, 1))[2] for _ in range(repeats))
    print(f"work: {1e6 * own / count:.0f} us a glyph")
    for chunk in (4**i for i in range(7)):
        cost = min(
            watched(client, lambda: cluster.apply(client, moved, batch, chunk=chunk))[2]
            for _ in range(repeats)
        )
        print(f"| {chunk} | {1e6 * cost / count:.0f} | {100 * cost / own:.1f} % |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    parser.add_argument("table", nargs="?")
    parser.add_argument("--fonts", nargs="*", default=FONTS)
    parser.add_argument("--every", type=int, default=1)
    parser.add_argument("--workers", type=int, default=2)
    parser.add_argument("--scheduler", help="address of a running scheduler")
    parser.add_argument("--measure", action="store_true")
    parser.add_argument("--chunks", action="store_true")
    parser.add_argument("--repeats", type=int, default=3)
    asked = parser.parse_args()

    from kurvo import cluster

    names, batch = read(asked.fonts, asked.every)
    count = len(batch)
    print(f"{count} glyphs, {(batch.words.nbytes + batch.numbers.nbytes) / count:.0f} bytes each")
    client = (
        cluster.distributed.Client(asked.scheduler) if asked.scheduler else cluster.local(asked.workers)
    )
    with client:
        cluster.apply(client, work, batch[: 2 * asked.workers], chunk=1)  # all are awake
        modes = {
            "one process": (False, lambda: in_this_process(batch, 1)),
            "threads": (False, lambda: in_this_process(batch, asked.workers)),
            "cluster": (True, lambda: cluster.apply(client, work, batch)),
        }
        if asked.measure:
            measure(client, batch, modes, asked.repeats)
        if asked.chunks:
            chunks(client, batch, asked.repeats)
        if asked.table:
            result = cluster.apply(client, work, batch)
            print(f"digest {digest(result)}, {refused(result)} refused")
            write(asked.table, names, result)


if __name__ == "__main__":
    main()
