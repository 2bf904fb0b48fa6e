"""The analemma: where the Sun stands at the same mean time on every day of a year.

    python3 analemma.py Athens [2026] [analemma.csv]
"""

import sys

import numpy as np

import solsys


def analemma(place, year=2026, hour=12):
    """Azimuths and altitudes at an hour of the local mean time."""
    model, site = solsys.Model(), solsys.find_city(place)
    days = np.arange(f"{year}-01-01", f"{year + 1}-01-01", dtype="M8[D]")
    times = days.astype("M8[s]") + np.timedelta64(
        round(hour * 3600 - site.longitude_deg * 240), "s")
    return times, model.horizontal("sun", times, site)


def main(place="Athens", year=2026, path=None):
    times, places = analemma(place, int(year))
    high, low = np.argmax(places.altitude_deg), np.argmin(places.altitude_deg)
    for at in (high, low):
        print(f"{str(times[at])[:10]}  {places[at].altitude_deg:.2f}° high, azimuth "
              f"{places[at].azimuth_deg:.2f}°")
    if path:
        np.savetxt(path, np.stack([places.azimuth_deg, places.altitude_deg], 1), "%.5f", ",",
                   header="azimuth_deg,altitude_deg", comments="")


if __name__ == "__main__":
    main(*sys.argv[1:])
