"""Batches on workers: the same bits as in one process, whatever happens to a worker."""

import os
import pathlib
import signal
import subprocess
import sys

import numpy as np
import pytest

import kurvo

cluster = pytest.importorskip("kurvo.cluster")
pytest.importorskip("fontTools")
sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / "bench"))
import glyph_job  # noqa: E402

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf"
if not os.path.exists(FONT):
    pytest.skip("the font DejaVu is not installed", allow_module_level=True)


@pytest.fixture(scope="module")
def batch():
    return glyph_job.read([FONT], every=25)[1]


@pytest.fixture(scope="module")
def client():
    with cluster.local(2) as client:
        yield client


def dies_once(batch, marker):
    try:
        open(marker, "x").close()
    except FileExistsError:
        return glyph_job.work(batch)
    os.kill(os.getpid(), signal.SIGKILL)


def test_one_process_threads_and_workers_give_the_same(client, batch, tmp_path):
    want = glyph_job.digest(glyph_job.work(batch))
    assert glyph_job.digest(glyph_job.in_this_process(batch, 2)) == want
    for chunk in (7, 64, len(batch)):
        assert glyph_job.digest(cluster.apply(client, glyph_job.work, batch, chunk=chunk)) == want
    marker = tmp_path / "died"
    died = cluster.apply(client, dies_once, batch, chunk=8, marker=str(marker))
    assert marker.exists() and glyph_job.digest(died) == want


def test_what_work_raises_is_raised_and_nothing_is_worked_on_here(client, batch):
    with pytest.raises(kurvo.Error, match="KURVO_ERR_NOT_FINITE"):
        cluster.apply(client, kurvo.OutlineBatch.offset, batch, distance=float("nan"))
    with pytest.raises(ValueError):
        cluster.apply(client, glyph_job.work, batch, chunk=0)
    area, codes = cluster.apply(client, kurvo.OutlineBatch.area, kurvo.OutlineBatch.of([]))
    assert len(area) == len(codes) == 0
    gapped = kurvo.Chain.polyline([(0, 0), (1, 0), (1, 1), (0, 1e-4)])
    with kurvo.tolerance(1e-3):  # workers have the caller's
        loose = kurvo.OutlineBatch.of([kurvo.Region(gapped)] * 9)
        assert not cluster.apply(client, kurvo.OutlineBatch.area, loose, chunk=4)[1].any()
    assert cluster.apply(client, kurvo.OutlineBatch.area, loose, chunk=4)[1].all()


def test_tables_are_written(batch, tmp_path):
    names, result = {"glyph": np.arange(len(batch))}, glyph_job.work(batch)
    glyph_job.write(str(tmp_path / "t.npz"), names, result)
    with np.load(tmp_path / "t.npz") as table:
        again = kurvo.OutlineBatch(*(table[f"arcs_{part}"] for part in kurvo.OutlineBatch.__slots__))
        assert (again.area()[0] == table["arcs_area"]).all()
    try:
        import pyarrow.parquet as parquet
    except ImportError:
        return  # Debian has none
    glyph_job.write(str(tmp_path / "t.parquet"), names, result)
    assert parquet.read_table(tmp_path / "t.parquet").num_rows == len(batch)


def test_a_missing_engine_is_named():
    text = "import sys; sys.modules['distributed'] = None\nimport kurvo\nkurvo.cluster"
    done = subprocess.run([sys.executable, "-c", text], capture_output=True, text=True, check=False)
    assert "python3-distributed" in done.stderr.splitlines()[-1]
