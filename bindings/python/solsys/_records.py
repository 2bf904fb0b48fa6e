"""Columns to arrays of records."""

from __future__ import annotations

import numpy as np

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any


def records(columns: dict[str, Any]) -> np.recarray:
    """An array of records from columns of equal length.

    Iterate over it, take `.field` of it or of a row, hand it to pandas.DataFrame.
    """
    arrays = {name: _column(values) for name, values in columns.items()}
    length = len(next(iter(arrays.values())))
    out = np.recarray(length, dtype=[(name, a.dtype) for name, a in arrays.items()])
    for name, values in arrays.items():
        out[name] = values
    return out


def _column(values: Any) -> np.ndarray:
    if isinstance(values, list):
        return np.array(values, dtype=str) if values else np.array([], dtype="U1")
    return values
