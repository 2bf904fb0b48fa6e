#!/usr/bin/env python3
"""Writes data/reference/earth_orientation.csv: IAU 1980 nutation, IAU 1976 precession to J2000
and IAU 1982 sidereal time at random instants, by ERFA (Debian's python3-erfa)."""
import random
import sys

import erfa

random.seed(2026)
print(f"# Nutation IAU 1980 and obliquity, precession IAU 1976 to J2000.0 (TT), mean sidereal time IAU 1982")
print(f"# (jd_day + fraction taken as UT1) by ERFA {erfa.__version__}; radians. Made by tools/reference/earth_orientation.py.")
print("day,fraction,d_psi,d_epsilon,obliquity,zeta,z,theta,gmst")
for first, last, count in ((2415021, 2488069, 300), (625673, 2816788, 100)):
    for _ in range(count):
        day, fraction = random.randrange(first, last), random.random()
        values = (*erfa.nut80(day, fraction), erfa.obl80(day, fraction),
                  *erfa.prec76(day, fraction, 2451545, 0.0), erfa.gmst82(day, fraction))
        print(",".join([str(day), repr(fraction)] + [repr(float(v)) for v in values]))
