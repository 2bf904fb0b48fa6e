"""The scripts and notebooks of examples/python."""

import importlib
import os
import pathlib
import subprocess
import sys
import tempfile
import time

import numpy as np
import pytest

import solsys

from test_events import ELEMENTS

EXAMPLES = pathlib.Path("examples/python").resolve()
sys.path.insert(0, str(EXAMPLES))
MODULES = os.path.dirname(os.path.dirname(solsys.__file__))

RECIPES = [
    ("tonight", ["Oslo", "2026-12-01"], ["astronomical_dusk  2026-12-01T", "Jupiter "]),
    ("sunsets", [30], ["365 sunsets", "18.0"]),
    ("eclipses_of_a_century", ["Burgos", 2025, 3], ["2026-08-12T18:29  solar  total"]),
    ("asteroid_night", [], ["magnitude", "high"]),
    ("analemma", [], ["2026-06-2", "75.4", "2026-12-2"]),
    ("jupiter_moons", ["2026-12-01", 2], ["O", "transit begins"]),
    ("month_of_the_moon", [], ["2026-12-24T01:28 full Moon"]),
    ("meetings", ["2026-06-01", "2026-09-01"], ["mercury 0.55° from jupiter"]),
    ("visible_passes", ["{elements}", "06251", "Hobart", "2006-06-25", 3], ["to be seen in 3"]),
    ("behind_the_moon", ["Madrid", "2026-01-01", "2026-02-01"], ["disappears", "reappears"]),
]


@pytest.mark.parametrize("name,arguments,told", RECIPES, ids=[r[0] for r in RECIPES])
def test_recipe(name, arguments, told, capsys, tmp_path):
    (tmp_path / "elements.txt").write_text(ELEMENTS)
    importlib.import_module(name).main(*[
        tmp_path / "elements.txt" if a == "{elements}" else a for a in arguments])
    out = capsys.readouterr().out
    assert all(text in out for text in told), out


@pytest.mark.parametrize("name", sorted(p.stem for p in EXAMPLES.glob("*.ipynb")))
def test_notebook(name, monkeypatch):
    nbformat, nbclient = pytest.importorskip("nbformat"), pytest.importorskip("nbclient")
    monkeypatch.setenv("PYTHONPATH", MODULES)
    notebook = nbformat.read(EXAMPLES / f"{name}.ipynb", as_version=4)
    nbclient.NotebookClient(notebook, timeout=300).execute()
    outputs = [o for c in notebook.cells if c.cell_type == "code" for o in c.outputs]
    assert any("image/svg+xml" in o.get("data", {}) or "text/html" in o.get("data", {})
               for o in outputs)


def test_dask_survives_the_loss_of_a_worker():
    """In a process of its own; the first worker is killed once a portion is done."""
    pytest.importorskip("distributed")
    run = subprocess.run([sys.executable, __file__], cwd=EXAMPLES, capture_output=True, text=True,
                         timeout=500, env={**os.environ, "PYTHONPATH": f"{MODULES}:{EXAMPLES}"})
    assert run.returncode == 0 and "nothing lost" in run.stdout, run.stderr[-2000:]


def same_survey(client):
    """Portions of a file of orbits find together what one look finds."""
    import dask_survey
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "ORBITS.DAT")
        dask_survey.make_up(path, 20_000)
        count, table = dask_survey.screen(client, path, within_au=0.3, size=1_000_000)
        alone = solsys.MinorPlanets(path)
        wanted = alone.near_earth(solsys.Model(), "2026-01-01", "2026-12-31", 0.3)
    assert count == len(alone) == 20_000 and len(wanted) > 3
    assert table.body.tolist() == wanted.body.tolist() and (table.time == wanted.time).all()


def kill_a_worker():
    import dask_risings
    from dask.distributed import Client, LocalCluster
    with LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None) as cluster:
        with Client(cluster) as client:
            victims = []

            def progress(done):
                if not victims:
                    victims.append(next(iter(cluster.workers.values())).pid)
                    os.kill(victims[0], 9)

            table = dask_risings.count_all(client, 60, size=6, progress=progress)
            same_survey(client)
    alone = dask_risings.portion(np.arange(60), 2026, "")[1]
    assert victims and (table == alone).all() and table.min() > 200
    print("nothing lost")


if __name__ == "__main__":
    start = time.monotonic()
    kill_a_worker()
    print(f"{time.monotonic() - start:.0f} s")
