"""Tonight at a site: dusk and dawn, the Moon, and which planets stand over the horizon when.

    python3 tonight.py Oslo [2026-12-01]
"""

import sys

import numpy as np

import solsys

HOUR = np.timedelta64(1, "h")


def tonight(place, date=None):
    """The night's darkness and a table of what is up, an hour a row."""
    model, site = solsys.Model(), solsys.find_city(place)
    noon = np.datetime64(date or str(solsys.now())[:10], "h") + 12 * HOUR
    noon = noon - np.timedelta64(round(site.longitude_deg * 240), "s")  # of the Sun, about
    days = model.risings("sun", noon, noon + 24 * HOUR, site)
    hours = noon.astype("M8[s]") + np.arange(25) * HOUR
    table = model.ephemeris_of("all", hours, site)
    dark = table[np.isin(table.time, hours[model.horizontal("sun", hours, site).altitude_deg < -6])]
    return days, dark[(dark.altitude_deg > 5) & (dark.body != "Sun")]


def main(place="Oslo", date=None):
    days, seen = tonight(place, date)
    for name in ("set", "civil_dusk", "astronomical_dusk", "astronomical_dawn", "civil_dawn",
                 "rise"):
        times = days[name][~np.isnat(days[name])]
        print(f"{name:18}", str(times[0])[:16] if len(times) else "does not happen", "UTC")
    for body in np.unique(seen.body):
        rows = seen[seen.body == body]
        best = rows[np.argmax(rows.altitude_deg)]
        print(f"{body:10} {str(rows[0].time)[11:16]} to {str(rows[-1].time)[11:16]}, highest "
              f"{best.altitude_deg:.0f}°, magnitude {best.magnitude:.1f}, in {best.constellation}")


if __name__ == "__main__":
    main(*sys.argv[1:])
