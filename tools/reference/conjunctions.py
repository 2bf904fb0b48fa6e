#!/usr/bin/env python3
"""Conjunctions from libswe: instants of equal right ascension or ecliptic longitude and of least
separation, with the angle and the direction. Writes data/reference/conjunctions.csv."""

import sys

import numpy as np
from math import atan2, cos, pi, sin

import swe

# body 1, body 2, from, to (JD TT), step [day]
PAIRS = [(5, 6, 2451545.0, 2459500.5, 5), (2, 5, 2455197.5, 2459580.5, 2),
         (1, 2, 2458849.5, 2459945.5, 0.5), (301, 2, 2459580.5, 2459760.5, 0.25),
         (301, 8, 2459580.5, 2459760.5, 0.25), (7, 8, 2448000.5, 2450000.5, 5),
         (4, 6, 2455000.5, 2459000.5, 2), (10, 2, 2455900.5, 2456300.5, 1)]


def wrapped(x):
    return (x + pi) % (2 * pi) - pi


def direction(t, body):
    a, d, _ = swe.place(t, body, swe.EQUATORIAL)
    return np.array([cos(d) * cos(a), cos(d) * sin(a), sin(d)])


def separation(t, b1, b2):
    a, b = direction(t, b1), direction(t, b2)
    return atan2(np.linalg.norm(np.cross(a, b)), a @ b)


def position_angle(t, b1, b2):
    """Of body 1 from body 2."""
    b, a = direction(t, b1), direction(t, b2)
    return atan2(a[0] * b[1] - a[1] * b[0], b[2] - a[2] * (a @ b)) % (2 * pi)


def bisected(f, a, b):
    fa = f(a)
    for _ in range(60):
        m = (a + b) / 2
        fm = f(m)
        if fa * fm > 0:
            a, fa = m, fm
        else:
            b = m
    return (a + b) / 2


def slope(f, t, h):
    return (f(t + h) - f(t - h)) / (2 * h)


def main(path):
    rows = []
    for b1, b2, start, end, step in PAIRS:
        functions = {
            "ra": lambda t: wrapped(swe.place(t, b1, swe.EQUATORIAL)[0] -
                                    swe.place(t, b2, swe.EQUATORIAL)[0]),
            "longitude": lambda t: wrapped(swe.place(t, b1)[0] - swe.place(t, b2)[0]),
            "closest": lambda t: slope(lambda x: separation(x, b1, b2) ** 2, t, 0.002 * step)}
        for way, f in functions.items():
            t, before = start, f(start)
            while t < end:
                after = f(t + step)
                if before * after < 0 and abs(after - before) < 3 and (
                        way != "closest" or before < 0):
                    at = bisected(f, t, t + step)
                    if way != "closest" or separation(at, b1, b2) < 0.2:
                        rate = abs(slope(f, at, 0.01 * step))
                        rows.append((b1, b2, way, f"{at:.6f}", f"{separation(at, b1, b2):.9f}",
                                     f"{position_angle(at, b1, b2):.6f}", f"{rate:.3e}"))
                t, before = t + step, after
    with open(path, "w") as out:
        out.write("# Conjunctions by libswe 2.10 (DE431), apparent geocentric places of date.\n"
                  "# way: in right ascension, in ecliptic longitude, or closest. jd_tt: TT;\n"
                  "# separation [rad]; position_angle of body 1 from body 2 [rad]; rate: of the\n"
                  "# function whose zero it is [rad/day; closest: rad^2/day^2].\n"
                  "# Made by tools/reference/conjunctions.py.\n"
                  "body1,body2,way,jd_tt,separation,position_angle,rate\n")
        for row in rows:
            out.write(",".join(map(str, row)) + "\n")


main(sys.argv[1] if len(sys.argv) > 1 else "data/reference/conjunctions.csv")
