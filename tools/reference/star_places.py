#!/usr/bin/env python3
"""Writes data/reference/star_places.csv: places of stars seen from an observer that circles the Sun,
with and without the deflection of light, by ERFA (Debian's python3-erfa)."""
import math
import random

import erfa
import numpy as np

random.seed(4)
AS = math.radians(1 / 3600)
AU_KM, LIGHT_DAY, ROUNDED_LIGHT_DAY = 149597870.7, 0.005775518331436995, 0.0057755
FAR = 1e30  # au: aberration alone, without the Sun's potential


def single(x):
    return float(np.float32(x))


def aberrated(p, beta):
    return erfa.ab(p, beta, FAR, math.sqrt(1 - beta @ beta))


print(f"# Stars seen from r [au] moving with v [au/day], both heliocentric J2000 equator, `years` after the epoch, by ERFA")
print(f"# {erfa.__version__} (pmpx, ldsun, ab): bent = with the Sun's deflection, aberration with {LIGHT_DAY} day/au; plain = without")
print("# deflection, with 0.0057755 day/au. Angles rad (per Julian year), radial velocity km/s. Made by tools/reference/star_places.py.")
print("ra,dec,pm_ra,pm_dec,parallax,velocity,years,rx,ry,rz,vx,vy,vz,bent_x,bent_y,bent_z,plain_x,plain_y,plain_z")
for _ in range(400):
    ra, dec = random.uniform(0, 2 * math.pi), math.asin(random.uniform(-0.98, 0.98))
    pm = 3 * AS
    pm_ra, pm_dec = single(random.uniform(-pm, pm) / math.cos(dec)), single(random.uniform(-pm, pm))
    parallax, velocity = single(random.uniform(0.001, 0.7) * AS), single(random.uniform(-100, 100))
    years, angle = random.uniform(-30, 30), random.uniform(0, 2 * math.pi)
    tilt = np.array([[1, 0, 0], [0, math.cos(0.4), -math.sin(0.4)], [0, math.sin(0.4), math.cos(0.4)]])
    r = tilt @ np.array([math.cos(angle), math.sin(angle), 0])
    v = 29.8 * 86400 / AU_KM * (tilt @ np.array([-math.sin(angle), math.cos(angle), 0]))
    # The epoch's moment is the observer's: the light time from the Sun, which pmpx adds, is taken off.
    towards = np.array([math.cos(dec) * math.cos(ra), math.cos(dec) * math.sin(ra), math.sin(dec)])
    light_years = towards @ r * LIGHT_DAY / 365.25
    p = erfa.pmpx(ra, dec, pm_ra, pm_dec, parallax / AS, velocity, years - light_years, r)
    distance = math.sqrt(r @ r)
    bent = aberrated(erfa.ldsun(p, r / distance, distance), LIGHT_DAY * v)
    plain = aberrated(p, ROUNDED_LIGHT_DAY * v)
    print(",".join(repr(float(x)) for x in (ra, dec, pm_ra, pm_dec, parallax, velocity, years, *r, *v, *bent, *plain)))
