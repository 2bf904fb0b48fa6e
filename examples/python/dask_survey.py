"""Which minor planets of a whole MPCORB file come near the Earth in a year, on a Dask cluster.

    python3 dask_survey.py MPCORB.DAT [2026] [0.01]
    python3 dask_survey.py --made-up 1400000     a file of random orbits, as long as the real one

The file must be where every worker can read it. A portion is 20 MB of it, about 100,000 orbits:
seconds of work. A worker that dies loses its portion alone, which another one is then given.
"""

import os
import sys
import tempfile

import numpy as np
from dask.distributed import as_completed

import solsys
from dask_risings import connect

PORTION = 20_000_000
ALPHABET = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"


def portion(path, start, end, year, within_au):
    """The approaches of the orbits on the lines that begin between two places of the file."""
    with open(path, "rb") as file, tempfile.NamedTemporaryFile(suffix=".DAT") as part:
        file.seek(max(start - 1, 0))
        if start:
            file.readline()  # the rest of a line that began before
        part.write(file.read(max(end - file.tell(), 0)) + file.readline())
        part.flush()
        planets = solsys.MinorPlanets(part.name)
    return len(planets), planets.near_earth(solsys.Model(), f"{year}-01-01", f"{year}-12-31",
                                            within_au)


def screen(client, path, year=2026, within_au=0.01, size=PORTION, progress=None):
    """How many orbits were looked through, and a table of the approaches in order of time."""
    starts = range(0, os.path.getsize(path), size)
    futures = client.map(lambda start: portion(path, start, start + size, year, within_au), starts,
                         retries=3, pure=False)
    orbits, tables = 0, []
    for done, (_, (count, table)) in enumerate(as_completed(futures, with_results=True), 1):
        orbits, tables = orbits + count, tables + [table]
        if progress:
            progress(done / len(starts))
    table = np.concatenate(tables).view(np.recarray)
    return orbits, table[np.argsort(table.time)]


def make_up(path, count, seed=1):
    """Writes random orbits of the main belt, one in fifty of them near the Earth's."""
    random = np.random.default_rng(seed)
    near = np.arange(count) % 50 == 0
    e = np.where(near, random.uniform(0.1, 0.6, count), random.rayleigh(0.08, count).clip(0, 0.4))
    a = np.where(near, random.uniform(0.9, 1.1, count) / (1 - e), random.uniform(2.1, 3.3, count))
    i = np.where(near, 15, 8) * random.rayleigh(0.8, count)
    angles = random.uniform(0, 360, (count, 3))
    with open(path, "w", encoding="ascii") as file:
        for k in range(count):
            file.write(f"{packed(k + 1):7} {random.uniform(12, 24):5.2f}  0.15 K2676 "
                       f"{angles[k, 0]:9.5f}  {angles[k, 1]:9.5f}  {angles[k, 2]:9.5f}  "
                       f"{i[k]:9.5f}  {e[k]:9.7f} {0.9856076686 / a[k] ** 1.5:11.8f} "
                       f"{a[k]:11.7f}  0 MPO000001  1000  10 2000-2026 0.50 M-v 30k MPCLINUX   "
                       f"0000 {f'({k + 1}) Made up':>28}20260601\n")


def packed(number):
    """As the file numbers minor planets."""
    if number < 620_000:
        return ALPHABET[number // 10_000] + f"{number % 10_000:04d}"
    rest, digits = number - 620_000, ""
    for _ in range(4):
        rest, digit = divmod(rest, 62)
        digits = ALPHABET[digit] + digits
    return "~" + digits


def main(path, year=2026, within_au=0.01):
    with tempfile.TemporaryDirectory() as folder, connect() as client:
        if path == "--made-up":
            path, count, year = os.path.join(folder, "MADE-UP.DAT"), int(year), 2026
            make_up(path, count)
        orbits, table = screen(client, path, int(year), float(within_au),
                               progress=lambda f: print(f"\r{f:4.0%}", end="", file=sys.stderr))
    print(f"\n{orbits} orbits, {len(table)} approaches within {within_au} au")
    for row in table[np.argsort(table.distance_au)][:10]:
        print(f"{str(row.time)[:16]}  {row.body:24} {row.distance_au:.5f} au, "
              f"{row.speed_km_s:.1f} km/s")


if __name__ == "__main__":
    main(*sys.argv[1:])
