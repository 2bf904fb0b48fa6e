"""The same with astropy."""
import astropy.units as u
import numpy as np
from astropy.coordinates import (TETE, AltAz, EarthLocation, get_body, get_sun,
                                 solar_system_ephemeris)
from astropy.time import Time
from astropy.utils import iers


class Jobs:
    def __init__(self, names, latitude, longitude, de_file, kernel):
        iers.conf.auto_download = False
        iers.conf.iers_degraded_accuracy = "ignore"
        solar_system_ephemeris.set(kernel)
        self.names = names
        self.site = EarthLocation(lon=longitude * u.deg, lat=latitude * u.deg)

    def places(self, jd):
        times = Time(jd, format="jd", scale="tt")
        found = [get_body(n, times).transform_to(TETE(obstime=times)) for n in self.names]
        return np.stack([[p.ra.deg for p in found], [p.dec.deg for p in found]])

    def horizon(self, jd):
        times = Time(jd, format="jd", scale="tt")
        moon = get_body("moon", times, self.site)
        moon = moon.transform_to(AltAz(obstime=times, location=self.site))
        return np.stack([moon.az.deg, moon.alt.deg])

    def sunrises(self, start, end):
        """There is no search: altitudes every five minutes, and a line between two of them."""
        times = np.arange(start, end, 300, dtype="M8[s]")
        stamps = Time(times.astype(str), scale="utc")
        frame = AltAz(obstime=stamps, location=self.site)
        height = get_sun(stamps).transform_to(frame).alt.deg + 50 / 60
        at = np.flatnonzero((height[:-1] < 0) & (height[1:] >= 0))
        part = -height[at] / (height[at + 1] - height[at])
        return times[at].astype("M8[us]") + (part * 300e6).astype("m8[us]")
