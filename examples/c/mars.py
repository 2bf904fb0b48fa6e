"""Where Mars stands at midnight of a thousand days, by the C interface alone."""
import ctypes as c
import sys

lib = c.CDLL("solsys.dll" if sys.platform == "win32" else "libsolsys.so")


class Instant(c.Structure):
    _fields_ = [("day", c.c_int32), ("fraction", c.c_double)]


class Place(c.Structure):
    _fields_ = [("ra_deg", c.c_double), ("dec_deg", c.c_double),
                ("distance_au", c.c_double), ("light_time_days", c.c_double)]


lib.solsys_last_message.restype = c.c_char_p


def check(status):
    if status:
        raise ValueError(lib.solsys_last_message().decode())


model, mars = c.c_void_p(), c.c_void_p()
check(lib.solsys_model_open(None, c.byref(model)))
check(lib.solsys_find_body("mars".encode(), None, c.byref(mars)))

count = 1000
nights = (Instant * count)(*[Instant(2461000 + n, 0.5) for n in range(count)])
places, done = (Place * count)(), c.c_size_t()
check(lib.solsys_apparent_places(model, c.byref(mars), c.c_size_t(1), nights, c.c_size_t(count),
                                 places, c.c_size_t(count), c.byref(done), None))
print(done.value, places[0].ra_deg, places[0].distance_au)

lib.solsys_body_free(mars)
lib.solsys_model_free(model)
