#!/usr/bin/python3
"""Central lines and local contacts of solar eclipses from published Besselian elements.

Reads data/reference/besselian_elements.csv; writes data/reference/central_lines.csv and
data/reference/local_contacts.csv. Plain vector geometry on the ellipsoid and bisection: no
formula of the fundamental plane's own coordinates for the flattened Earth is used.
"""
import math
from pathlib import Path

DATA = Path(__file__).resolve().parents[2] / "data" / "reference"
E2 = 0.00669437999014  # WGS 84
RAD = math.pi / 180
# name, latitude, longitude east [deg]; sea level.
SITES = {
    "1999-08-11": [("Reims", 49.2577, 4.0317), ("Stuttgart", 48.7758, 9.1829),
                   ("Bucharest", 44.4268, 26.1025), ("London", 51.5072, -0.1276)],
    "2017-08-21": [("Salem", 44.9429, -123.0351), ("Nashville", 36.1627, -86.7816),
                   ("Charleston", 32.7765, -79.9311), ("New York", 40.7128, -74.0060)],
    "2024-04-08": [("Torreon", 25.5428, -103.4068), ("Dallas", 32.7767, -96.7970),
                   ("Cleveland", 41.4993, -81.6944), ("Houston", 29.7604, -95.3698)],
}


def rows(path):
    lines = [line.rstrip("\n") for line in open(path) if not line.startswith("#")]
    names = lines[0].split(",")
    return [dict(zip(names, line.split(","))) for line in lines[1:]]


class Shadow:
    def __init__(self, row):
        self.row = row
        self.f1, self.f2 = float(row["tan_f1"]), float(row["tan_f2"])

    def poly(self, name, t, unit=""):
        value, n = 0.0, 3
        while n >= 0:
            value = value * t + float(self.row.get(f"{name}{n}{unit}", 0) or 0)
            n -= 1
        return value

    def frame(self, t):
        """Unit vectors east, north and along the axis, in axes of the TD meridian."""
        d, mu = self.poly("d", t, "_deg") * RAD, self.poly("mu", t, "_deg") * RAD
        a = (math.cos(d) * math.cos(mu), -math.cos(d) * math.sin(mu), math.sin(d))
        i = (math.sin(mu), math.cos(mu), 0.0)
        j = (a[1] * i[2] - a[2] * i[1], a[2] * i[0] - a[0] * i[2], a[0] * i[1] - a[1] * i[0])
        return i, j, a

    def ground(self, t):
        """Where the axis meets the ellipsoid, or None."""
        i, j, a = self.frame(t)
        x, y = self.poly("x", t), self.poly("y", t)
        p = [x * i[k] + y * j[k] for k in range(3)]
        w = (1, 1, 1 / (1 - E2))
        qa = sum(w[k] * a[k] * a[k] for k in range(3))
        qb = sum(w[k] * a[k] * p[k] for k in range(3))
        qc = sum(w[k] * p[k] * p[k] for k in range(3)) - 1
        root = qb * qb - qa * qc
        if root < 0:
            return None
        s = (-qb + math.sqrt(root)) / qa
        return [p[k] + s * a[k] for k in range(3)]

    def outside(self, place, t, cone):
        """Distance of a place from the axis less the radius of a cone."""
        i, j, a = self.frame(t)
        xi, eta, zeta = (sum(place[k] * v[k] for k in range(3)) for v in (i, j, a))
        m = math.hypot(self.poly("x", t) - xi, self.poly("y", t) - eta)
        if cone == 1:
            return m - (self.poly("l1_", t) - zeta * self.f1)
        return m - abs(self.poly("l2_", t) - zeta * self.f2)

    def passage(self, place, start, cone):
        """When the cone comes over a place and leaves it, around a time inside."""
        found = []
        for step in (-0.01, 0.01):
            t = start
            while self.outside(place, t + step, cone) < 0:
                t += step
            inner, outer = t, t + step
            for _ in range(60):
                middle = (inner + outer) / 2
                if self.outside(place, middle, cone) < 0:
                    inner = middle
                else:
                    outer = middle
            found.append(inner)
        return found


def geodetic(p):
    return (math.degrees(math.atan2(p[2], (1 - E2) * math.hypot(p[0], p[1]))),
            math.degrees(math.atan2(p[1], p[0])))


def place_of(lat, lon):
    n = 1 / math.sqrt(1 - E2 * math.sin(lat * RAD) ** 2)
    return (n * math.cos(lat * RAD) * math.cos(lon * RAD),
            n * math.cos(lat * RAD) * math.sin(lon * RAD), (1 - E2) * n * math.sin(lat * RAD))


def main():
    table = [Shadow(row) for row in rows(DATA / "besselian_elements.csv")
             if 2342337 < float(row["t0_jd_td"]) < 2524959]
    head = ("# From the published elements of besselian_elements.csv by tools/reference/"
            "eclipse_ground.py: vector geometry on WGS 84.\n")
    with open(DATA / "central_lines.csv", "w") as out:
        out.write(head + "# Where the axis meets the ground. longitude_td_deg: east of the meridian "
                  "that turns with TD (add 0.00417807 degrees\n# per second of Delta T). duration_s: "
                  "of totality or annularity there.\ndate,jd_td,latitude_deg,longitude_td_deg,"
                  "duration_s\n")
        for s in table:
            for t in (-1.5, -1.0, -0.5, 0.0, 0.5, 1.0, 1.5):
                p = s.ground(t)
                if p is None:
                    continue
                first, last = s.passage(p, t, 2)
                jd = float(s.row["t0_jd_td"]) + t / 24
                lat, lon = geodetic(p)
                out.write(f"{s.row['date']},{jd:.9f},{lat:.6f},{lon:.6f},"
                          f"{(last - first) * 3600:.3f}\n")
    with open(DATA / "local_contacts.csv", "w") as out:
        out.write(head + "# Contacts [JD TD], for Delta T of the elements (delta_t_s). Empty: none.\n"
                  "date,delta_t_s,site,latitude_deg,longitude_deg,first,second,third,fourth\n")
        for s in table:
            delta_t = float(s.row["delta_t_s"])
            for name, lat, lon in SITES.get(s.row["date"], []):
                place = place_of(lat, lon - 0.00417807 * delta_t)
                times = min((s.outside(place, k / 500, 1), k / 500) for k in range(-1500, 1501))
                t0 = float(s.row["t0_jd_td"])
                outer = s.passage(place, times[1], 1)
                best = min((s.outside(place, times[1] + k / 5000, 2), times[1] + k / 5000)
                           for k in range(-500, 501))
                inner = s.passage(place, best[1], 2) if best[0] < 0 else None
                cells = [f"{t0 + h / 24:.9f}" if h is not None else "" for h in
                         (outer[0], *(inner or (None, None)), outer[1])]
                out.write(f"{s.row['date']},{delta_t},{name},{lat},{lon}," + ",".join(cells) + "\n")


main()
