"""A year of sunsets for the largest cities: the earliest and the latest by the clock of the Sun.

    python3 sunsets.py [20000] [2026]

The cities are taken in portions, so that what is kept in memory is a portion's table.
"""

import sys

import numpy as np

import solsys

PORTION = 200


def sunsets(cities, year=2026, progress=None):
    """For each city how many sunsets the year has, and their mean time of the local mean day."""
    model = solsys.Model()
    out = np.zeros(len(cities), [("name", "U60"), ("sunsets", int), ("mean_hour", float)])
    out["name"] = [city.name for city in cities]
    for first in range(0, len(cities), PORTION):
        portion = cities[first:first + PORTION]
        passed = model.passages("sun", f"{year}-01-01", f"{year + 1}-01-01", portion)
        sets = passed[~passed.rising]
        longitudes = np.array([city.longitude_deg for city in portion])[sets.site]
        day = (sets.time - sets.time.astype("M8[D]")) / np.timedelta64(1, "h")
        hour = (day + longitudes / 15 - 12) % 24 + 12  # from noon to noon
        count = np.bincount(sets.site, minlength=len(portion))
        total = np.bincount(sets.site, hour, minlength=len(portion))
        out["sunsets"][first:first + PORTION] = count
        out["mean_hour"][first:first + PORTION] = total / np.maximum(count, 1) % 24
        if progress:
            progress((first + len(portion)) / len(cities))
    return out


def main(count=20_000, year=2026):
    table = sunsets(solsys.largest_cities(int(count)), int(year),
                    lambda done: print(f"\r{done:4.0%}", end="", file=sys.stderr))
    for row in table[np.argsort(table["sunsets"], kind="stable")][:10]:
        print(f"{row['name']:30} {row['sunsets']:4} sunsets, {row['mean_hour']:5.2f} h on average")


if __name__ == "__main__":
    main(*sys.argv[1:])
