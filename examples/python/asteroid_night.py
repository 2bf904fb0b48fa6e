"""An asteroid night: which minor planets stand well over a site at midnight, and how they move.

    python3 asteroid_night.py Tenerife [2026-12-01]
"""

import sys

import numpy as np

import solsys

NAMES = """1 2 3 4 5 6 7 8 9 10 11 14 15 16 18 20 21 29 31 52 65 324 349 433""".split()


def candidates(place, date, lowest_deg=30, faintest=12):
    """The bodies that qualify, the brightest first, with their motion in arcsec a minute."""
    model, site = solsys.Model(), solsys.find_city(place)
    midnight = np.datetime64(date, "s") + np.timedelta64(
        86400 - round(site.longitude_deg * 240), "s")
    bodies = [solsys.find_small_body(name) for name in NAMES]
    now = model.ephemeris_of(bodies, midnight, site)
    later = model.ephemeris_of(bodies, midnight + np.timedelta64(1, "h"), site)
    east = (later.ra_deg - now.ra_deg + 180) % 360 - 180
    speed = np.hypot(east * np.cos(np.radians(now.dec_deg)), later.dec_deg - now.dec_deg) * 60
    keep = (now.altitude_deg > lowest_deg) & (now.magnitude < faintest)
    order = np.argsort(now.magnitude[keep])
    return now[keep][order], speed[keep][order]


def main(place="Santa Cruz de Tenerife", date="2026-12-01"):
    for row, speed in zip(*candidates(place, date)):
        print(f"{row.body:20} {row.ra_deg:8.4f} {row.dec_deg:+8.4f}  magnitude "
              f"{row.magnitude:4.1f}, {row.altitude_deg:2.0f}° high, {speed:.2f}\"/min")


if __name__ == "__main__":
    main(*sys.argv[1:])
