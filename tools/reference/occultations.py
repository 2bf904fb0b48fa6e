#!/usr/bin/env python3
"""Occultations by the Moon at a site from libswe's topocentric places: Aldebaran, Regulus, Spica,
Antares, Venus, Mars, Saturn from Greenwich, 2015 to 2025. Stars come from Debian's sefstars.txt
when it is there, else from their catalogue places below. Writes data/reference/occultations.csv."""

import sys
from ctypes import c_double
from math import acos, asin, cos, pi, sin

import swe

LONGITUDE, LATITUDE, HEIGHT = 0.0, 51.4779, 46.0
START, END = 2457023.5, 2460676.5  # TT
MOON_RADIUS_AU = 1737.4 / 149597870.7
# Number, name; for stars J2000 place and proper motion [deg, mas/year], parallax [mas], Hipparcos.
BODIES = [(2, "venus"), (4, "mars"), (6, "saturn"), (21421, "aldebaran"), (49669, "regulus"),
          (65474, "spica"), (80763, "antares")]
STARS = {21421: (68.98016279, 16.50930235, 62.78, -189.36), 49669: (152.09296244, 11.96720878,
         -249.40, 4.91), 65474: (201.29824736, -11.16131949, -42.50, -31.73),
         80763: (247.35191542, -26.43200261, -10.16, -23.21)}

swe.LIBRARY.swe_set_topo(c_double(LONGITUDE), c_double(LATITUDE), c_double(HEIGHT))
swe.LIBRARY.swe_fixstar.restype = int
FLAGS = swe.TOPOCENTRIC | swe.EQUATORIAL


def unit(a, d):
    return (cos(d) * cos(a), cos(d) * sin(a), sin(d))


def direction(t, body):
    """Apparent place, topocentric; a star by carrying its J2000 place with the astronomy of ERFA."""
    if body in STARS:
        import erfa
        a, d, pa, pd = STARS[body]
        # Date by ERFA's own chain (IAU 2006/2000A), geocentric: the site's 20 km/h of aberration
        # counts for 0.0003 arcsec between star and Moon.
        ri, di, eo = erfa.atci13(a * pi / 180, d * pi / 180,
                                 pa / 1000 / 3600 * pi / 180 / cos(d * pi / 180),
                                 pd / 1000 / 3600 * pi / 180, 0.0, 0.0, 2400000.5, t - 2400000.5)
        return unit(ri - eo, di)
    a, d, _ = swe.place(t, body, FLAGS)
    return unit(a, d)


def clearance(t, body):
    """Angle between the centres less the Moon's radius."""
    a, d, distance = swe.place(t, 301, FLAGS)
    m, b = unit(a, d), direction(t, body)
    return acos(min(1, sum(x * y for x, y in zip(m, b)))) - asin(MOON_RADIUS_AU / distance)


def bisected(f, a, b):
    fa = f(a)
    for _ in range(50):
        m = (a + b) / 2
        fm = f(m)
        if fa * fm > 0:
            a, fa = m, fm
        else:
            b = m
    return (a + b) / 2


def main(path):
    rows = []
    for body, name in BODIES:
        t = START
        while t < END:
            near = clearance(t, body)
            if near > 0.1:  # at most 0.32 rad a day
                t += max(0.25, (near - 0.05) / 0.32)
                continue
            before, step = near, 2 / 1440
            end = t + 0.3
            while t < end:
                after = clearance(t + step, body)
                if before * after < 0:
                    at = bisected(lambda x: clearance(x, body), t, t + step)
                    rows.append((body, name, "D" if before > 0 else "R", f"{at:.7f}"))
                t, before = t + step, after
    with open(path, "w") as out:
        out.write("# Occultations of the centres of planets, and of stars, by the Moon's mean limb\n"
                  "# (1737.4 km) at latitude 51.4779, longitude 0, 46 m, 2015 to 2025, the Moon\n"
                  "# above the horizon or not: topocentric places of libswe 2.10 (DE431), stars by\n"
                  "# ERFA. D disappears, R reappears; jd_tt: TT.\n"
                  "# Made by tools/reference/occultations.py.\n"
                  "body,name,contact,jd_tt\n")
        for row in rows:
            out.write(",".join(map(str, row)) + "\n")


main(sys.argv[1] if len(sys.argv) > 1 else "data/reference/occultations.csv")
