"""Jupiter's moons: what happens in the nights to come, and a picture in letters.

    python3 jupiter_moons.py [2026-12-01] [7]
"""

import sys

import numpy as np

import solsys


def configuration(moons, half_width=36, radii=30):
    """Jupiter O and the moons I, E, G, C in a line, east to the left."""
    line = [" "] * (2 * half_width + 1)
    line[half_width] = "O"
    for moon in moons:
        at = half_width - round(moon.x_radii / radii * half_width)
        if 0 <= at < len(line) and line[at] == " ":
            line[at] = moon.moon[0]
    return "".join(line)


def main(start="2026-12-01", days=7):
    model, start, days = solsys.Model(), np.datetime64(start, "h"), int(days)
    hours = start + np.arange(0, 24 * days, 6)
    table = model.satellites("jupiter", hours)
    for hour in np.unique(table.time):
        print(str(hour)[:13], configuration(table[table.time == hour]))
    seen = model.satellite_phenomena("jupiter", start, start + 24 * days)
    for event in seen[~seen.hidden]:
        print(str(event.time)[:16], event.moon, event.kind, "begins" if event.begins else "ends")


if __name__ == "__main__":
    main(*sys.argv[1:])
