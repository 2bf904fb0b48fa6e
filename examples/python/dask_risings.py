"""Risings and settings of the Sun and the Moon for 20,000 cities and a year, on a Dask cluster.

    python3 dask_risings.py [20000] [2026] [PATH_OF_A_DE_FILE]

Here two processes of this machine work; with the address of a scheduler in DASK_SCHEDULER_ADDRESS
the same code runs on a cluster. A portion of 250 cities takes a worker some seconds: long against
the scheduler's work for it, short against what is lost when a worker dies. Its portions are then
given to another, up to `retries` times.
"""

import os
import sys

import numpy as np
from dask.distributed import Client, LocalCluster, as_completed

import solsys

PORTION = 250


def portion(numbers, year, ephemeris):
    """For each city how often the Sun and the Moon rise and set: what a study would keep."""
    cities = solsys.largest_cities(len(numbers), first=int(numbers[0]))
    model = solsys.Model(ephemeris)
    counts = np.zeros((len(cities), 4), int)
    for column, body in ((0, "sun"), (2, "moon")):
        passed = model.passages(body, f"{year}-01-01", f"{year + 1}-01-01", cities)
        for offset, rising in enumerate((True, False)):
            mine = passed.site[passed.rising == rising]
            counts[:, column + offset] = np.bincount(mine, minlength=len(cities))
    return int(numbers[0]), counts


def count_all(client, count=20_000, year=2026, ephemeris="", size=PORTION, progress=None):
    """An array of a row a city: risings and settings of the Sun, then of the Moon."""
    parts = np.split(np.arange(count), np.arange(size, count, size))
    futures = client.map(portion, parts, year=year, ephemeris=ephemeris, retries=3, pure=False)
    out = np.full((count, 4), -1)
    for done, (_, (first, counts)) in enumerate(as_completed(futures, with_results=True), 1):
        out[first:first + len(counts)] = counts
        if progress:
            progress(done / len(parts))
    return out


def connect():
    address = os.environ.get("DASK_SCHEDULER_ADDRESS")
    return Client(address or LocalCluster(n_workers=2, threads_per_worker=1,
                                          dashboard_address=None))


def main(count=20_000, year=2026, ephemeris=""):
    with connect() as client:
        table = count_all(client, int(count), int(year), ephemeris,
                          progress=lambda f: print(f"\r{f:4.0%}", end="", file=sys.stderr))
    print(f"{table.sum()} risings and settings; the fewest of the Sun: {table[:, 0].min()}")


if __name__ == "__main__":
    main(*sys.argv[1:])
