"""Minor planets by the million."""

from __future__ import annotations

import os

import numpy as np

from . import _core
from ._bodies import number_of, site_of
from ._model import Model
from ._records import records
from ._times import pair_of, span_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Optional, Union

    from ._bodies import SiteLike
    from ._model import Progress
    from ._times import Times


class MinorPlanets:
    """The orbits of a file of the Minor Planet Center (MPCORB), for looking through all of them.

    What is found is integrated among the planets from its epoch, unless two_body.
    """

    def __init__(self, path: Union[str, "os.PathLike[str]"]) -> None:
        self._survey = _core.Survey(os.fspath(path))

    def __len__(self) -> int:
        return len(self._survey)

    def in_field(self, model: Model, time: Times, ra_deg: float, dec_deg: float,
                 radius_deg: float, *, faintest: float = 99, site: Optional[SiteLike] = None,
                 two_body: bool = False, progress: Progress = None) -> np.recarray:
        """All within a circle of the sky (centre: equator and equinox of J2000), the brightest
        first: astrometric ra_deg and dec_deg, distance_au, separation_deg from the centre,
        magnitude (99: not known)."""
        field = (number_of(ra_deg, "ra_deg", -360, 360), number_of(dec_deg, "dec_deg", -90, 90),
                 number_of(radius_deg, "radius_deg", 0, 180), number_of(faintest, "faintest"))
        return records(self._survey.in_field(
            _core_of(model), pair_of(time, "time"), *field, bool(two_body),
            None if site is None else site_of(site), progress))

    def near_earth(self, model: Model, start: Times, end: Times, within_au: float = 0.05, *,
                   two_body: bool = False, progress: Progress = None) -> np.recarray:
        """All least distances from the Earth's centre within a span of 366 days at most, with
        the speed_km_s at which the body passes."""
        span = span_of(start, end)
        if (span[1] - span[0]).sum() > 366:
            raise ValueError("end: more than 366 days after the start")
        return records(self._survey.near_earth(_core_of(model), span,
                                               number_of(within_au, "within_au", 0, 2),
                                               bool(two_body), progress))


def _core_of(model: Any) -> Any:
    if not isinstance(model, Model):
        raise TypeError(f"model: wanted a Model, not {type(model).__name__}")
    return model._core
