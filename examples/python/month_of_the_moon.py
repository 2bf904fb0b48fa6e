"""A month of the Moon: phases, rising and setting, and how much of it is lit.

    python3 month_of_the_moon.py Lima [2026-12]
"""

import sys

import numpy as np

import solsys


def month(place, month_text="2026-12"):
    model, first = solsys.Model(), np.datetime64(month_text, "M")
    start, end = first.astype("M8[D]"), (first + 1).astype("M8[D]")
    rows = model.risings("moon", start, end, place)
    middle = np.where(np.isnat(rows.transit), np.where(np.isnat(rows.rise), rows.set, rows.rise),
                      rows.transit)
    return rows, model.ephemeris_of("moon", middle), model.phases(start, end)


def main(place="Lima", month_text="2026-12"):
    rows, looks, phases = month(place, month_text)
    for row, look in zip(rows, looks):
        print(f"{str(row.rise)[:16]:16} to {str(row.set)[:16]:16}  {look.illuminated:4.0%} lit, "
              f"in {look.constellation}")
    for phase in phases:
        print(str(phase.time)[:16], phase.phase)


if __name__ == "__main__":
    main(*sys.argv[1:])
