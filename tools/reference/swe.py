"""Positions from Debian's libswe (packages libswe2.0, swe-standard-data, swe-sat-data), called
through ctypes: an ephemeris and a reduction that share no code with this project."""

import ctypes

LIBRARY = ctypes.CDLL("libswe.so.2.0")
LIBRARY.swe_set_ephe_path(b"/usr/share/libswe/ephe")
LIBRARY.swe_calc.argtypes = [ctypes.c_double, ctypes.c_int32, ctypes.c_int32,
                             ctypes.POINTER(ctypes.c_double), ctypes.c_char_p]
LIBRARY.swe_pheno.argtypes = LIBRARY.swe_calc.argtypes
LIBRARY.swe_deltat.restype = ctypes.c_double
LIBRARY.swe_deltat.argtypes = [ctypes.c_double]

EQUATORIAL, HELIOCENTRIC, TRUE_PLACE, RADIANS = 2048, 8, 16, 8192
XYZ, J2000, NO_ABERRATION, NO_DEFLECTION, TOPOCENTRIC = 4096, 32, 1024, 512, 32 * 1024
SWISS_FILES = 2
# This project's numbers: 1 to 9 planets, 10 the Sun, 301 the Moon.
BODY = {10: 0, 301: 1, 1: 2, 2: 3, 4: 4, 5: 5, 6: 6, 7: 7, 8: 8, 9: 9, 3: 14}

_values = (ctypes.c_double * 20)()
_message = ctypes.create_string_buffer(256)


def place(jd_tt, body, flags=0):
    """Three coordinates at an instant (JD TT); angles in radians."""
    if LIBRARY.swe_calc(jd_tt, BODY.get(body, body), SWISS_FILES | RADIANS | flags, _values,
                        _message) < 0:
        raise RuntimeError(_message.value.decode())
    return _values[0], _values[1], _values[2]


def magnitude(jd_tt, body):
    LIBRARY.swe_pheno(jd_tt, BODY[body], SWISS_FILES, _values, _message)
    return _values[4]
