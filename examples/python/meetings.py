"""Meetings of the planets over some years: the closest pairs, and three within a small circle.

    python3 meetings.py [2026-01-01] [2031-01-01]
"""

import itertools
import sys

import numpy as np

import solsys

NAKED_EYE = ["mercury", "venus", "mars", "jupiter", "saturn"]


def closest_pairs(start, end, within_deg=1.0):
    """(conjunction, first, second) in order of time."""
    model = solsys.Model()
    found = [(event, *pair) for pair in itertools.combinations(NAKED_EYE, 2)
             for event in model.conjunctions(*pair, start, end, way="closest",
                                             within_deg=within_deg)]
    return sorted(found, key=lambda row: row[0].time)


def main(start="2026-01-01", end="2031-01-01"):
    for event, first, second in closest_pairs(start, end):
        print(f"{str(event.time)[:16]}  {first} {event.separation_deg:.2f}° from {second}, "
              f"{abs(event.elongation_deg):.0f}° from the Sun")
    for trio in itertools.combinations(NAKED_EYE, 3):
        for event in solsys.Model().gatherings(list(trio), start, end, 2.5):
            print(f"{str(event.time)[:16]}  {', '.join(trio)} within {2 * event.radius_deg:.1f}°")


if __name__ == "__main__":
    main(*sys.argv[1:])
