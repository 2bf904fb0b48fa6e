"""The model of the solar system: what everything is asked of."""

from __future__ import annotations

import numpy as np

from . import _core
from ._bodies import bodies_of, number_of, numbers_of, one_body, site_of, sites_of, text_of
from ._core import Body, Satellite, Site
from ._picture import Picture
from ._records import records
from ._times import datetime64_of, describe, pair_of, pairs_of, span_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Callable, Iterable, Optional, Sequence

    from numpy.typing import NDArray

    from ._bodies import BodiesLike, BodyLike, SiteLike, SitesLike
    from ._times import Times

    Progress = Optional[Callable[[float], Any]]

_WAYS = _core.ConjunctionWay.__members__
_ABBREVIATIONS = np.array([*_core.constellation_abbreviations(), ""])  # the last one: index -1


class Model:
    """Places and events of the solar system.

    ephemeris is a JPL DE file, or a folder with one; without it the built-in theories serve
    (VSOP87A, ELP/MPP02). reduction is "modern" (IAU 2006/2000A, deflection of light) or
    "classic". Without a site everything is seen from the Earth's centre. Angles are degrees,
    instants in and out are UTC, which is taken as UT1.

    Threads may share a model and then wait for each other; the interpreter's lock is released
    while it computes. Searches take progress, a function of the fraction done, and stop with
    Ctrl-C. A model may be pickled.

    >>> model = Model()
    >>> model.apparent("mars", "2026-12-01T00:00Z").ra_deg.round(2)
    154.78
    """

    def __init__(self, ephemeris: str = "", reduction: str = "modern") -> None:
        if reduction not in ("modern", "classic"):
            raise ValueError(f'reduction: "{reduction}" is neither "modern" nor "classic"')
        self.ephemeris, self.reduction = str(ephemeris), reduction
        self._core = _core.Model(self.ephemeris, reduction == "modern")

    def __reduce__(self) -> tuple[Any, ...]:
        return Model, (self.ephemeris, self.reduction)

    def __repr__(self) -> str:
        return f"Model({self.ephemeris!r}, reduction={self.reduction!r})"

    # Places.

    def apparent(self, bodies: BodiesLike, times: Times, site: Optional[SiteLike] = None, *,
                 outside: str = "raise") -> np.recarray:
        """Apparent places: light time, aberration, deflection of light; true equator and equinox
        of date (IAU 2006 precession, IAU 2000A nutation: Capitaine & Wallace 2006, Astron.
        Astrophys. 450, 855; the "classic" reduction: IAU 1976 and 1980, no deflection).

        Fields ra_deg, dec_deg, distance_au (stars without a parallax: NaN), light_time_days.
        The shape is that of the bodies, if they are several, then that of the times. What
        cannot be computed, outside the ephemeris mostly, raises ValueError, is NaN with
        outside="nan", and masked with outside="mask".
        """
        return self._places(self._core.apparent, bodies, times, site, outside, "ra_deg")

    def astrometric(self, bodies: BodiesLike, times: Times, site: Optional[SiteLike] = None, *,
                    outside: str = "raise") -> np.recarray:
        """Astrometric places: light time alone (stars: proper motion and parallax), mean equator
        and equinox of J2000. Otherwise as `apparent`."""
        return self._places(self._core.astrometric, bodies, times, site, outside, "ra_deg")

    def horizontal(self, bodies: BodiesLike, times: Times, sites: SitesLike, *,
                   outside: str = "raise") -> np.recarray:
        """Apparent places over the horizon: azimuth_deg from north through east and altitude_deg
        without refraction. Shape: sites (if several), bodies (if several), times."""
        places, single = sites_of(sites)
        ask = _Ask(bodies, times, outside)
        values = self._core.horizontal(ask.bodies, ask.pairs, places)
        values = ask.checked(values, np.isnan(values["azimuth_deg"]))
        shape = ask.shape if single else (len(places), *ask.shape)
        return _as_records(values.reshape(shape))

    def states(self, bodies: BodiesLike, times: Times, *,
               outside: str = "raise") -> NDArray[np.float64]:
        """Heliocentric geometric positions [au] and velocities [au/day], J2000 equator; the last
        axis has the six numbers. Not for stars."""
        ask = _Ask(bodies, times, outside)
        values = self._core.states(ask.bodies, ask.pairs)
        values = ask.checked(values, np.isnan(values))
        return values.reshape((*ask.shape, 6))

    def magnitude(self, bodies: BodiesLike, times: Times,
                  site: Optional[SiteLike] = None) -> NDArray[np.float64]:
        """Visual magnitudes (planets: Mallama & Hilton 2018 in the modern reduction; minor planets
        by H and G); NaN where none is known."""
        ask = _Ask(bodies, times, "nan")
        return self._core.magnitudes(ask.bodies, ask.pairs, _site(site)).reshape(ask.shape)[()]

    def constellation(self, bodies: BodiesLike, times: Times,
                      site: Optional[SiteLike] = None, *, outside: str = "raise") -> Any:
        """Abbreviations of the constellations that the bodies stand in (IAU; boundaries of
        Delporte 1930 as tabulated by Roman 1987)."""
        ask = _Ask(bodies, times, outside)
        index = self._core.constellations(ask.bodies, ask.pairs, _site(site))
        names = ask.checked(_ABBREVIATIONS[index], index < 0)
        return names.reshape(ask.shape)[()]

    def separation(self, first: BodyLike, second: BodyLike, times: Times,
                   site: Optional[SiteLike] = None, *,
                   outside: str = "raise") -> NDArray[np.float64]:
        """Angles between the apparent places of two bodies [deg]."""
        pair = [one_body(first, "first"), one_body(second, "second")]
        ask = _Ask(pair, times, outside)
        places = self._core.apparent(ask.bodies, ask.pairs, _site(site))
        places = ask.checked(places, np.isnan(places["ra_deg"]))
        angles = _core.separation(np.asarray(places[0]), np.asarray(places[1]))
        return angles.reshape(ask.shape[1:])[()]

    def ephemeris_of(self, bodies: BodiesLike, times: Times, site: Optional[SiteLike] = None, *,
                     progress: Progress = None) -> np.recarray:
        """A table, a row for each body and instant: apparent place, brightness, phase, size,
        constellation, and with a site azimuth and altitude. What is not known is NaN."""
        ask = _Ask(bodies, times, "nan")
        return records(self._core.ephemeris(ask.bodies, ask.pairs, _site(site), progress))

    # Risings and settings.

    def risings(self, body: BodyLike, start: Times, end: Times, sites: SitesLike, *,
                horizon_deg: Optional[float] = None, progress: Progress = None) -> np.recarray:
        """Risings, transits and settings, a row for each visit of the body to the sky.

        What does not happen, or not within the span, is NaT. The Sun comes with its twilights.
        The horizon has 34' of refraction and the site's dip, Sun and Moon show their upper
        limb; horizon_deg is another altitude of the centre, without refraction. site counts in
        the sites given.
        """
        return records(_core.risings(self._core, one_body(body, "body"), span_of(start, end),
                                     sites_of(sites)[0],
                                     None if horizon_deg is None else
                                     number_of(horizon_deg, "horizon_deg", -90, 90), progress))

    def passages(self, body: BodyLike, start: Times, end: Times, sites: SitesLike, *,
                 altitudes_deg: Sequence[float] = (), progress: Progress = None) -> np.recarray:
        """Every passage through the horizon, or through up to 16 altitudes (of the centre,
        without refraction). The quickest way to risings and settings alone."""
        levels = numbers_of(altitudes_deg, "altitudes_deg")
        if len(levels) > 16:
            raise ValueError("altitudes_deg: more than 16")
        return records(_core.passages(self._core, one_body(body, "body"), levels,
                                      span_of(start, end), sites_of(sites)[0], progress))

    # Searches.

    def phases(self, start: Times, end: Times) -> np.recarray:
        """The principal phases of the Moon, to a second."""
        return records(_core.phases(self._core, span_of(start, end)))

    def conjunctions(self, first: BodyLike, second: BodyLike, start: Times, end: Times, *,
                     way: str = "right-ascension", within_deg: float = 10,
                     progress: Progress = None) -> np.recarray:
        """Conjunctions of two bodies from the Earth's centre: in "right-ascension", in
        "longitude", or "closest", the least angle between them if below within_deg. The
        position angle is that of the first body from the second."""
        if way not in _WAYS:
            raise ValueError(f'way: "{way}" is none of {", ".join(_WAYS)}')
        return records(_core.conjunctions(
            self._core, one_body(first, "first"), one_body(second, "second"),
            span_of(start, end), _WAYS[way], number_of(within_deg, "within_deg", 0, 180),
            progress))

    def gatherings(self, bodies: BodiesLike, start: Times, end: Times, within_deg: float, *,
                   progress: Progress = None) -> np.recarray:
        """Stretches during which bodies stay within a circle of a radius, and its least."""
        return records(_core.gatherings(self._core, bodies_of(bodies, "bodies"),
                                        span_of(start, end),
                                        number_of(within_deg, "within_deg", 0, 180), progress))

    def diary(self, start: Times, end: Times, *, kinds: Iterable[str] = (),
              site: Optional[SiteLike] = None, stars: bool = True,
              widest_conjunction_deg: float = 180, progress: Progress = None) -> np.recarray:
        """Every event of a span in words and numbers; kinds as in `diary_kinds`, empty: all."""
        wanted = [kinds] if isinstance(kinds, str) else [text_of(k, "kinds") for k in kinds]
        widest = number_of(widest_conjunction_deg, "widest_conjunction_deg", 0, 180)
        return records(_core.diary(self._core, span_of(start, end), wanted, _site(site),
                                   bool(stars), widest, progress))

    def occultations(self, site: SiteLike, start: Times, end: Times, *,
                     faintest: float = 5, planets: bool = True, observable_only: bool = True,
                     progress: Progress = None) -> np.recarray:
        """Stars (to magnitude 5) and planets behind the Moon, contact by contact, for its mean
        limb."""
        return records(_core.occultations(self._core, site_of(site), span_of(start, end),
                                          number_of(faintest, "faintest"), bool(planets),
                                          bool(observable_only), progress))

    def approaches(self, body: BodyLike, start: Times, end: Times, *, within_au: float = 0.1,
                   two_body: bool = False, progress: Progress = None) -> np.recarray:
        """Closest approaches of a minor planet or comet to the planets and the Moon,
        integrated among the planets unless two_body."""
        if not number_of(within_au, "within_au") > 0:
            raise ValueError("within_au: must be above 0")
        return records(_core.approaches(self._core, one_body(body, "body"),
                                        span_of(start, end), float(within_au), two_body,
                                        progress))

    # Eclipses.

    def eclipses(self, start: Times, end: Times, kind: str = "solar", *,
                 progress: Progress = None) -> np.recarray:
        """All eclipses, "solar" or "lunar", whose greatest moment lies in the span, as an
        almanac prints them: latitude and longitude are those of greatest eclipse (lunar: where
        the Moon is in the zenith)."""
        return records(_core.eclipses(self._core, _solar(kind), span_of(start, end), progress))

    def local_eclipses(self, site: SiteLike, start: Times, end: Times, kind: str = "solar", *,
                       visible_only: bool = True, progress: Progress = None) -> np.recarray:
        """The eclipses of a span at a site, with their contacts; altitude_deg and azimuth_deg
        are those of the maximum. A row without a second contact is partial there."""
        return records(_core.local_eclipses(self._core, _solar(kind), span_of(start, end),
                                            site_of(site), visible_only, progress))

    def eclipse_map(self, greatest: Times, kind: str = "solar", *,
                    light: bool = True) -> Picture:
        """The map of the eclipse within a day of an instant."""
        return Picture(self._eclipse_map(greatest, kind, "svg", light))

    def eclipse_geojson(self, greatest: Times, kind: str = "solar") -> str:
        """The same map as GeoJSON (RFC 7946)."""
        return self._eclipse_map(greatest, kind, "geojson", True)

    def eclipse_picture(self, greatest: Times, kind: str = "solar",
                        site: Optional[SiteLike] = None, *, light: bool = True) -> Picture:
        """The Sun's disk as a site sees it, or the Moon's way through the shadow."""
        return Picture(_core.eclipse_picture(self._core, _solar(kind),
                                             pair_of(greatest, "greatest"), _site(site), light))

    # Planets and their satellites.

    def satellites(self, planet: BodyLike, times: Times, site: Optional[SiteLike] = None, *,
                   all_moons: bool = False, progress: Progress = None) -> np.recarray:
        """Where the satellites of a planet stand beside it: x_radii along its equator (east
        positive), y_radii towards its north pole, in equatorial radii."""
        return records(_core.satellites(self._core, one_body(planet, "planet"),
                                        pairs_of(times, "times")[0], _site(site), all_moons,
                                        progress))

    def satellite_phenomena(self, planet: BodyLike, start: Times, end: Times, *,
                            mutual: bool = False, progress: Progress = None) -> np.recarray:
        """Transits, shadow transits, occultations and eclipses of the great satellites of
        Jupiter and Saturn, seen from the Earth's centre."""
        return records(_core.satellite_phenomena(self._core, one_body(planet, "planet"),
                                                 span_of(start, end), mutual, progress))

    # Satellites of the Earth.

    def passes(self, satellite: Satellite, start: Times, end: Times, site: SiteLike, *,
               horizon_deg: float = 0, culmination_deg: float = 0,
               progress: Progress = None) -> np.recarray:
        """The passes of an Earth satellite over a site (see `read_satellites`), none missed.

        A row runs from rise to set through horizon_deg; passes that culminate below
        culmination_deg are left out. into_shadow and into_light are where it meets the Earth's
        umbra and leaves the penumbra; best is where it is brightest while lit in a dark sky, NaT
        if that is nowhere. Straight lines, without refraction; SGP4 with the constants of WGS 72
        (Hoots & Roehrich 1980; Vallado et al. 2006, AIAA 2006-6753).
        """
        return records(_core.passes(self._core, satellite_of(satellite), span_of(start, end),
                                    site_of(site), number_of(horizon_deg, "horizon_deg", -10, 89),
                                    number_of(culmination_deg, "culmination_deg", -90, 90),
                                    progress))

    def satellite_places(self, satellite: Satellite, times: Times,
                         site: SiteLike) -> np.recarray:
        """Where an Earth satellite stands over a site: angles in degrees, range_km and height_km,
        light ("sunlit", "penumbra", "umbra"), magnitude. NaN where its elements give no state."""
        return records(_core.satellite_places(self._core, satellite_of(satellite),
                                              pairs_of(times, "times")[0], site_of(site)))

    # Pictures.

    def planets_picture(self, start: Times, end: Times, *, title: str = "Planets",
                        light: bool = True) -> Picture:
        """The planets' elongations from the Sun over a span, with their events."""
        return Picture(_core.planet_chart(self._core, span_of(start, end), title, light))

    def _places(self, ask_core: Callable[..., NDArray[Any]], bodies: BodiesLike, times: Times,
                site: Optional[SiteLike], outside: str, known: str) -> np.recarray:
        ask = _Ask(bodies, times, outside)
        values = ask_core(ask.bodies, ask.pairs, _site(site))
        values = ask.checked(values, np.isnan(values[known]))
        return _as_records(values.reshape(ask.shape))

    def _eclipse_map(self, greatest: Times, kind: str, form: str, light: bool) -> str:
        return _core.eclipse_map(self._core, _solar(kind), pair_of(greatest, "greatest"), form,
                                 light)


def satellite_of(satellite: Any) -> Satellite:
    if not isinstance(satellite, Satellite):
        raise TypeError(f"satellite: wanted a Satellite, not {type(satellite).__name__}")
    return satellite


class _Ask:
    """Bodies and instants of a call, and what becomes of those that cannot be computed."""

    def __init__(self, bodies: BodiesLike, times: Times, outside: str) -> None:
        if outside not in ("raise", "nan", "mask"):
            raise ValueError(f'outside: "{outside}" is none of "raise", "nan", "mask"')
        self.outside = outside
        self.bodies = bodies_of(bodies, "bodies")
        self.pairs, shape = pairs_of(times, "times")
        one = isinstance(bodies, Body) or (isinstance(bodies, str) and len(self.bodies) == 1)
        self.shape = shape if one else (len(self.bodies), *shape)

    def checked(self, values: NDArray[Any], missing: NDArray[np.bool_]) -> NDArray[Any]:
        if self.outside == "nan" or not missing.any():
            return np.ma.MaskedArray(values) if self.outside == "mask" else values
        if self.outside == "mask":
            return np.ma.MaskedArray(values, _mask_like(values, missing))
        at = tuple(np.argwhere(missing)[0][-max(2, missing.ndim):])
        body, index = at[-2:] if values.dtype.names or missing.ndim == 2 else at[:2]
        raise ValueError(f"times: {describe(self.pairs[index])} at index {index} cannot be "
                         f"computed for {self.bodies[body].name}: outside the ephemeris")


def _mask_like(values: NDArray[Any], missing: NDArray[np.bool_]) -> NDArray[Any]:
    mask = np.zeros(values.shape, np.ma.make_mask_descr(values.dtype))
    mask[missing] = True if mask.dtype.names is None else (True,) * len(mask.dtype)
    return mask


def _as_records(values: NDArray[Any]) -> Any:
    if isinstance(values, np.ma.MaskedArray):
        return values
    out = values.view(np.recarray)
    return out[()] if values.ndim == 0 else out


def _site(site: Optional[SiteLike]) -> Optional[Site]:
    return None if site is None else site_of(site)


def _solar(kind: str) -> bool:
    if kind not in ("solar", "lunar"):
        raise ValueError(f'kind: "{kind}" is neither "solar" nor "lunar"')
    return kind == "solar"
