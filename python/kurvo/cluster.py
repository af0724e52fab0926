"""Batches on the workers of dask.distributed: on this machine's cores, or on a cluster's.

Nothing here schedules. Rows of a batch are tasks of the client, and so what that engine promises
holds for them: a task whose worker is lost is done again by another.
"""

from __future__ import annotations

import functools
import importlib
import warnings
from typing import Any, Callable, Iterable

import numpy as np

from ._kurvo import tolerance, tolerances
from .batch import OutlineBatch

try:  # by name: whoever checks types need not read all of the engine
    config: Any = importlib.import_module("dask.config")
    distributed: Any = importlib.import_module("distributed")
except ImportError as error:
    raise ImportError(
        "kurvo.cluster needs dask.distributed: Debian's package python3-distributed, or "
        "'pip install distributed'"
    ) from error

__all__ = ["CHUNK", "apply", "join", "local", "rows"]

CHUNK = 256  # regions in a task

# Without these the engine takes 4 % of two cores for looking at itself, and packs what never
# leaves the machine.
_LOCAL = {
    "distributed.admin.tick.interval": "1s",
    "distributed.admin.system-monitor.interval": "5s",
    "distributed.comm.compression": None,
    "distributed.worker.memory.monitor-interval": "1s",
    "distributed.worker.profile.enabled": False,
}


def rows(batch: OutlineBatch, chunk: int = CHUNK) -> list[OutlineBatch]:
    """A batch in rows of so many regions."""
    if chunk < 1:
        raise ValueError("chunk: a number from 1 on is needed")
    return [batch[i : i + chunk] for i in range(0, len(batch), chunk)]


def join(results: Iterable[Any]) -> Any:
    """Results for rows as the result for all: batches, arrays, or tuples and dicts of these."""
    parts = list(results)
    first = parts[0]
    if isinstance(first, OutlineBatch):
        return OutlineBatch.join(parts)
    if isinstance(first, dict):
        return {name: join(part[name] for part in parts) for name in first}
    if isinstance(first, tuple):
        return tuple(join(column) for column in zip(*parts))
    return np.concatenate(parts)


def _ask(work: Any, tolerances: tuple[float, float], options: Any, part: OutlineBatch) -> Any:
    length, angle = tolerances
    with tolerance(length, angle=angle):
        return work(part, **options)


def apply(
    client: Any,
    work: Callable[..., Any],
    batch: OutlineBatch,
    *,
    chunk: int = CHUNK,
    **options: Any,
) -> Any:
    """What work(batch, **options) gives, computed in rows by the workers of a client.

    work gets an OutlineBatch and gives what `join` joins, one entry for each region; being
    functions of each region alone, those of OutlineBatch give the same bits for any chunk and any
    workers. The tolerances are those of the caller. What work raises is raised here. A batch
    without regions is worked on here.
    """
    parts = rows(batch, chunk)
    if not parts:
        return work(batch, **options)
    with warnings.catch_warnings():
        # It is advised to put large rows on the workers first; there they would be lost with one.
        warnings.filterwarnings("ignore", "Large object")
        ask = functools.partial(_ask, work, tolerances(), options)
        futures = client.map(ask, parts, pure=False)
    return join(client.gather(futures))


def local(workers: int, threads: int = 1) -> Any:
    """A client of so many new processes of this machine; it ends them when it is closed.

    Use it in a with statement, and in a script under `if __name__ == "__main__"`.
    """
    with config.set(_LOCAL):
        return distributed.Client(
            n_workers=workers, threads_per_worker=threads, processes=True, dashboard_address=":0"
        )
