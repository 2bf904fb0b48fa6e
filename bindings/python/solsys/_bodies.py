"""Bodies and sites, as users name them."""

from __future__ import annotations

import itertools
import math
import os
from collections.abc import Iterable

import numpy as np

from . import _core
from ._core import Body, Site

TYPE_CHECKING = False  # typing, which nothing needs to run, takes as long to import as all of this
if TYPE_CHECKING:
    from typing import Any, Sequence, Union

    BodyLike = Union[str, Body]
    BodiesLike = Union[BodyLike, Sequence[BodyLike]]
    SiteLike = Union[Site, str, Sequence[float]]
    SitesLike = Union[SiteLike, Sequence[SiteLike], Any]

_NAMES = ("latitude_deg", "longitude_deg", "height_m")


def find_body(name: str) -> Body:
    """A body by name ("jupiter", "Io", "sirius", "M31", "vesta", "halley") or code ("plnt:5",
    "moon:501", "hip:32349", "astr:4"). Case, accents, blanks and dashes do not matter."""
    return one_body(name, "name")


def find_bodies(name: str) -> list[Body]:
    """A body, or a group: "planets" (Mercury to Neptune), "all" (Sun, Moon, planets, Pluto)."""
    return bodies_of(text_of(name, "name"), "name")


def find_small_body(name: str) -> Body:
    """A minor planet or comet of the built-in sample by its elements."""
    return _core.find_small_body(text_of(name, "name"))


def body_from_elements(elements: str) -> Body:
    """A body on an orbit of its own, for example
    "epoch=jd:2459800.5,a=2.77,e=0.078,i=10.6,node=80.3,peri=73.6,M=334.3,H=3.3,G=0.12":
    au and degrees, ecliptic and equinox of J2000, epoch in TT; name is optional."""
    return _core.parse_elements(text_of(elements, "elements"))


def body_from_file(path: Union[str, os.PathLike[str]], name: str = "") -> Body:
    """A body of a file of orbits (MPCORB or CometEls), by number, name or designation."""
    return _core.find_in_file(os.fspath(path), text_of(name, "name"))


def find_city(name: str) -> Site:
    """A city by any of its names, alone or with country and region ("Springfield, IL, US");
    of several the most populous. Over 21000 cities, GeoNames (CC BY 4.0)."""
    return _core.find_city(text_of(name, "name"))


def cities_called(name: str) -> list[Site]:
    """All cities of a name, the most populous first."""
    return _core.cities_called(text_of(name, "name"))


def largest_cities(count: int = 21_000, first: int = 0) -> list[Site]:
    """The most populous cities of the list, the largest first; without the first ones, for who
    takes them in portions."""
    count, first = int(number_of(count, "count", 1, 1e9)), int(number_of(first, "first", 0, 1e9))
    import csv
    with open(os.path.join(os.path.dirname(__file__), "cities.csv"), encoding="utf-8") as file:
        lines = (line for line in file if not line.startswith("#"))
        header = next(csv.reader(lines))
        rows = csv.DictReader(itertools.islice(lines, first, first + count), header)
        return [Site(float(row["latitude_deg"]), float(row["longitude_deg"]),
                     float(row["elevation_m"] or 0), name=f"{row['name']} ({row['country']})",
                     zone=row["tz"]) for row in rows]


def number_of(value: Any, name: str, low: float = -math.inf, high: float = math.inf) -> float:
    """A finite number within bounds, of an argument's name."""
    try:
        number = float(value)
    except (TypeError, ValueError):
        raise TypeError(f"{name}: wanted a number, not {value!r}") from None
    if not math.isfinite(number) or not low <= number <= high:
        between = f"between {low:g} and {high:g}" if high < math.inf else f"at least {low:g}"
        raise ValueError(f"{name}: {number} is not {between if low > -math.inf else 'finite'}")
    return number


def numbers_of(values: Any, name: str) -> list[float]:
    if isinstance(values, str) or not isinstance(values, Iterable):
        raise TypeError(f"{name}: wanted a sequence of numbers, not {values!r}")
    return [number_of(value, name) for value in values]


def text_of(value: Any, name: str) -> str:
    if not isinstance(value, str):
        raise TypeError(f"{name}: wanted a text, not {type(value).__name__}")
    return value


def one_body(body: BodyLike, name: str) -> Body:
    found = bodies_of(body, name)
    if len(found) != 1:
        raise ValueError(f"{name}: wanted one body, not {len(found)}")
    return found[0]


def bodies_of(bodies: BodiesLike, name: str) -> list[Body]:
    """A flat list; groups are taken apart."""
    if isinstance(bodies, Body):
        return [bodies]
    if isinstance(bodies, str):
        try:
            return _core.find_bodies(bodies)
        except ValueError as error:
            raise ValueError(f"{name}: {str(error).split(': ', 1)[1]}") from None
    if not isinstance(bodies, Iterable):
        raise TypeError(f"{name}: wanted names or bodies, not {type(bodies).__name__}")
    found = [body for one in bodies for body in bodies_of(one, name)]
    if not found:
        raise ValueError(f"{name}: no body in an empty sequence")
    return found


def site_of(site: SiteLike, name: str = "site") -> Site:
    """A Site from a Site, the name of a city, "LAT,LON[,HEIGHT]" or numbers in that order."""
    try:
        if isinstance(site, Site):
            return site
        if isinstance(site, str):
            named = any(c.isalpha() for c in site) and not site[:1].isdigit()
            return _core.find_city(site) if named else _core.parse_site(site)
        return Site(*[float(number) for number in site])
    except (TypeError, ValueError) as error:
        text = str(error).splitlines()[0].removeprefix("name: ").removeprefix("site: ")
        raise type(error)(f"{name}: {text.removesuffix(': use --site LAT,LON')}") from None


def sites_of(sites: Any) -> tuple[list[Site], bool]:
    """A list of sites, and whether it was one alone. Tables (pandas, structured arrays) need the
    columns latitude_deg and longitude_deg, and may have height_m."""
    columns = getattr(sites, "columns", None)
    if columns is None and isinstance(sites, np.ndarray):
        columns = sites.dtype.names
    if columns is not None:
        rows = [np.asarray(sites[n], float) for n in _NAMES if n in columns]
        if len(rows) < 2:
            raise ValueError("sites: a table needs latitude_deg and longitude_deg")
        found = [site_of(row, "sites") for row in zip(*rows)]
    elif isinstance(sites, (Site, str)) or _is_numbers(sites):
        return [site_of(sites, "sites")], True
    elif not isinstance(sites, Iterable):
        raise TypeError(f"sites: wanted sites, not {type(sites).__name__}")
    else:
        found = [site_of(site, "sites") for site in sites]
    if not found:
        raise ValueError("sites: no site in an empty sequence")
    return found, False


def _is_numbers(sites: Any) -> bool:
    return isinstance(sites, (tuple, list)) and 2 <= len(sites) <= 3 and all(
        isinstance(n, (int, float)) for n in sites)
