"""When a satellite can be seen to cross the sky of a city in the nights to come.

    python3 visible_passes.py ELEMENTS.txt 25544 Oslo [2026-12-01] [10]
"""

import sys

import numpy as np

import solsys


def visible_passes(path, satellite, place, start=None, days=10, at_least_deg=10):
    """The passes that are lit in a dark sky, and the satellite."""
    start = np.datetime64(start, "s") if start else solsys.now().astype("M8[s]")
    found = solsys.find_satellite(solsys.read_satellites(path), satellite, near=start)
    passes = solsys.Model().passes(found, start, start + np.timedelta64(int(days), "D"), place,
                                   culmination_deg=at_least_deg)
    return passes[~np.isnat(passes.best)], found


def main(path, satellite, place="Oslo", start=None, days=10):
    passes, found = visible_passes(path, satellite, place, start, days)
    print(f"{found.name}: {len(passes)} passes to be seen in {days} days")
    for row in passes:
        print(f"{str(row.best)[:19]}  {row.best_altitude_deg:2.0f}° high in "
              f"{row.best_azimuth_deg:3.0f}°; rises {str(row.rise)[11:16]} in "
              f"{row.rise_azimuth_deg:3.0f}°"
              + ("" if np.isnat(row.into_shadow) else
                 f", into the shadow {str(row.into_shadow)[11:19]}"))


if __name__ == "__main__":
    main(*sys.argv[1:])
