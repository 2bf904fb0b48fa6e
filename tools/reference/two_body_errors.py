#!/usr/bin/env python3
"""Writes data/reference/two_body_errors.csv: how far the two-body places of the listed minor planets and
comets are from integrated ones, by the age of the elements.

usage: two_body_errors.py SOLSYS    (the command)

Every 30 days over 30 years on either side of each epoch, astrometric, from the Earth's centre. The
integration is the library's own, without the comets' jets.
"""
import json
import math
import subprocess
import sys

AGES = (0.5, 1, 2, 3, 4, 6, 8, 11, 15, 20, 25, 29)
QUANTILES = (0.5, 0.68, 0.9, 0.95)
HEADER = """\
# Two-body places of the listed minor planets and comets from integrated ones: quantiles of their separation
# [arcsec], seen from the Earth, by the age of the elements [years], either way within a quarter.
# Made by tools/reference/two_body_errors.py.
kind,age_years,places,""" + ",".join(f"p{100 * q:.0f}_arcsec" for q in QUANTILES)


def epochs(kind, path):
    """Code and epoch of each body of a list."""
    lines = [line for line in open(path) if not line.startswith("#")]
    columns = lines[0].split(",")
    for count, line in enumerate(lines[1:], 1):
        if kind == "astr":
            cells = line.split(",")
            yield f"astr:{cells[columns.index('number')]}", float(cells[columns.index("epoch_jd")])
        else:  # the name is quoted, and in front
            yield f"comt:{count}", float(line.split('",')[1].split(",")[0])


def places(solsys, code, epoch, *options):
    span = [f"jd:{epoch - 30 * 365.25}", f"jd:{epoch + 30 * 365.25}"]
    run = subprocess.run([solsys, "position", code, "--frame", "j2000", "--from", span[0], "--to", span[1],
                          "--step", "30d", "--json", *options], capture_output=True, text=True, check=True)
    return json.loads(run.stdout)


def direction(row):
    ra, dec = math.radians(row["ra_deg"]), math.radians(row["dec_deg"])
    return math.cos(dec) * math.cos(ra), math.cos(dec) * math.sin(ra), math.sin(dec)


def errors(solsys, kind, path):
    for code, epoch in epochs(kind, path):
        for true, two_body in zip(places(solsys, code, epoch), places(solsys, code, epoch, "--two-body")):
            if true["motion"] == "integrated":  # not beyond a collision
                apart = 2 * math.asin(min(1, math.dist(direction(true), direction(two_body)) / 2))
                yield abs(true["jd_tt"] - epoch) / 365.25, math.degrees(apart) * 3600


def main():
    with open("data/reference/two_body_errors.csv", "w") as out:
        print(HEADER, file=out)
        for kind, path in (("astr", "data/catalogue/asteroids_sample.csv"),
                           ("comt", "data/catalogue/comets_sample.csv")):
            found = list(errors(sys.argv[1], kind, path))
            for age in AGES:
                near = sorted(e for years, e in found if age / 1.25 < years <= age * 1.25)
                cells = [f"{near[int(q * len(near))]:.1f}" for q in QUANTILES]
                print(kind, age, len(near), *cells, sep=",", file=out)


main()
