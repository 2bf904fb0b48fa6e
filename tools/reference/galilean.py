"""Io, Europa, Ganymede and Callisto by the theory L1.2 (Lainey, Duriez & Vienne 2006, Astron. Astrophys.
456, 783), for the generators of this folder: positions from Jupiter [au], J2000 equator."""
import csv
import os

import numpy as np

DATA = os.path.join(os.path.dirname(__file__), "..", "..", "data", "satellites")
SPAN = -819.727638594856, 812.721806990360
L0_N = {501: (1.446213296021224, 3.551552286182400), 502: (-0.3735263437471362, 1.769322711123470),
        503: (0.2874089391143348, 0.8782079235893280), 504: (-0.3620341291375704, 0.3764862334338280)}
NODE, TILT = 6.249501830657150, 0.4450947364976650


def rows(name):
    with open(os.path.join(DATA, name)) as file:
        return list(csv.DictReader(line for line in file if not line.startswith("#")))


SERIES = {(body, variable): np.array([[float(r[c]) for c in ("amplitude", "phase", "frequency")]
                                      for r in rows("jupiter_l12.csv")
                                      if int(r["body"]) == body and r["variable"] == variable])
          for body in L0_N for variable in ("a", "l", "z", "zeta")}
SLOW = {(body, c): [float(r[c]) for r in rows("jupiter_l12_chebyshev.csv") if int(r["body"]) == body]
        for body in L0_N for c in ("l", "re_z", "im_z", "re_zeta", "im_zeta")}


def position(body, day, fraction):
    t = (day - 2433282.5) + fraction
    x = (t / 365.25 - sum(SPAN) / 2) / ((SPAN[1] - SPAN[0]) / 2)
    slow = {c: np.polynomial.chebyshev.chebval(x, k) - k[0] / 2 for (b, c), k in SLOW.items() if b == body}

    def phasors(variable):
        amplitude, phase, frequency = SERIES[body, variable].T
        return np.sum(amplitude * np.exp(1j * (phase + frequency * t)))

    a = phasors("a").real
    longitude = L0_N[body][0] + L0_N[body][1] * t + phasors("l").imag + slow["l"]
    z = phasors("z") + slow["re_z"] + 1j * slow["im_z"]
    zeta = phasors("zeta") + slow["re_zeta"] + 1j * slow["im_zeta"]
    k, h, q, p = z.real, z.imag, zeta.real, zeta.imag
    F = longitude
    for _ in range(20):
        F -= (F - k * np.sin(F) + h * np.cos(F) - longitude) / (1 - k * np.cos(F) - h * np.sin(F))
    beta = 1 / (1 + np.sqrt(1 - h * h - k * k))
    X = a * ((1 - h * h * beta) * np.cos(F) + h * k * beta * np.sin(F) - k)
    Y = a * ((1 - k * k * beta) * np.sin(F) + h * k * beta * np.cos(F) - h)
    jovian = np.array([X * (1 - 2 * p * p) + Y * 2 * p * q, X * 2 * p * q + Y * (1 - 2 * q * q),
                       2 * np.sqrt(1 - p * p - q * q) * (q * Y - p * X)])
    cn, sn, ct, st = np.cos(NODE), np.sin(NODE), np.cos(TILT), np.sin(TILT)
    return np.array([[cn, -sn, 0], [sn, cn, 0], [0, 0, 1]]) @ np.array([[1, 0, 0], [0, ct, -st], [0, st, ct]]) @ jovian
