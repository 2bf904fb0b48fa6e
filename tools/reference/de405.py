"""The states of the DE405 test file, for the generators of this folder: Chebyshev sums by numpy."""
import struct

import numpy as np


class De405:
    def __init__(self, path):
        data = open(path, "rb").read()
        self.start, end, self.span = struct.unpack_from("<3d", data, 2652)
        self.au_km, self.emrat = struct.unpack_from("<2d", data, 2680)
        self.pointers = np.array(struct.unpack_from("<36i", data, 2696)).reshape(12, 3)
        self.records = np.frombuffer(data, "<f8").reshape(int((end - self.start) / self.span) + 2, -1)[2:]

    def row(self, number, day, fraction, exact=False):
        """Position and velocity of a row of the file [au, au/day]: the planets and the Sun (11) from the
        barycentre of the solar system, 3 the barycentre of Earth and Moon, 10 the Moon from the Earth. The
        instant is one double, as the classic states have it, or kept apart in two (`exact`)."""
        offset, terms, subs = self.pointers[number - 1]
        if exact:
            n, within = divmod(day - self.start, self.span)
            within += fraction
            if not 0 <= within < self.span:
                n, within = n + within // self.span, within % self.span
        else:
            n, within = divmod((day + fraction) - self.start, self.span)
        scaled = within / self.span * subs
        sub = min(int(scaled), subs - 1)
        u = 2 * (scaled - sub) - 1
        block = self.records[int(n)][offset - 1:offset - 1 + 3 * terms * subs].reshape(subs, 3, terms)[sub]
        rate = 2 * subs / self.span
        series = [np.polynomial.chebyshev.Chebyshev(c) for c in block]
        return np.array([[s(u) for s in series], [s.deriv()(u) * rate for s in series]]) / self.au_km

    def barycentric(self, body, day, fraction):
        """3 the Earth, 301 the Moon, 10 the Sun; the others as in the file. The instant in two parts."""
        if body == 10:
            return self.row(11, day, fraction, True)
        if body in (3, 301):
            moon = self.row(10, day, fraction, True)
            earth = self.row(3, day, fraction, True) - moon / (1 + self.emrat)
            return earth if body == 3 else earth + moon
        return self.row(body, day, fraction, True)
