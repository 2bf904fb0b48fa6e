"""The same with Skyfield."""
import numpy as np
from skyfield import almanac
from skyfield.api import load, load_file, wgs84


class Jobs:
    def __init__(self, names, latitude, longitude, de_file, kernel):
        self.kernel, self.scale = load_file(kernel), load.timescale(builtin=True)
        self.bodies = [self.kernel[n if n in ("sun", "moon") else n + " barycenter"]
                       for n in names]
        self.site = wgs84.latlon(latitude, longitude)

    def places(self, jd):
        earth = self.kernel["earth"].at(self.scale.tt_jd(jd))
        both = [earth.observe(body).apparent().radec("date")[:2] for body in self.bodies]
        return np.stack([[ra._degrees for ra, _ in both], [dec.degrees for _, dec in both]])

    def horizon(self, jd):
        here = (self.kernel["earth"] + self.site).at(self.scale.tt_jd(jd))
        altitude, azimuth, _ = here.observe(self.kernel["moon"]).apparent().altaz()
        return np.stack([azimuth.degrees, altitude.degrees])

    def sunrises(self, start, end):
        span = [self.scale.utc(*map(int, text.split("-"))) for text in (start, end)]
        times, up = almanac.find_discrete(*span, almanac.sunrise_sunset(self.kernel, self.site))
        return np.array([t.utc_iso(places=6)[:-1] for t in times[up == 1]], "M8[us]")
