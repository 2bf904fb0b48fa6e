#!/usr/bin/env python3
"""Writes data/reference/modern_reduction.csv and modern_star_places.csv: apparent places by the models in force
since 2006, from the Earth's centre and from sites with UT1 and polar motion given, by ERFA (Debian's python3-erfa)
on the states of the DE405 test file; those from the centre by Skyfield (python3-skyfield) too.

usage: modern_reduction.py build/de405/de405.bin [folder of the CSV files]"""
import math
import os
import random
import sys

import erfa
import numpy as np
import skyfield
from skyfield.api import Star, load
from skyfield.vectorlib import VectorFunction

import galilean
from de405 import De405

random.seed(15)
DE = De405(sys.argv[1])
FOLDER = sys.argv[2] if len(sys.argv) > 2 else "data/reference"
LIGHT_DAY = 0.005775518331436995
AU_M = 149597870700.0
AS = math.radians(1 / 3600)
BODIES = (10, 301, 1, 2, 4, 5, 6, 7, 8, 9, 501, 502, 503, 504)
# Row, 2 GM/c^2 in units of the Sun's, deflection limiter.
BENDERS = ((10, 1.0, 6e-6), (5, 1 / 1047.348644, 3e-9), (6, 1 / 3497.9018, 3e-10))
TURN = 1.00273781191135448 * 2 * math.pi


def unit(v):
    return v / math.sqrt(v @ v)


def place_at(body, t):
    if body > 500:
        return DE.barycentric(5, *t)[0] + galilean.position(body, *t)
    return DE.barycentric(body, *t)[0]


class Circumstances:
    """An instant [TT], UT1 - UTC and the pole, and a site or the Earth's centre."""

    def __init__(self, site):
        self.day, self.fraction = random.randrange(2436935, 2473450), random.random()
        self.dut1, self.xp, self.yp = (round(random.uniform(-m, m), 4) for m in (0.8, 0.3, 0.5))
        self.site = (round(random.uniform(-180, 180), 3), round(random.uniform(-85, 85), 3),
                     round(random.uniform(0, 4), 3)) if site else None
        self.tdb = self.day, self.fraction + erfa.dtdb(self.day, self.fraction, 0, 0, 0, 0) / 86400
        utc = erfa.taiutc(*erfa.tttai(self.day, self.fraction))
        # Before 1972 ERFA's utcut1 takes TAI - UTC as it was at the start of the day.
        self.ut1 = (utc[0], utc[1] + self.dut1 / 86400) if self.day < 2441318 else erfa.utcut1(*utc, self.dut1)
        self.date = erfa.pnm06a(self.day, self.fraction)
        self.earth = erfa.c2t06a(self.day, self.fraction, *self.ut1, self.xp * AS, self.yp * AS)
        self.observer = DE.barycentric(3, *self.tdb)
        if site:
            lon, lat = (math.radians(x) for x in self.site[:2])
            r = erfa.gd2gc(1, lon, lat, self.site[2] * 1000) / AU_M
            self.observer = self.observer + np.array([r, TURN * np.array([-r[1], r[0], 0])]) @ self.earth
            # North, west, zenith.
            self.horizon = np.array([[-math.cos(lon) * math.sin(lat), -math.sin(lon) * math.sin(lat), math.cos(lat)],
                                     [math.sin(lon), -math.cos(lon), 0],
                                     [math.cos(lon) * math.cos(lat), math.sin(lon) * math.cos(lat), math.sin(lat)]])

    def cells(self):
        site = [repr(x) for x in self.site] if self.site else ["", "", ""]
        return [str(self.day), repr(self.fraction), repr(self.dut1), repr(self.xp), repr(self.yp), *site]

    def seen(self, p, path, tau, body):
        """Deflection and aberration of a direction."""
        o, v = self.observer
        day, fraction = self.tdb
        for bender, mass, limiter in sorted(BENDERS, key=lambda b: -np.linalg.norm(place_at(b[0], self.tdb) - o)):
            if bender == body:
                continue
            since = min(max(p @ (place_at(bender, self.tdb) - o) * LIGHT_DAY, 0.0), tau)
            b = place_at(bender, (day, fraction - since))
            q = p if path is None else unit(o + path - b)
            p = unit(erfa.ld(mass, p, q, unit(o - b), math.sqrt((o - b) @ (o - b)), limiter))
        beta = LIGHT_DAY * v
        sun = place_at(10, self.tdb) - o
        return erfa.ab(p, beta, math.sqrt(sun @ sun), math.sqrt(1 - beta @ beta))

    def body(self, number):
        tau = 0.0
        for _ in range(10):
            path = place_at(number, (self.tdb[0], self.tdb[1] - tau)) - self.observer[0]
            tau = math.sqrt(path @ path) * LIGHT_DAY
        return self.seen(unit(path), path, tau, number)

    def star(self, ra, dec, pm_ra, pm_dec, parallax, velocity):
        years = ((self.tdb[0] - 2451545) + self.tdb[1]) / 365.25
        p = erfa.pmpx(ra, dec, pm_ra, pm_dec, parallax / AS, velocity, years, self.observer[0])
        return self.seen(p, None, 1e9, 0)


class Body(VectorFunction):
    """A body of the file for Skyfield."""
    center = 0

    def __init__(self, number, ephemeris):
        self.target, self.ephemeris = number, ephemeris

    def _at(self, t):
        at = t.whole, t.tdb_fraction
        if self.target > 500:
            return place_at(self.target, at), np.zeros(3), None, None
        r, v = DE.barycentric(self.target, *at)
        return r, v, None, None


EPHEMERIS = {}
for name, number in (("earth", 3), ("sun", 10), ("jupiter", 5), ("saturn", 6)):
    EPHEMERIS[name] = Body(number, EPHEMERIS)
TIMESCALE = load.timescale(builtin=True)


def skyfield_place(c, target):
    t = TIMESCALE.tdb_jd(c.tdb[0], c.tdb[1])
    return unit(EPHEMERIS["earth"].at(t).observe(target).apparent().position.au)


def numbers(v):
    return [f"{x:.16g}" for x in v]


NONE = ["", "", ""]
HEAD = [f"# by ERFA {erfa.__version__} and, from the Earth's centre, by Skyfield {'.'.join(map(str, skyfield.VERSION))}, on DE405. UT1 - UTC and pole are",
        "# invented, of the usual size; instants TT. gcrs: ICRS axes; date: true equator and equinox; horizon: north, west,",
        "# zenith. Made by tools/reference/modern_reduction.py."]
AT = "day,fraction,dut1_s,xp_arcsec,yp_arcsec,longitude_deg,latitude_deg,height_km"
XYZ = ",".join(f"{frame}_{axis}" for frame in ("gcrs", "date", "horizon", "skyfield") for axis in "xyz")


def line(c, p, target):
    horizon = numbers(c.horizon @ c.earth @ p) if c.site else NONE
    other = NONE if c.site else numbers(skyfield_place(c, target))
    return [*numbers(p), *numbers(c.date @ p), *horizon, *other]


with open(os.path.join(FOLDER, "modern_reduction.csv"), "w") as out:
    print("# Directions of the Sun (10), the Moon, planets and Galilean satellites (theory L1.2 about the file's Jupiter)", file=out)
    print("\n".join(HEAD), "body," + AT + "," + XYZ, sep="\n", file=out)
    for i in range(24):
        c = Circumstances(i % 2 == 1)
        for body in BODIES:
            print(",".join([str(body), *c.cells(), *line(c, c.body(body), Body(body, EPHEMERIS))]), file=out)

with open(os.path.join(FOLDER, "modern_star_places.csv"), "w") as out:
    print("# Directions of 40 invented stars (rad, rad per Julian year of the coordinate, rad, km/s; equinox and epoch J2000)", file=out)
    print("\n".join(HEAD), "ra,dec,pm_ra,pm_dec,parallax,velocity," + AT + "," + XYZ, sep="\n", file=out)
    single = lambda x: float(np.float32(x))
    for i in range(40):
        ra, dec = random.uniform(0, 2 * math.pi), math.asin(random.uniform(-0.999, 0.999))
        pm_ra, pm_dec = single(random.uniform(-2, 2) * AS / math.cos(dec)), single(random.uniform(-2, 2) * AS)
        parallax, velocity = single(random.uniform(0.001, 0.7) * AS), single(random.uniform(-100, 100))
        # Skyfield takes motions per second of the star's own light and divides by 1 - v/c; those of
        # catalogues are observed ones: that is undone beforehand.
        doppler = 1 + velocity / 299792.458
        star = Star(ra_hours=math.degrees(ra) / 15, dec_degrees=math.degrees(dec),
                    ra_mas_per_year=pm_ra * math.cos(dec) / AS * 1000 / doppler,
                    dec_mas_per_year=pm_dec / AS * 1000 / doppler,
                    parallax_mas=parallax / AS * 1000, radial_km_per_s=velocity / doppler)
        for site in (False, True):
            c = Circumstances(site)
            p = c.star(ra, dec, pm_ra, pm_dec, parallax, velocity)
            print(",".join([*map(repr, (ra, dec, pm_ra, pm_dec, parallax, velocity)), *c.cells(), *line(c, p, star)]), file=out)
