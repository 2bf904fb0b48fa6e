#!/usr/bin/python3
"""Writes data/earth/land_outlines.csv from the Natural Earth sample of python3-geopandas.

Usage: make_land_outlines.py [naturalearth_lowres.shp]   (needs python3-shapely)
"""
import struct
import sys
from pathlib import Path

from shapely.geometry import Polygon
from shapely.ops import unary_union

SAMPLE = ("/usr/lib/python3/dist-packages/geopandas/datasets/naturalearth_lowres/"
          "naturalearth_lowres.shp")
OUT = Path(__file__).resolve().parents[1] / "data" / "earth" / "land_outlines.csv"
HEAD = """\
# Outlines of the continents, the larger islands and the Caspian Sea, to be filled by the even-odd rule.
# ring: number of the closed ring a point belongs to (the first point is repeated at the end); degrees, east and north positive.
# Scale 1:110 million. Antarctica closes along the meridian of 180 degrees and the South Pole.
# Source: Natural Earth (public domain), the countries of the sample that Debian packages with python3-geopandas 0.12.2,
# joined and simplified to 0.02 degree by tools/make_land_outlines.py.
ring,longitude_deg,latitude_deg
"""


def signed_area(ring):
    return sum(a[0] * b[1] - b[0] * a[1] for a, b in zip(ring, ring[1:])) / 2


def countries(data):
    """The polygons of a shapefile: outer rings run clockwise, holes the other way."""
    at = 100
    while at < len(data):
        length = struct.unpack(">ii", data[at:at + 8])[1]
        body = data[at + 8:at + 8 + 2 * length]
        at += 8 + 2 * length
        if struct.unpack("<i", body[:4])[0] != 5:
            continue
        parts, points = struct.unpack("<ii", body[36:44])
        starts = list(struct.unpack(f"<{parts}i", body[44:44 + 4 * parts])) + [points]
        first = 44 + 4 * parts
        pairs = [struct.unpack("<dd", body[first + 16 * i:first + 16 * i + 16])
                 for i in range(points)]
        rings = [pairs[starts[i]:starts[i + 1]] for i in range(parts)]
        country = unary_union([Polygon(r).buffer(0) for r in rings if signed_area(r) < 0])
        for hole in (r for r in rings if signed_area(r) > 0):
            country = country.difference(Polygon(hole))
        yield country


def main():
    data = Path(sys.argv[1] if len(sys.argv) > 1 else SAMPLE).read_bytes()
    land = unary_union([c.buffer(1e-6) for c in countries(data)]).simplify(0.02)
    rings = []
    for part in getattr(land, "geoms", [land]):
        rings.append(list(part.exterior.coords))
        rings += [list(r.coords) for r in part.interiors if Polygon(r).area > 0.05]
    rings = sorted((r for r in rings if Polygon(r).area > 0.02), key=lambda r: -Polygon(r).area)
    with open(OUT, "w") as out:
        out.write(HEAD)
        for number, ring in enumerate(rings):
            last = None
            for x, y in ring:
                point = (round(x, 2) + 0, round(y, 2) + 0)
                if point != last:
                    out.write(f"{number},{point[0]:.2f},{point[1]:.2f}\n")
                last = point


main()
