"""Many regions as columns of plain numbers.

>>> import kurvo, numpy
>>> discs = kurvo.OutlineBatch.of(kurvo.Region.circle((x, 0), 1) for x in range(4))
>>> both = discs.combine("intersection", kurvo.OutlineBatch.of([kurvo.Region.circle((0, 0), 1)]))
>>> area, codes = both.area(threads=2)
>>> area.round(3).tolist(), codes.tolist()
([3.142, 1.228, 0.0, 0.0], [0, 0, 0, 0])
"""

from __future__ import annotations

from typing import TYPE_CHECKING, Any, Iterable, Iterator, Tuple, overload

import numpy as np

from . import _kurvo

if TYPE_CHECKING:
    import numpy.typing as npt
    from typing_extensions import Unpack

    Arrays = Tuple[
        npt.NDArray[Any], npt.NDArray[Any], npt.NDArray[Any], npt.NDArray[Any], npt.NDArray[Any]
    ]
    Column = npt.NDArray[Any]
    Number = npt.ArrayLike

__all__ = ["OutlineBatch"]

_OPERATIONS = ("union", "intersection", "difference", "xor")


class OutlineBatch:
    """Regions as five columns, never changed by what is asked of them.

    words (int32) and numbers (float64) are what Region.pack gives of each region, one after the
    other; region i lies from word_starts[i] to word_starts[i + 1], and likewise number_starts
    (both int64, one longer than the batch). codes (int32): 0, or why there is no region; then it
    is an empty one. The arrays are taken as they are and not copied; others than these raise
    TypeError.

    Every function works on the regions one by one on `threads` threads with the GIL released, and
    gives the same bits for any number of them. A region that is refused has its code in the
    column of codes, those after it are worked on all the same; a code that a batch brings stays.
    Tolerances are those of the calling thread; options those of the functions of Region, but for
    origins, proceed and report.

    Pickled by protocol 5 with buffers out of band, the columns are not copied.
    """

    __slots__ = ("words", "word_starts", "numbers", "number_starts", "codes")

    def __init__(
        self,
        words: Column,
        word_starts: Column,
        numbers: Column,
        number_starts: Column,
        codes: Column,
    ) -> None:
        self.words = words
        self.word_starts = word_starts
        self.numbers = numbers
        self.number_starts = number_starts
        self.codes = codes
        _kurvo.batch_check(self.columns)

    @classmethod
    def of(cls, regions: Iterable[_kurvo.Region]) -> OutlineBatch:
        """Of regions."""
        return cls(*_kurvo.batch_pack(regions))

    @classmethod
    def join(cls, batches: Iterable[OutlineBatch]) -> OutlineBatch:
        """Batches one behind the other, in new columns.

        >>> import kurvo
        >>> discs = kurvo.OutlineBatch.of(kurvo.Region.circle((0, 0), r) for r in (1, 2, 3))
        >>> kurvo.OutlineBatch.join([discs[2:], discs[:2]]).area()[0].round(1).tolist()
        [28.3, 3.1, 12.6]
        """
        parts = list(batches)

        def column(get: Any, kind: str) -> Column:
            return np.concatenate([np.empty(0, kind), *map(get, parts)])

        def starts(get: Any) -> Column:
            return np.cumsum(np.insert(column(lambda b: np.diff(get(b)), "i8"), 0, 0))

        def used(values: Column, from_to: Column) -> Column:
            return values[from_to[0] : from_to[-1]]

        return cls(
            column(lambda b: used(b.words, b.word_starts), "i4"),
            starts(lambda b: b.word_starts),
            column(lambda b: used(b.numbers, b.number_starts), "f8"),
            starts(lambda b: b.number_starts),
            column(lambda b: b.codes, "i4"),
        )

    @property
    def columns(self) -> Arrays:
        """The five arrays, in the order in which they make a batch."""
        return self.words, self.word_starts, self.numbers, self.number_starts, self.codes

    def __len__(self) -> int:
        return len(self.codes)

    @overload
    def __getitem__(self, index: int) -> _kurvo.Region: ...
    @overload
    def __getitem__(self, index: slice) -> OutlineBatch: ...
    def __getitem__(self, index: int | slice) -> _kurvo.Region | OutlineBatch:
        """One region, kurvo.Error where there is a code; or regions in a row as a batch.

        Of a row only the starts are new arrays, the other columns are views.
        """
        if isinstance(index, slice):
            return self._row(index)
        if not -len(self) <= index < len(self):
            raise IndexError("a batch has no such region")
        return _kurvo.batch_region(self.columns, index % len(self))

    def _row(self, index: slice) -> OutlineBatch:
        first, behind, step = index.indices(len(self))
        if step != 1:
            raise ValueError("a batch is cut into rows, with a step of 1")
        behind = max(first, behind)
        words = self.word_starts[first : behind + 1]
        numbers = self.number_starts[first : behind + 1]
        return OutlineBatch(
            self.words[words[0] : words[-1]],
            words - words[0],
            self.numbers[numbers[0] : numbers[-1]],
            numbers - numbers[0],
            self.codes[first:behind],
        )

    def __iter__(self) -> Iterator[_kurvo.Region]:
        return (self[i] for i in range(len(self)))

    def __repr__(self) -> str:
        return f"<OutlineBatch of {len(self)}>"

    def __reduce__(self) -> tuple[type[OutlineBatch], Arrays]:
        return OutlineBatch, self.columns

    def combine(
        self,
        operation: str,
        other: OutlineBatch,
        *,
        threads: int = 1,
        **options: Unpack[_kurvo.Tolerances],
    ) -> OutlineBatch:
        """Each region with that of another batch, or with its only one; see Region.combine."""
        if operation not in _OPERATIONS:
            raise ValueError(f"operation: one of {_OPERATIONS} is needed, not {operation!r}")
        number = _OPERATIONS.index(operation)
        return OutlineBatch(
            *_kurvo.batch_combine(self.columns, number, other.columns, threads, **options)
        )

    def simplify(self, *, threads: int = 1, **options: Unpack[_kurvo.Tolerances]) -> OutlineBatch:
        """See Region.simplify."""
        return OutlineBatch(*_kurvo.batch_simplify(self.columns, threads, **options))

    def offset(
        self, distance: Number, *, threads: int = 1, **options: Unpack[_kurvo.Offsetting]
    ) -> OutlineBatch:
        """By one distance (length), or one for each region, (n,); see Region.offset."""
        return OutlineBatch(*_kurvo.batch_offset(self.columns, distance, threads, **options))

    def stroke(
        self,
        left: Number,
        right: Number | None = None,
        *,
        threads: int = 1,
        **options: Unpack[_kurvo.Stroking],
    ) -> OutlineBatch:
        """Along the loops of each region, by one width or one for each; see Chain.stroke."""
        right = left if right is None else right
        return OutlineBatch(*_kurvo.batch_stroke(self.columns, left, right, threads, **options))

    def biarcs(self, deviation: float, *, threads: int = 1) -> OutlineBatch:
        """Lines and arcs within a deviation (length)."""
        return OutlineBatch(*_kurvo.batch_biarcs(self.columns, deviation, threads))

    def area(self, *, threads: int = 1) -> tuple[Column, Column]:
        """Areas, (n,), and codes; NaN beside a code. See Region.area."""
        _, area, codes = _kurvo.batch_measure(self.columns, threads)
        return area, codes

    def length(self, *, threads: int = 1) -> tuple[Column, Column]:
        """Lengths of all loops, (n,), and codes; NaN beside a code."""
        length, _, codes = _kurvo.batch_measure(self.columns, threads)
        return length, codes

    def nearest(self, points: Number, *, threads: int = 1) -> tuple[Column, Column, Column, Column]:
        """To one point for each region, (n, 2): loops, places on them, distances and codes.

        The loop is -1 and the distance NaN where there is none.
        """
        loops, places, distances, codes = _kurvo.batch_nearest(self.columns, points, threads)
        return loops, places, distances, codes

    def flatten(
        self, deviation: float, *, threads: int = 1
    ) -> tuple[Column, Column, Column, Column]:
        """Vertices within a deviation (length), (m, 2), point_starts, loop_starts and codes.

        Loop k has the points from point_starts[k] to point_starts[k + 1], region i the loops from
        loop_starts[i] to loop_starts[i + 1].
        """
        points, point_starts, loop_starts, codes = _kurvo.batch_flatten(
            self.columns, deviation, threads
        )
        return points, point_starts, loop_starts, codes
