#!/usr/bin/env python3
"""Makes the check values data/reference/modern_NAME.csv by ERFA (Debian's python3-erfa) on the states of the DE405
test file: orientation, terrestrial, deflection, states, places, stars. The comments and the columns that were chosen
(instants, sites, geometry, catalogue values) stay; all others are computed anew.

usage: modern_check_values.py build/de405/de405.bin            prints the largest differences from the files
       modern_check_values.py build/de405/de405.bin FOLDER     writes the files there"""
import csv
import math
import os
import sys

import erfa
import numpy as np

from de405 import De405

DATA = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "data", "reference")
ARCSEC = math.pi / 648000
MAS = ARCSEC / 1000
LIGHT_DAY = 0.005775518331436995  # day/au
DE = De405(sys.argv[1])


def orientation(row):
    tt = int(row["tt_day"]), float(row["tt_fraction"])
    ut1 = int(row["ut1_day"]), float(row["ut1_fraction"])
    matrix = erfa.pnm06a(*tt)
    dpsi_2000a, deps_2000a = erfa.nut00a(*tt)
    dpsi, deps = erfa.nut06a(*tt)
    gamma, phi, psi, eps = erfa.pfw06(*tt)
    x, y = erfa.bpn2xy(matrix)
    s = erfa.s06(*tt, x, y)
    era, eo = erfa.era00(*ut1), erfa.eors(matrix, s)
    return [erfa.dtdb(*tt, 0.0, 0.0, 0.0, 0.0), dpsi_2000a, deps_2000a, dpsi, deps, eps, gamma,
            phi, psi, x, y, s, eo, era, erfa.gmst06(*ut1, *tt), erfa.anp(era - eo),
            *matrix.flat]


def terrestrial(row):
    tt = int(row["tt_day"]), float(row["tt_fraction"])
    ut1 = int(row["ut1_day"]), float(row["ut1_fraction"])
    xp, yp = (float(row[k]) * ARCSEC for k in ("xp_arcsec", "yp_arcsec"))
    longitude, latitude = (math.radians(float(row[k])) for k in ("longitude_deg", "latitude_deg"))
    sp, matrix = erfa.sp00(*tt), erfa.pnm06a(*tt)
    gst = erfa.gst06(*ut1, *tt, matrix)
    polar = erfa.pom00(xp, yp, sp)
    whole = polar @ erfa.rz(gst, np.eye(3)) @ matrix
    site = erfa.gd2gc(1, longitude, latitude, float(row["height_m"]))
    # The state of the site: GCRS, metres and metres per second.
    of_date = (polar @ erfa.rz(gst, np.eye(3))).T @ site
    rate = 1.00273781191135448 * 2 * math.pi / 86400
    velocity = matrix.T @ (rate * np.array([-of_date[1], of_date[0], 0.0]))
    return [sp / ARCSEC, gst, *polar.flat, *whole.flat, *(matrix.T @ of_date), *velocity]


# Of the file data/modern_frame/deflection_constants.csv: solar masses, limiter on the Earth.
BENDERS = {"sun": (10, 1.0, 6e-6), "jupiter": (5, 1 / 1047.348644, 3e-9),
           "saturn": (6, 1 / 3497.9018, 3e-10), "uranus": (7, 1 / 22902.98, 1e-11),
           "neptune": (8, 1 / 19412.26, 5e-12), "earth": (3, 1 / 332946.0487, 0.25)}
IN_FILE = {10: 301, 11: 10}  # numbers of the rows' bodies, Moon and Sun, in de405.py


def unit(v):
    return v / np.linalg.norm(v)


def deflection(row):
    _, mass, limiter = BENDERS[row["body"]]
    elongation = math.radians(float(row["elongation_deg"]))
    p = np.array([-math.cos(elongation), math.sin(elongation), 0.0])
    e, em, far = np.array([1.0, 0.0, 0.0]), float(row["em_au"]), float(row["source_au"])
    q = unit(em * e + far * p) if far > 0 else p
    bent = unit(erfa.ld(mass, p, q, e, em, limiter))
    return [math.atan2(np.cross(bent, p)[2], p @ bent) / MAS, bent[0], bent[1]]


def tdb_of(row):
    day, fraction = int(row["tt_day"]), float(row["tt_fraction"])
    return day, fraction + erfa.dtdb(day, fraction, 0.0, 0.0, 0.0, 0.0) / 86400


def states(row):
    number = {"earth": 3, "sun": 10, "jupiter": 5, "saturn": 6}[row["body"]]
    return [*DE.barycentric(number, *tdb_of(row)).flat]


def seen(row, p, path, tau, body):
    """From the direction to everything that follows from it."""
    tdb = tdb_of(row)
    earth, velocity = DE.barycentric(3, *tdb)
    bent = p
    for name in ("saturn", "jupiter", "sun"):
        number, mass, limiter = BENDERS[name]
        if number == body:
            continue
        since = min(max(bent @ (DE.barycentric(number, *tdb)[0] - earth) * LIGHT_DAY, 0.0), tau)
        bender = DE.barycentric(number, tdb[0], tdb[1] - since)[0]
        q = bent if path is None else unit(earth + path - bender)
        from_bender = earth - bender
        bent = unit(erfa.ld(mass, bent, q, unit(from_bender), np.linalg.norm(from_bender), limiter))
    beta = velocity * LIGHT_DAY
    aberrated = erfa.ab(bent, beta, 1e300, math.sqrt(1 - beta @ beta))
    true = erfa.pnm06a(int(row["tt_day"]), float(row["tt_fraction"])) @ aberrated
    ra, dec = erfa.c2s(true)
    return [*p, *bent, *aberrated, *true, math.degrees(erfa.anp(ra)), math.degrees(dec)]


def places(row):
    number = IN_FILE.get(int(row["body"]), int(row["body"]))
    day, fraction = tdb_of(row)
    earth, tau = DE.barycentric(3, day, fraction)[0], 0.0
    for _ in range(10):
        path = DE.barycentric(number, day, fraction - tau)[0] - earth
        tau = np.linalg.norm(path) * LIGHT_DAY
    return [*path, tau, *seen(row, unit(path), path, tau, number)]


def stars(row):
    ra, dec, pm_ra, pm_dec, parallax, speed = (float(x) for x in list(row.values())[1:7])
    day, fraction = tdb_of(row)
    years = ((day - 2451545) + fraction) / 365.25
    p = erfa.pmpx(math.radians(ra), math.radians(dec), pm_ra * MAS / math.cos(math.radians(dec)),
                  pm_dec * MAS, parallax / 1000, speed, years, DE.barycentric(3, day, fraction)[0])
    return seen(row, p, None, 1e9, 0)


# How many columns were chosen, and what computes the others.
FILES = {"orientation": (4, orientation), "terrestrial": (11, terrestrial), "deflection": (4, deflection),
         "states": (4, states), "places": (3, places), "stars": (9, stars)}
PRINTED = {"deflection_mas": "{:.9g}", "ra_deg": "{:.12f}", "dec_deg": "{:.12f}"}

for name, (chosen, compute) in FILES.items():
    with open(os.path.join(DATA, f"modern_{name}.csv")) as file:
        lines = file.read().splitlines()
    comments = [text for text in lines if text.startswith("#")]
    rows = list(csv.DictReader(text for text in lines if not text.startswith("#")))
    columns = list(rows[0])
    computed = columns[chosen:]
    if name == "deflection":
        computed = computed[:3]  # the last one tells where a ray is seen
    most, out = 0.0, [*comments, ",".join(columns)]
    for row in rows:
        for column, value in zip(computed, compute(row)):
            most = max(most, abs(value - float(row[column])) / max(1.0, abs(value)))
            row[column] = PRINTED.get(column, "{!r}").format(float(value))
        out.append(",".join(row.values()))
    if len(sys.argv) > 2:
        with open(os.path.join(sys.argv[2], f"modern_{name}.csv"), "w") as file:
            print(*out, sep="\n", file=file)
    else:
        print(f"modern_{name}.csv: {len(rows)} rows, largest difference {most:.1e} (relative above 1)")
