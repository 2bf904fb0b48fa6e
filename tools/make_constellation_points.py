#!/usr/bin/env python3
"""Writes data/reference/constellations.csv: random directions and their constellations.

The constellations are those of astropy (Debian's python3-astropy), which precesses a direction
to B1875.0 and looks it up in the zones of Roman 1987. The directions
are spread evenly over the sphere, the same at every run, and rounded as the file holds them.
"""
import argparse
import csv
import sys

try:
    import numpy as np
    from astropy.coordinates import SkyCoord, get_constellation
except ImportError as error:
    sys.exit(f"make_constellation_points: {error}; install python3-astropy")

COUNT = 10000
HEADER = """\
# Directions over the whole sky and the constellations they lie in, by a lookup at B1875.0, for
# which the boundaries were drawn: astropy's get_constellation (tools/make_constellation_points.py).
# Degrees, mean equator and equinox of J2000.0. index: as in constellation_names.csv.
"""


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("names", help="data/constellation_names.csv")
    parser.add_argument("out", help="the file to write")
    arguments = parser.parse_args()

    with open(arguments.names, encoding="ascii") as file:
        rows = csv.DictReader(line for line in file if not line.startswith("#"))
        index = {row["con"].lower(): int(row["con_index"]) for row in rows}
    random = np.random.default_rng(1875)
    ra = np.round(random.uniform(0.0, 360.0, COUNT), 4)
    dec = np.round(np.degrees(np.arcsin(random.uniform(-1.0, 1.0, COUNT))), 4)
    # Geocentric, so that no aberration is added on the way to B1875.0.
    found = get_constellation(SkyCoord(ra, dec, unit="deg", frame="gcrs"), short_name=True)

    with open(arguments.out, "w", encoding="ascii") as file:
        file.write(HEADER + "ra_deg,dec_deg,index\n")
        for row in zip(ra, dec, found):
            file.write(f"{row[0]:.4f},{row[1]:.4f},{index[row[2].lower()]}\n")


if __name__ == "__main__":
    main()
