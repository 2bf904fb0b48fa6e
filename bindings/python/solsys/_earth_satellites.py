"""Satellites of the Earth by their element sets."""

from __future__ import annotations

import os
import warnings

from . import _core
from ._bodies import text_of
from ._core import Satellite
from ._times import now, pair_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Sequence, Union

    from ._times import Times


def parse_satellites(text: str) -> list[Satellite]:
    """The satellites of a text: two- and three-line element sets, or mean-elements messages
    (CCSDS 502.0-B) as JSON or CSV. A warning tells which sets were refused and why."""
    return _checked(*_core.parse_satellites(text_of(text, "text")), "text")


def read_satellites(path: Union[str, os.PathLike[str]]) -> list[Satellite]:
    """The same from a file."""
    return _checked(*_core.read_satellites(os.fspath(path)), "path")


def find_satellite(satellites: Sequence[Satellite], name: str, near: Times = None) -> Satellite:
    """One of a list by its catalogue number or name, or a part of the name that no other has; of
    several sets that with the epoch nearest to an instant (without one: now)."""
    wanted = pair_of(now() if near is None else near, "near")
    return _core.find_satellite(list(satellites), text_of(name, "name"), wanted)


def _checked(satellites: list[Satellite], problems: list[str], name: str) -> list[Satellite]:
    if not satellites:
        raise ValueError(f"{name}: {problems[0] if problems else 'no element set in it'}")
    if problems:
        warnings.warn(f"{len(problems)} element sets refused, the first: {problems[0]}",
                      stacklevel=3)
    return satellites
