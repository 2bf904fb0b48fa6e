"""Stars and planets behind the Moon at a site, as a table for pandas.

    python3 behind_the_moon.py Madrid [2026-01-01] [2027-01-01]
"""

import sys

import pandas

import solsys


def occultations(place, start="2026-01-01", end="2027-01-01"):
    frame = pandas.DataFrame(solsys.Model().occultations(place, start, end))
    return frame.sort_values("magnitude")


def main(place="Madrid", start="2026-01-01", end="2027-01-01"):
    frame = occultations(place, start, end)
    print(frame[["time", "body", "contact", "magnitude", "moon_altitude_deg",
                 "dark_limb"]].head(20).to_string(index=False))


if __name__ == "__main__":
    main(*sys.argv[1:])
