#!/usr/bin/env python3
"""Writes data/reference/command_places.csv and command_risings.csv: what the command should print.

Computed from the DE405 file (build/de405/de405.bin) with numpy and with ERFA (python3-erfa): IAU
2006 precession, IAU 2000A nutation, GST06, WGS 84, rigorous light time and aberration, deflection of
light by the Sun. UT1 = UTC, TDB = TT. Phases, elongations and diameters from the vectors. Shares no
code with the library.
"""
import math
import os
import struct

import erfa
import numpy as np

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..")
AU_KM = 149597870.691  # of the file
C_AU_DAY = 173.1446326846693
RADIUS_KM = {"Sun": 695700.0, "Moon": 1737.4}

with open(os.path.join(ROOT, "build/de405/de405.bin"), "rb") as file:
    DATA = file.read()
NCOEFF = 1018
RECORD = NCOEFF * 8
START, END, SPAN = struct.unpack_from("<3d", DATA, 2652)
EMRAT = 81.30056
POINTERS = {"Mercury": (3, 14, 4), "Venus": (171, 10, 2), "EMB": (231, 13, 2),
            "Mars": (309, 11, 1), "Jupiter": (342, 8, 1), "Saturn": (366, 7, 1),
            "Uranus": (387, 6, 1), "Neptune": (405, 6, 1), "MoonG": (441, 13, 8),
            "Sun": (753, 11, 2)}


def raw(name, jd1, jd2):
    """Barycentric (MoonG: geocentric) position [au] and velocity [au/day]."""
    first, ncoef, nsub = POINTERS[name]
    offset = (jd1 - START) + jd2
    index = int(offset // SPAN)
    coefficients = np.frombuffer(DATA, "<f8", NCOEFF, (index + 2) * RECORD)
    inside = (offset - index * SPAN) / SPAN * nsub
    sub = min(int(inside), nsub - 1)
    x = 2 * (inside - sub) - 1
    block = coefficients[first - 1 + sub * 3 * ncoef:][:3 * ncoef].reshape(3, ncoef)
    position = np.array([np.polynomial.chebyshev.chebval(x, c) for c in block])
    velocity = np.array([np.polynomial.chebyshev.chebval(x, np.polynomial.chebyshev.chebder(c))
                         for c in block]) * 2 * nsub / SPAN
    return position / AU_KM, velocity / AU_KM


def state(name, jd1, jd2):
    """Barycentric."""
    if name in ("Earth", "Moon"):
        moon = np.array(raw("MoonG", jd1, jd2))
        earth = np.array(raw("EMB", jd1, jd2)) - moon / (1 + EMRAT)
        return earth + (moon if name == "Moon" else 0)
    return np.array(raw(name, jd1, jd2))


def heliocentric(name, jd1, jd2):
    return state(name, jd1, jd2) - state("Sun", jd1, jd2)


def tt_of(utc):
    day, fraction = divmod(utc, 1)
    return day, fraction + (32.184 + 37) / 86400  # all instants here are after 2017


class Sky:
    """The sky at an instant (JD UTC) for a site (degrees, metres) or the Earth's centre."""

    def __init__(self, utc, site=None):
        self.jd1, self.jd2 = tt_of(utc)
        self.site = site
        self.matrix = erfa.pnm06a(self.jd1, self.jd2)  # true equator of date from GCRS
        position, velocity = state("Earth", self.jd1, self.jd2)
        day, fraction = divmod(utc, 1)
        self.gst = erfa.gst06a(day, fraction, self.jd1, self.jd2)
        if site:
            lat, lon, height = np.radians(site[0]), np.radians(site[1]), site[2]
            xyz = np.array(erfa.gd2gc(1, lon, lat, height)) / 1000 / AU_KM
            cos, sin = math.cos(self.gst), math.sin(self.gst)
            spin = np.array([[cos, -sin, 0], [sin, cos, 0], [0, 0, 1]])
            here = spin @ xyz
            turn = np.cross([0, 0, 2 * math.pi * 1.00273790935], here)
            position = position + self.matrix.T @ here
            velocity = velocity + self.matrix.T @ turn
        self.position, self.velocity = position, velocity

    def geometric(self, name, light_time):
        return state(name, self.jd1, self.jd2 - light_time)[0]

    def astrometric(self, name):
        light_time = 0.0
        for _ in range(6):
            offset = self.geometric(name, light_time) - self.position
            light_time = np.linalg.norm(offset) / C_AU_DAY
        return offset

    def apparent(self, name):
        """Vector on the true equator of date [au]."""
        offset = self.astrometric(name)
        distance = np.linalg.norm(offset)
        direction = offset / distance
        from_sun = self.position - self.geometric("Sun", 0)
        if name != "Sun":
            body = self.position + offset - self.geometric("Sun", distance / C_AU_DAY)
            direction = np.array(erfa.ld(1.0, direction, body / np.linalg.norm(body),
                                         from_sun / np.linalg.norm(from_sun),
                                         np.linalg.norm(from_sun), 1e-9))
        beta = self.velocity / C_AU_DAY
        seen = erfa.ab(direction, beta, np.linalg.norm(from_sun), math.sqrt(1 - beta @ beta))
        return self.matrix @ np.array(seen) * distance

    def horizontal(self, vector):
        ra, dec = erfa.c2s(vector)
        hour = self.gst + math.radians(self.site[1]) - ra
        return erfa.hd2ae(hour, dec, math.radians(self.site[0]))


def angle(a, b):
    return math.degrees(erfa.sepp(a, b))


def place_row(name, utc, site):
    sky = Sky(utc, site)
    vector = sky.apparent(name)
    distance = np.linalg.norm(vector)
    ra, dec = (math.degrees(x) for x in erfa.c2s(vector))
    j2000 = [math.degrees(x) for x in erfa.c2s(sky.astrometric(name))]
    azimuth, altitude = (math.degrees(x) for x in sky.horizontal(vector))
    # The ecliptic of date: the true equator turned by the true obliquity.
    dpsi, deps = erfa.nut06a(sky.jd1, sky.jd2)
    eps = erfa.obl06(sky.jd1, sky.jd2) + deps
    lon, lat = (math.degrees(x) for x in erfa.c2s(erfa.ir() @ np.array(
        erfa.rx(eps, np.eye(3))) @ vector))
    # Geometry when the light left.
    body = sky.geometric(name, distance / C_AU_DAY)
    sun = sky.geometric("Sun", distance / C_AU_DAY)
    to_sun = sky.geometric("Sun", 0) - sky.position
    to_body = body - sky.position
    phase = angle(sun - body, -to_body) if name != "Sun" else 0.0
    elongation = angle(to_sun, to_body) if name != "Sun" else 0.0
    lit = (1 + math.cos(math.radians(phase))) / 2
    helio = np.ravel(heliocentric(name, sky.jd1, sky.jd2))
    values = [ra % 360, dec, *[j2000[0] % 360, j2000[1]], distance, distance / C_AU_DAY,
              azimuth % 360, altitude, lon % 360, lat, phase, lit, elongation, *helio]
    return [name.lower(), f"{utc:.6f}", *[f"{x:.6f}" for x in site],
            *[f"{x:.13g}" for x in values]]


def upper_limb(utc, site):
    sky = Sky(utc, site)
    vector = sky.apparent("Sun")
    semidiameter = math.asin(RADIUS_KM["Sun"] / AU_KM / np.linalg.norm(vector))
    return math.degrees(sky.horizontal(vector)[1] + semidiameter) + 34 / 60


def crossing(low, high, site):
    """Bisection to a tenth of a second."""
    sign = upper_limb(low, site) > 0
    while high - low > 0.1 / 86400:
        middle = (low + high) / 2
        if (upper_limb(middle, site) > 0) == sign:
            low = middle
        else:
            high = middle
    return (low + high) / 2


def write(name, heading, rows, note):
    with open(os.path.join(ROOT, "data/reference", name), "w", encoding="utf-8") as file:
        file.write(f"# {note}\n# Made by tools/reference/command_oracle.py.\n{heading}\n")
        for row in rows:
            file.write(",".join(row) + "\n")


def main():
    sites = [(51.5, -0.1167, 25.0), (-33.8678, 151.2073, 58.0), (69.65, 18.96, 10.0)]
    names = ["Sun", "Moon", "Mercury", "Venus", "Mars", "Jupiter", "Saturn", "Uranus", "Neptune"]
    rows = [place_row(name, 2458484.25 + 731.7 * i + 13 * k, sites[(i + k) % 3])
            for k, name in enumerate(names) for i in range(4)]
    write("command_places.csv",
          "name,jd_utc,latitude_deg,longitude_deg,height_m,ra_deg,dec_deg,j2000_ra_deg,"
          "j2000_dec_deg,distance_au,light_time_days,azimuth_deg,altitude_deg,lon_deg,lat_deg,"
          "phase_angle_deg,illuminated_fraction,elongation_deg,x_au,y_au,z_au,vx_au_day,"
          "vy_au_day,vz_au_day", rows,
          "Topocentric places from DE405: apparent, astrometric, horizontal, ecliptic of date.")

    # Sunrise and sunset of a day at heights from sea level to 4 km, which move nothing.
    cities = [("London", 51.509, -0.126, 25), ("Mexico City", 19.428, -99.128, 2240),
              ("La Paz", -16.5, -68.15, 3782), ("Quito", -0.2299, -78.525, 2854),
              ("Sydney", -33.868, 151.207, 58), ("Oslo", 59.913, 10.746, 26),
              ("Reykjavik", 64.135, -21.895, 37), ("Tokyo", 35.69, 139.692, 44),
              ("Nairobi", -1.283, 36.817, 1684), ("Denver", 39.739, -104.985, 1636)]
    rows = []
    for name, lat, lon, height in cities:
        site = (lat, lon, height)
        noon = 2461376.0 - lon / 360  # mean noon of 2026 December 1
        rows.append([name, f"{lat}", f"{lon}", f"{height}",
                     f"{crossing(noon - 0.5, noon, site):.7f}",
                     f"{crossing(noon, noon + 0.5, site):.7f}"])
    write("command_risings.csv", "name,latitude_deg,longitude_deg,height_m,rise_jd_utc,set_jd_utc",
          rows, "Sunrise and sunset of 2026 December 1: the upper limb at -34 arcmin.")


if __name__ == "__main__":
    main()
