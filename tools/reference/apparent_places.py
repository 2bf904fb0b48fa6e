#!/usr/bin/env python3
"""Writes data/reference/apparent_places.csv: apparent places of ten bodies from the Earth's centre and from
sites, by ERFA (Debian's python3-erfa) with the classic models (IAU 1976 precession, the short nutation,
heliocentric velocities, light time to 2e-6 day) on the states of the DE405 test file.

usage: apparent_places.py build/de405/de405.bin data/delta_t.csv > data/reference/apparent_places.csv"""
import math
import random
import sys

import erfa
import numpy as np

from de405 import De405

random.seed(1)
LIGHT_DAY = 0.005775518331436995
EARTH_RADIUS, FLATTENING = 6378.137 * 6.6845871222684464e-9, 0.0033528106647474805  # au
FAR = 1e30  # au: aberration alone, without the Sun's potential
BODIES = (10, 301, 1, 2, 4, 5, 6, 7, 8, 9)

DE = De405(sys.argv[1])
delta_t = [line.split(",") for line in open(sys.argv[2]) if line[0].isdigit()]
keys = [int(row[2]) + float(row[3]) for row in delta_t]


def heliocentric(body, day, fraction):
    if body == 10:
        return np.zeros((2, 3))
    if body in (3, 301):
        moon = DE.row(10, day, fraction)
        earth = DE.row(3, day, fraction) - DE.row(11, day, fraction) - moon / (1 + DE.emrat)
        return earth if body == 3 else earth + moon
    return DE.row(body, day, fraction) - DE.row(11, day, fraction)


def frame(day, fraction):
    """V(true equator of date) = M V(J2000), and the equation of the equinoxes."""
    T = ((day - 2451545) + fraction) / 3652500
    node, twice_sun = 2.18 - 3375.7 * T + 0.36 * T * T, 3.51 + 125666.39 * T + 0.1 * T * T
    psi = -1e-7 * (834 * math.sin(node) + 64 * math.sin(twice_sun))
    eps = 1e-7 * (446 * math.cos(node) + 28 * math.cos(twice_sun))
    mean = 0.4090928 + 1e-7 * np.polyval([-12104, -2491, 96926, -75, -226938, 0], T)
    zeta, z, theta = erfa.prec76(2451545, 0.0, day, fraction)
    precession = erfa.rz(-z, erfa.ry(theta, erfa.rz(-zeta, np.eye(3))))
    return erfa.numat(mean, psi, eps) @ precession, psi * math.cos(mean + eps)


def site_of_date(day, fraction, equation, lon, lat, height):
    ut = fraction - 0.5 - float(delta_t[max(i for i, k in enumerate(keys) if k <= day + fraction)][4]) / 86400
    midnight = math.trunc(ut)
    theta = erfa.gmst82(day + 0.5, midnight) + (ut - midnight) * 1.002737879753 * 2 * math.pi + equation
    r = erfa.rz(-theta, np.eye(3)) @ erfa.gd2gce(EARTH_RADIUS, FLATTENING, lon, lat, height)
    rate = 2 * math.pi / 0.997269566329084
    return np.array([r, [-rate * r[1], rate * r[0], 0]])


print(f"# Apparent places (unit vectors, true equator of date, and distances [au]) from the Earth's centre, or from a site (height km,")
print(f"# degrees), by ERFA {erfa.__version__} with the classic models on DE405. Made by tools/reference/apparent_places.py.")
print("body,day,fraction,from_site,height_km,longitude_deg,latitude_deg,x,y,z,distance")
for i in range(100):
    day, fraction = random.randrange(2436935, 2473450), random.random()
    height, lon, lat = 0.02 * i, 3.6 * i - 180, 1.7 * i - 85
    M, equation = frame(day, fraction)
    observer = heliocentric(3, day, fraction)
    if i % 2:
        observer = observer + site_of_date(day, fraction, equation, math.radians(lon), math.radians(lat),
                                           height / 149597870.7) @ M
    beta = LIGHT_DAY * observer[1]
    for body in BODIES:
        path = heliocentric(body, day, fraction)[0] - observer[0]
        tau, last = math.sqrt(path @ path) * LIGHT_DAY, 1.0
        while abs(tau - last) > 2e-6:
            path = heliocentric(body, day, fraction - tau)[0] - observer[0]
            last, tau = tau, math.sqrt(path @ path) * LIGHT_DAY
        distance = math.sqrt(path @ path)
        seen = M @ erfa.ab(path / distance, beta, FAR, math.sqrt(1 - beta @ beta))
        print(",".join([str(body), str(day), repr(fraction), str(i % 2), repr(height), repr(lon), repr(lat)] +
                       [repr(float(x)) for x in (*seen, distance)]))
