#!/usr/bin/env python3
"""Makes data/reference/asteroid_positions.csv: heliocentric positions of the first four minor
planets, 1990 to 2030, from libswe (Debian: libswe2.0 and swe-basic-data, whose files are numerical
integrations by other hands among the planets of a JPL ephemeris).

Usage: tools/reference/make_asteroid_positions.py [libswe.so.2.0]"""

import ctypes
import sys

PATH = b"/usr/share/libswe/ephe"
BODIES = {1: 17, 2: 18, 3: 19, 4: 20}  # number of the minor planet: number in the library
SWIEPH, HELCTR, TRUEPOS, J2000, NONUT = 2, 8, 16, 32, 64
EQUATORIAL, XYZ, ICRS = 2048, 4096, 128 * 1024
FIRST, LAST, STEP = 2447892.5, 2462502.5, 365.25  # 1990 January 1 to 2030 January 1

library = ctypes.CDLL(sys.argv[1] if len(sys.argv) > 1 else "libswe.so.2.0")
library.swe_version.restype = ctypes.c_char_p
library.swe_set_ephe_path(PATH)
text = ctypes.create_string_buffer(256)
out = (ctypes.c_double * 6)()
flags = SWIEPH | HELCTR | TRUEPOS | J2000 | NONUT | EQUATORIAL | XYZ | ICRS

print("# Heliocentric geometric positions of (1) Ceres, (2) Pallas, (3) Juno, (4) Vesta [au], ICRS axes,"
      "\n# once a year; jd: TDB. Made by tools/reference/make_asteroid_positions.py from libswe",
      library.swe_version(text).decode() + "\n# with Debian's swe-basic-data.")
print("number,jd_tdb,x,y,z")
for number, body in BODIES.items():
    jd = FIRST
    while jd <= LAST:
        done = library.swe_calc(ctypes.c_double(jd), body, flags, out, text)
        assert done & SWIEPH and not text.value, text.value
        print(f"{number},{jd!r},{out[0]:.10f},{out[1]:.10f},{out[2]:.10f}")
        jd += STEP
