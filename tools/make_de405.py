#!/usr/bin/env python3
"""Writes the JPL ephemeris DE405 (1959 to 2060) as a standard binary DE file.

The coefficients come from Debian's packages casacore-data-jpl-de405 and python3-casacore. Their
table has one row per 32-day record: the column MJD holds its first day, the column x its
coefficients without the two dates that stand first in a record of the binary file.

With --check, a CSV of states is written as well, evaluated from the table itself in extended
precision by numpy's Chebyshev series: random bodies and instants, and the ends of records.
"""
import argparse
import os
import random
import struct
import sys

try:
    import numpy as np
    from casacore.tables import table
except ImportError as error:
    sys.exit(f"make_de405: {error}; install python3-casacore and casacore-data-jpl-de405")

TABLE = "/usr/share/casacore/data/ephemerides/DE405"
NCOEFF = 1018
SPAN = 32.0
MJD_ZERO = 2400000.5  # Julian date of modified Julian date 0

# First coefficient in a record (1-based, after the two dates), coefficients per component,
# sub-intervals; Standish 1998, JPL IOM 312.F-98-048.
POINTERS = [
    (3, 14, 4),    # Mercury
    (171, 10, 2),  # Venus
    (231, 13, 2),  # Earth-Moon barycentre
    (309, 11, 1),  # Mars
    (342, 8, 1),   # Jupiter
    (366, 7, 1),   # Saturn
    (387, 6, 1),   # Uranus
    (405, 6, 1),   # Neptune
    (423, 6, 1),   # Pluto
    (441, 13, 8),  # Moon, geocentric
    (753, 11, 2),  # Sun
    (819, 10, 4),  # nutations, two components
]
LIBRATIONS = (899, 10, 4)
MERCURY, EMB, MOON, SUN = 1, 3, 10, 11

# Keywords of the table that are not constants of the ephemeris.
OWN_KEYWORDS = {"VS_CREATE", "VS_DATE", "VS_VERSION", "VS_TYPE", "TAB_VERSION", "MJD0", "dMJD"}


def read_table():
    """Answers (first Julian date, coefficients by record, constants by name)."""
    if not os.path.isdir(TABLE):
        sys.exit(f"make_de405: no table {TABLE}; install casacore-data-jpl-de405")
    source = table(TABLE, ack=False)
    mjd = source.getcol("MJD")
    rows = source.getcol("x")
    keywords = source.getkeywords()
    offsets = source.getcoldesc("x")["keywords"]["Description"].reshape(3, 13)
    source.close()

    if [tuple(int(n) for n in row) for row in offsets.T] != POINTERS + [LIBRATIONS]:
        sys.exit("make_de405: the table's pointers are not those of DE405")
    if rows.shape[1] != NCOEFF or not np.all(np.diff(mjd) == SPAN):
        sys.exit("make_de405: the table is not one row of 1018 values every 32 days")
    if rows[:, NCOEFF - 2:].any():
        sys.exit("make_de405: coefficients where the table should hold padding")
    constants = {k: float(v) for k, v in keywords.items() if k not in OWN_KEYWORDS}
    return float(mjd[0]) + MJD_ZERO, rows[:, :NCOEFF - 2], constants


def calendar_date(jd):
    """Gregorian date of a Julian date at midnight, as in the titles: 1959 DEC 10."""
    days = np.datetime64("1858-11-17") + int(jd - MJD_ZERO)
    year, month, day = str(days).split("-")
    names = "JAN FEB MAR APR MAY JUN JUL AUG SEP OCT NOV DEC".split()
    return f"{year} {names[int(month) - 1]} {day}"


def write_file(path, start, rows, constants):
    end = start + SPAN * len(rows)
    titles = ["JPL Planetary Ephemeris DE405/LE405",
              f"Start Epoch: JED= {start:10.1f} {calendar_date(start)} 00:00:00",
              f"Final Epoch: JED= {end:10.1f} {calendar_date(end)} 00:00:00"]
    names = list(constants)
    header = b"".join(title.encode().ljust(84) for title in titles)
    header += b"".join(name.encode().ljust(6) for name in names).ljust(2400)
    header += struct.pack("<3d", start, end, SPAN)
    header += struct.pack("<i2d", len(names), constants["AU"], constants["EMRAT"])
    header += struct.pack("<36i", *(n for row in POINTERS for n in row))
    header += struct.pack("<i3i", int(constants["DENUM"]), *LIBRATIONS)
    values = struct.pack(f"<{len(names)}d", *constants.values())

    os.makedirs(os.path.dirname(os.path.abspath(path)), exist_ok=True)
    partial = path + ".part"
    with open(partial, "wb") as out:
        out.write(header.ljust(NCOEFF * 8, b"\0"))
        out.write(values.ljust(NCOEFF * 8, b"\0"))
        for number, row in enumerate(rows):
            first = start + SPAN * number
            out.write(struct.pack("<2d", first, first + SPAN))
            out.write(row.astype("<f8").tobytes())
    os.replace(partial, path)


def barycentric(start, rows, body, t):
    """State [km, km/day] from the series of one row of POINTERS, in extended precision."""
    offset, ncoef, nsub = POINTERS[body - 1]
    record = min(int((t - start) // SPAN), len(rows) - 1)
    length = SPAN / nsub
    within = t - (start + SPAN * record)
    sub = min(int(within // length), nsub - 1)
    tau = np.longdouble(2 * (within - length * sub) / length - 1)
    block = rows[record][offset - 3:offset - 3 + 3 * ncoef * nsub].reshape(nsub, 3, ncoef)
    series = block[sub].astype(np.longdouble).T
    position = np.polynomial.chebyshev.chebval(tau, series)
    slope = np.polynomial.chebyshev.chebval(tau, np.polynomial.chebyshev.chebder(series))
    return np.concatenate([position, slope * 2 / np.longdouble(length)])


def state(start, rows, constants, body, t):
    """What a caller of the library gets [au, au/day]: heliocentric planets, geocentric Moon,
    barycentric Sun; 3 is the Earth itself."""
    result = barycentric(start, rows, body, t)
    if body < MOON:
        result = result - barycentric(start, rows, SUN, t)
    if body == EMB:
        moon = barycentric(start, rows, MOON, t)
        result = result - moon / (1 + np.longdouble(constants["EMRAT"]))
    return result / np.longdouble(constants["AU"])


def write_check(path, count, start, rows, constants):
    draw = random.Random(405)
    end = start + SPAN * len(rows)
    cases = [(body, t) for body in range(MERCURY, SUN + 1)
             for t in (start, start + SPAN, start + 100 * SPAN + 4, end - SPAN, end)]
    cases += [(draw.randint(MERCURY, SUN), draw.uniform(start, end)) for _ in range(count)]
    with open(path, "w", encoding="ascii") as out:
        out.write("# States of DE405 [au, au/day], by make_de405.py --check: extended precision\n"
                  "# Chebyshev series of numpy on the packaged table. Bodies as getState counts.\n"
                  "body,day,fraction,x,y,z,vx,vy,vz\n")
        for body, t in cases:
            day = int(t)
            values = state(start, rows, constants, body, t)
            fields = [body, day, repr(t - day)] + [repr(float(v)) for v in values]
            out.write(",".join(str(field) for field in fields) + "\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("out", help="binary file to write")
    parser.add_argument("--check", nargs=2, metavar=("N", "CSV"),
                        help="also write N random states and those at record ends")
    arguments = parser.parse_args()
    start, rows, constants = read_table()
    write_file(arguments.out, start, rows, constants)
    if arguments.check:
        write_check(arguments.check[1], int(arguments.check[0]), start, rows, constants)


if __name__ == "__main__":
    main()
