"""All solar and lunar eclipses of a century at a site, those below its horizon left out.

    python3 eclipses_of_a_century.py Burgos [2001]
"""

import sys

import numpy as np

import solsys


def eclipses(place, first_year=2001, years=100):
    model, span = solsys.Model(), (f"{first_year}-01-01", f"{first_year + years}-01-01")
    found = [model.local_eclipses(place, *span, kind) for kind in ("solar", "lunar")]
    # The widest text of either decides.
    both = np.concatenate([table.view(np.ndarray) for table in found]).view(np.recarray)
    return both[np.argsort(both.greatest)]


def main(place="Burgos", first_year=2001, years=100):
    for e in eclipses(place, int(first_year), int(years)):
        print(f"{str(e.maximum)[:16]}  {e.kind:6} {e.type:10} magnitude {e.magnitude:5.3f}, "
              f"{e.altitude_deg:3.0f}° high")


if __name__ == "__main__":
    main(*sys.argv[1:])
