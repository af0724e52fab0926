"""Whatever comes in, values or exceptions come out, and what came in stays as it was."""

import math

import numpy as np
import pytest

import kurvo
from calls import BATCH, CALLS, SCALARS

pytest.importorskip("hypothesis")
from hypothesis import given, settings, strategies as st  # noqa: E402
from hypothesis.extra import numpy as arrays  # noqa: E402

REFUSALS = (TypeError, ValueError, IndexError, OverflowError)  # kurvo.Error is a ValueError

FLOATS = st.one_of(
    st.floats(-10, 10), st.sampled_from([0.0, 1.0, 5e-324, 1e300, math.nan, math.inf, -math.inf]))
SHAPES = st.sampled_from([(), (0,), (1,), (2,), (3,), (6,), (0, 2), (3, 2), (3, 3), (3, 4), (2, 3, 2), (1, 0)])


@st.composite
def hostile(draw):
    """Arrays of any type, with strides that skip, run backwards or stand still, of either order."""
    shape = draw(SHAPES)
    kind = draw(st.sampled_from("f8 f8 f8 >f8 f4 f2 i4 i8 u1 ? c16 U3 O M8[s] f8,f8".split()))
    wide = tuple(2 * n for n in shape)
    if kind in ("f8", ">f8", "f4", "f2", "c16", "O"):
        array = draw(arrays.arrays("f8", wide, elements=FLOATS))
        with np.errstate(all="ignore"):
            array = array.astype(kind)
    else:
        array = np.zeros(wide, kind)
        if kind[0] in "iu":
            array += np.array(draw(st.integers(0, 5))).astype(kind)
    steps = [draw(st.sampled_from([slice(None, None, 2), slice(None, None, -2), slice(0, n)])) for n in shape]
    array = array[tuple(steps)] if shape else array
    how = draw(st.sampled_from(["", "fortran", "still", "read-only", "list"]))
    if how == "fortran":
        array = np.asfortranarray(array)
    if how == "still" and array.size:
        array = np.broadcast_to(array[:1], array.shape) if shape else array
    if how == "read-only":
        array.setflags(write=False)
    if how == "list":
        return [array.tolist(), [1.0], [[2.0, 3.0], 4.0]] if draw(st.booleans()) else array.tolist()
    return array


def held(given):
    return given.tobytes() if isinstance(given, np.ndarray) else repr(given)


def outcome(call, argument):
    try:
        result = call(argument)
    except REFUSALS as refused:
        return type(refused)
    if hasattr(result, "pack"):
        result = result.pack()
    elif hasattr(result, "columns"):
        result = result.columns
    return [np.asarray(part).tobytes() for part in result] if isinstance(result, tuple) else str(result)


@pytest.mark.parametrize("name", CALLS)
@given(given=hostile())
@settings(max_examples=60)
def test_arrays(name, given):
    bits = held(given)
    got = outcome(CALLS[name], given)
    assert bits == held(given)
    try:
        array = np.asarray(given)
    except ValueError:  # lists of different lengths
        assert isinstance(got, type)
        return
    if array.dtype.kind == "f" and not np.isfinite(array).all() and array.ndim:
        assert isinstance(got, type), "numbers that are not finite were taken"
    if array.dtype.kind in "cUMV?":
        assert isinstance(got, type), "these are no numbers"
    if isinstance(given, np.ndarray):  # strides, order and writing are nothing to a call
        assert got == outcome(CALLS[name], given.copy(order="C"))


ODD = st.one_of(FLOATS, st.integers(-(2**70), 2**70), st.integers(-5, 5), st.sampled_from(
    [None, "1", b"1", True, 1j, (), [1.0], {}, np.float64(2), np.array([1.0]), np.int64(-1), object()]))


@pytest.mark.parametrize("name", SCALARS)
@given(given=ODD)
@settings(max_examples=60)
def test_scalars(name, given):
    got = outcome(SCALARS[name], given)
    if isinstance(given, float) and math.isnan(given):
        assert isinstance(got, type), "a NaN was taken"


@given(data=st.data())
@settings(max_examples=200)
def test_columns(data):
    columns = [column.copy() for column in BATCH.columns]
    for _ in range(data.draw(st.integers(1, 4))):
        which = columns[data.draw(st.integers(0, 4))]
        value = data.draw(st.integers(-3, 99) if which.dtype.kind == "i" else FLOATS)
        which[data.draw(st.integers(0, len(which) - 1))] = value
    cut = data.draw(st.integers(0, 4))
    columns[cut] = columns[cut][: data.draw(st.integers(0, len(columns[cut])))]

    def ask(columns):
        batch = kurvo.OutlineBatch(*columns)
        return [outcome(call, batch) for call in (
            lambda b: b.area(threads=2), lambda b: b.offset(0.1), lambda b: b[:2].simplify(), list)]

    outcome(lambda c: str(ask(c)), columns)
