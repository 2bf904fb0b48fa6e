"""Pictures, as notebooks show them."""

from __future__ import annotations

import os

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Union


class Picture:
    """A drawing as SVG text: shown by notebooks, written by `save`."""

    def __init__(self, svg: str) -> None:
        self.svg = svg

    def _repr_svg_(self) -> str:
        return self.svg

    def save(self, path: Union[str, "os.PathLike[str]"]) -> None:
        with open(path, "w", encoding="utf-8") as file:
            file.write(self.svg)
