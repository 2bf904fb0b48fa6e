"""Instants, as users write them, to Julian dates in UTC and back."""

from __future__ import annotations

import datetime

import numpy as np

from . import _core

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any, Optional, Union

    from numpy.typing import ArrayLike, NDArray

    Times = Union[str, datetime.datetime, datetime.date, np.datetime64, float, ArrayLike, Any]
    """Any of: numpy datetime64 and datetime.datetime (UTC unless they know their zone), Julian
    dates in UTC as numbers, astropy.time.Time, pandas' times, texts such as "2026-11-21T18:00Z",
    and what `from_jd` returns; single or as arrays of any shape."""

_JULIAN = np.dtype([("day", "f8"), ("fraction", "f8")])
_EPOCH = 2440587.5  # of datetime64, as a Julian date
_FARTHEST = 1e8  # days; nothing is computed as far off


def from_jd(day: ArrayLike, fraction: ArrayLike = 0.0, scale: str = "utc") -> NDArray[Any]:
    """Instants from Julian dates in two parts, which keep nanoseconds.

    scale is "utc", "tt" or "tdb" (taken as tt: the two differ by less than 2 ms).
    """
    try:
        day, fraction = np.broadcast_arrays(_numbers(day, "day"), _numbers(fraction, "fraction"))
    except ValueError as error:
        named = str(error).startswith(("day: ", "fraction: "))
        raise ValueError(str(error) if named else f"day, fraction: {error}") from None
    pairs = np.stack([day.ravel(), fraction.ravel()], axis=1)
    if scale in ("tt", "tdb"):
        pairs = _core.utc_of_tt(_checked(pairs, "day"))
    elif scale != "utc":
        raise ValueError(f'scale: "{scale}" is none of "utc", "tt", "tdb"')
    out = np.empty(day.shape, _JULIAN)
    out["day"] = pairs[:, 0].reshape(day.shape)
    out["fraction"] = pairs[:, 1].reshape(day.shape)
    return out


def pairs_of(times: Times, name: str) -> tuple[NDArray[np.float64], tuple[int, ...]]:
    """Rows of day and fraction in UTC, and the shape that the instants had."""
    values = _as_array(times, name)
    if values.size == 0:
        raise ValueError(f"{name}: no instant in an empty array")
    flat = values.ravel()
    if values.dtype == _JULIAN:
        pairs = np.stack([flat["day"], flat["fraction"]], axis=1)
    elif values.dtype.kind == "M":
        pairs = _of_datetime64(flat, name)
    elif values.dtype.kind in "fiu":
        day = np.floor(flat.astype(float))
        pairs = np.stack([day, flat - day], axis=1)
    else:
        raise TypeError(f"{name}: cannot read times from an array of {values.dtype}")
    return _checked(pairs, name), values.shape


def pair_of(time: Times, name: str) -> NDArray[np.float64]:
    """The row of a single instant."""
    pairs, shape = pairs_of(time, name)
    if shape not in ((), (1,)):
        raise ValueError(f"{name}: wanted one instant, not an array of shape {shape}")
    return pairs


def span_of(start: Times, end: Times) -> NDArray[np.float64]:
    """The two rows of a span, whose end must not come before its start."""
    pairs = np.concatenate([pair_of(start, "start"), pair_of(end, "end")])
    if (pairs[1] - pairs[0]).sum() < 0:
        raise ValueError("end: comes before the start")
    return pairs


def now() -> np.datetime64:
    """The computer's clock, in UTC."""
    return np.datetime64(datetime.datetime.now(datetime.timezone.utc).replace(tzinfo=None), "us")


def _as_array(times: Any, name: str) -> NDArray[Any]:
    # astropy's UTC stretches the days of leap seconds; its TT is the same as here.
    if hasattr(times, "tt") and hasattr(times, "jd1"):
        _refuse_masked(times.jd1, name)
        if times.scale == "ut1":
            return from_jd(times.jd1, times.jd2)
        return from_jd(times.tt.jd1, times.tt.jd2, "tt")
    _refuse_masked(times, name)
    try:
        values = np.asarray(times)
    except ValueError:
        raise ValueError(f"{name}: rows of unequal length") from None
    if values.dtype.kind in "OU":  # texts, datetimes, pandas' times with a zone
        read = [_of_object(v, name) for v in values.ravel()]
        whole = np.concatenate(read) if read else np.empty((0, 2))
        values = from_jd(whole[:, 0], whole[:, 1]).reshape(values.shape)
    return values


def _refuse_masked(values: Any, name: str) -> None:
    if isinstance(values, np.ma.MaskedArray) and np.ma.getmaskarray(values).any():
        at = int(np.argmax(np.ma.getmaskarray(values).ravel()))
        raise ValueError(f"{name}: masked at index {at}")


def _numbers(values: ArrayLike, name: str) -> NDArray[np.float64]:
    _refuse_masked(values, name)
    try:
        return np.asarray(values, float)
    except (TypeError, ValueError):
        raise ValueError(f"{name}: not numbers") from None


def _of_object(value: Any, name: str) -> NDArray[np.float64]:
    if isinstance(value, str):
        try:
            return _core.parse_instant(value)
        except ValueError as error:
            raise ValueError(str(error).replace("time", name, 1)) from None
    if value is not None and value != value:  # NaT is not equal to itself
        raise ValueError(f"{name}: NaT among the instants")
    if isinstance(value, datetime.datetime) and value.tzinfo is not None:
        value = value.astimezone(datetime.timezone.utc).replace(tzinfo=None)
    if isinstance(value, (datetime.datetime, datetime.date)):
        return _of_datetime64(np.array([value], "M8[us]"), name)
    raise TypeError(f"{name}: cannot read a time from {type(value).__name__}")


def _of_datetime64(values: NDArray[Any], name: str) -> NDArray[np.float64]:
    missing = np.isnat(values)
    if missing.any():
        raise ValueError(f"{name}: NaT at index {int(np.argmax(missing))}")
    days = values.astype("M8[D]")
    if np.datetime_data(values.dtype)[0] in "YMW" and (days.astype(values.dtype) != values).any():
        raise ValueError(f"{name}: beyond the days that datetime64 can count")
    within = (values - days) / np.timedelta64(1, "D")
    return np.stack([days.astype(np.int64) + _EPOCH, within], axis=1)


def _checked(pairs: NDArray[np.float64], name: str) -> NDArray[np.float64]:
    bad = ~(np.abs(pairs) < _FARTHEST).all(axis=1)
    if bad.any():
        at = int(np.argmax(bad))
        raise ValueError(f"{name}: {pairs[at].sum()} at index {at} is no Julian date")
    return np.ascontiguousarray(pairs)


def describe(pair: NDArray[np.float64]) -> str:
    """An instant for a message."""
    micros = round((pair[0] - _EPOCH + pair[1]) * 86400) * 1_000_000
    return str(np.datetime64(micros, "us"))[:19]


def datetime64_of(times: Times, name: Optional[str] = None) -> NDArray[Any]:
    """Any times as datetime64[us], UTC."""
    pairs, shape = pairs_of(times, name or "times")
    days = np.floor(pairs[:, 0] - _EPOCH)
    rest = (pairs[:, 0] - _EPOCH - days) + pairs[:, 1]
    micros = np.rint(rest * 86400e6).astype(np.int64) + days.astype(np.int64) * 86_400_000_000
    return micros.view("M8[us]").reshape(shape)
