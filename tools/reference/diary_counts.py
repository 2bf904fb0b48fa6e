#!/usr/bin/env python3
"""Counts the events of the diary over 50 years in samples of places from libswe, six hours apart:
changes of sign and turning points, nothing refined. Writes data/reference/diary_counts.csv."""

import itertools
import sys

import numpy as np

import swe

START, END, STEP = 2440587.5, 2458849.5, 0.25  # TT: 1970 January 1 to 2020 January 1
RADIUS_AU = {1: 2439.7 / 149597870.7, 2: 6051.8 / 149597870.7}
PLANETS = [1, 2, 4, 5, 6, 7, 8, 9]


def sampled(body, flags=0):
    return np.array([swe.place(t, body, flags) for t in np.arange(START, END + STEP, STEP)])


def wrapped(angle):
    return (angle + np.pi) % (2 * np.pi) - np.pi


def crossings(difference):
    """Changes of sign of an angle that are no jumps by a turn."""
    d = wrapped(difference)
    return np.nonzero((d[:-1] * d[1:] < 0) & (np.abs(d[:-1] - d[1:]) < 3))[0]


def maxima(f):
    return np.nonzero((f[1:-1] > f[:-2]) & (f[1:-1] >= f[2:]))[0] + 1


def direction(p):
    return np.stack([np.cos(p[:, 1]) * np.cos(p[:, 0]), np.cos(p[:, 1]) * np.sin(p[:, 0]),
                     np.sin(p[:, 1])], axis=1)


def transits(planet, near):
    """Whether the planet touches the Sun's disk within 12 h, looked at every five minutes."""
    for t in np.arange(near - 0.5, near + 0.5, 5 / 1440):
        a, b = (np.array([swe.place(t, body)]) for body in (planet, 10))
        angle = np.arccos(min(1, np.sum(direction(a) * direction(b))))
        radii = np.radians(959.63 / 3600) / b[0, 2] + RADIUS_AU[planet] / a[0, 2]
        if angle < radii:
            return True
    return False


def main(path):
    rows = []

    def count(kind, body1, body2, in_longitude, number):
        rows.append((kind, body1, body2, in_longitude, int(number)))

    bodies = [10, 301] + PLANETS
    ecliptic = {b: sampled(b) for b in bodies}
    equator = {b: sampled(b, swe.EQUATORIAL) for b in bodies}
    sun = ecliptic[10]

    for quarter in range(4):
        count(1 + quarter, 0, 0, 0, len(crossings(sun[:, 0] - quarter * np.pi / 2)))
        count(7 + quarter, 0, 0, 0,
              len(crossings(ecliptic[301][:, 0] - sun[:, 0] - quarter * np.pi / 2)))
    earth = sampled(10, swe.TRUE_PLACE)[:, 2]
    count(5, 0, 0, 0, len(maxima(-earth)))
    count(6, 0, 0, 0, len(maxima(earth)))
    moon = sampled(301, swe.TRUE_PLACE)[:, 2]
    count(26, 301, 0, 0, len(maxima(-moon)))
    count(27, 301, 0, 0, len(maxima(moon)))

    for p in PLANETS:
        place, difference = ecliptic[p], wrapped(ecliptic[p][:, 0] - sun[:, 0])
        conjunctions = crossings(difference)
        angle = np.arccos(np.clip(np.sum(direction(place) * direction(sun), axis=1), -1, 1))
        if p < 3:
            before = place[conjunctions, 2] < sun[conjunctions, 2]
            count(11, p, 10, 0, np.sum(before))
            count(12, p, 10, 0, np.sum(~before))
            elongations = maxima(angle)
            count(13, p, 10, 0, np.sum(difference[elongations] > 0))
            count(14, p, 10, 0, np.sum(difference[elongations] < 0))
            inner = maxima(-angle)
            count(32, p, 10, 0, sum(place[i, 2] < sun[i, 2] and transits(p, START + i * STEP)
                                    for i in inner if angle[i] < 0.02))
        else:
            count(23, p, 10, 0, len(conjunctions))
            count(22, p, 10, 0, len(crossings(difference - np.pi)))
            count(24, p, 10, 0, len(crossings(difference - np.pi / 2)))
            count(25, p, 10, 0, len(crossings(difference + np.pi / 2)))
            count(26, p, 0, 0, len(maxima(-place[:, 2])))
            count(27, p, 0, 0, len(maxima(place[:, 2])))
        for in_longitude, angles in ((0, equator[p][:, 0]), (1, place[:, 0])):
            longitude = np.unwrap(angles)
            count(15, p, 0, in_longitude, len(maxima(longitude)))
            count(16, p, 0, in_longitude, len(maxima(-longitude)))
        r = sampled(p, swe.HELIOCENTRIC | swe.TRUE_PLACE)[:, 2]
        count(18, p, 0, 0, len(maxima(-r)))
        count(19, p, 0, 0, len(maxima(r)))
        count(29, 301, p, 0, len(crossings(equator[301][:, 0] - equator[p][:, 0])))
        if p == 2:
            v = np.array([swe.magnitude(t, 2) for t in np.arange(START, END + STEP, 8 * STEP)])
            bright = [i for i in maxima(-v) if angle[8 * i] > 0.4]
            count(17, 2, 0, 0, len(bright))
    for a, b in itertools.combinations(PLANETS, 2):
        count(30, a, b, 0, len(crossings(equator[a][:, 0] - equator[b][:, 0])))

    with open(path, "w") as out:
        out.write("# Events of the diary by kind and bodies, 1970 January 1 to 2020 January 1 (TT),\n"
                  "# counted in samples six hours apart of places by libswe 2.10 (DE431).\n"
                  "# Made by tools/reference/diary_counts.py.\n"
                  "kind,body1,body2,in_longitude,count\n")
        for row in rows:
            out.write(",".join(map(str, row)) + "\n")


main(sys.argv[1] if len(sys.argv) > 1 else "data/reference/diary_counts.csv")
