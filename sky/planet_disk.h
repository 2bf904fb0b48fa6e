// A planet's ellipsoid made a unit sphere: which lines of sight meet it.
#pragma once

#include "core/linalg.h"
#include "events/diary/geocentric_sky.h"

namespace solsys::sky {

// Stretched along the axis, the ellipsoid is a sphere, and lines remain lines.
class PlanetDisk {
  public:
    PlanetDisk(CSWSolSys& model, const SSO_ID& planet);

    // Vectors from the planet's centre, J2000 equator [au], to units of its radius.
    [[nodiscard]] Vec3 stretched(Vec3 v) const {
        return per_radius_ * (v + (stretch_ * dot(v, pole_)) * pole_);
    }
    [[nodiscard]] double radius_au() const { return 1 / per_radius_; }

  private:
    Vec3 pole_{0, 0, 1};
    double per_radius_ = 1;
    double stretch_ = 0;  // 1 / (1 - f) - 1
};

// Square of the distance of the origin from the line through two points.
inline double distance_squared(Vec3 a, Vec3 b) {
    const Vec3 along = b - a;
    const Vec3 moment = cross(a, b);
    return dot(moment, moment) / dot(along, along);
}

// A satellite (stretched, from the planet's centre) and what looks at it: the Earth or the Sun.
struct Sight {
    Vec3 from{}, satellite{};
    // Negative with the centre of the satellite before or behind the disk.
    [[nodiscard]] double clearance() const { return distance_squared(from, satellite) - 1; }
    [[nodiscard]] bool in_front() const { return dot(satellite, from) > 0; }
};

// As the Earth sees the two.
Sight from_earth(const diary::Apparent& planet, const diary::Apparent& satellite,
                 const PlanetDisk& disk);
// As the Sun shines on the two: the light that falls on the farther one passed the nearer one
// that much earlier.
Sight from_sun(const diary::GeocentricSky& sky, const diary::Apparent& planet,
               const diary::Apparent& satellite, const PlanetDisk& disk);

}  // namespace solsys::sky
