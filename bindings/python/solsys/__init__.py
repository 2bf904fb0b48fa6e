"""Positions and events of the solar system, for many instants at once.

>>> import numpy as np
>>> import solsys
>>> model = solsys.Model()                       # or Model("de440.bin")
>>> nights = np.arange("2026-12-01", "2026-12-04", dtype="datetime64[D]")
>>> model.apparent(["mars", "jupiter"], nights).dec_deg.shape
(2, 3)
>>> for row in model.risings("sun", "2026-12-01", "2026-12-03", "Oslo"):
...     print(row.rise.astype("M8[m]"), row.set.astype("M8[m]"))
2026-12-01T07:51 2026-12-01T14:20
2026-12-02T07:53 2026-12-02T14:19

Angles are degrees, distances au unless a name says otherwise, instants UTC. Tables are
numpy.recarray: iterate, take fields, or pandas.DataFrame(table).
"""

from ._bodies import (body_from_elements, body_from_file, cities_called, find_bodies, find_body,
                      find_city, find_small_body, largest_cities)
from ._core import Body, Satellite, Site, __version__, diary_kinds
from ._earth_satellites import find_satellite, parse_satellites, read_satellites
from ._model import Model
from ._picture import Picture
from ._survey import MinorPlanets
from ._times import datetime64_of, from_jd, now

__all__ = ["Body", "MinorPlanets", "Model", "Picture", "Satellite", "Site", "__version__",
           "body_from_elements", "body_from_file", "cities_called", "datetime64_of",
           "diary_kinds", "find_bodies", "find_body", "find_city", "find_satellite",
           "find_small_body", "from_jd", "largest_cities", "now", "parse_satellites",
           "read_satellites"]
