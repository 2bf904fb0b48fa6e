"""Three jobs with solsys."""
import numpy as np

import solsys


class Jobs:
    def __init__(self, names, latitude, longitude, de_file, kernel):
        self.names, self.site = names, (latitude, longitude)
        self.model = solsys.Model(de_file)

    def places(self, jd):
        places = self.model.apparent(self.names, solsys.from_jd(jd, 0, "tt"))
        return np.stack([places.ra_deg, places.dec_deg])

    def horizon(self, jd):
        moon = self.model.horizontal("moon", solsys.from_jd(jd, 0, "tt"), self.site)
        return np.stack([moon.azimuth_deg, moon.altitude_deg])

    def sunrises(self, start, end):
        passed = self.model.passages("sun", start, end, self.site)
        return passed.time[passed.rising]
