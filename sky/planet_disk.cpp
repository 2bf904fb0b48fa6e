#include "sky/planet_disk.h"

#include "core/angles.h"
#include "sky/units.h"

namespace solsys::sky {

PlanetDisk::PlanetDisk(CSWSolSys& model, const SSO_ID& planet) {
    double flattening = 0;
    const double radius = model.GetRadiEq(planet, &flattening);
    if (radius > 0) per_radius_ = kAuKm / radius;
    stretch_ = 1 / (1 - flattening) - 1;
    double axes[3];
    if (model.GetPolarAxes(planet, axes)) pole_ = direction(axes[0], axes[1]);
}

Sight from_earth(const diary::Apparent& planet, const diary::Apparent& satellite,
                 const PlanetDisk& disk) {
    return {disk.stretched(-planet.path), disk.stretched(satellite.path - planet.path)};
}

Sight from_sun(const diary::GeocentricSky& sky, const diary::Apparent& planet,
               const diary::Apparent& satellite, const PlanetDisk& disk) {
    const Vec3 sun = -(sky.earth().r + planet.path);
    const Vec3 apart = satellite.path - planet.path;
    // Light from the one to the other, along the Sun's direction [day]; positive: the satellite
    // is on the near side.
    const double passage = kLightDaysPerAu * dot(apart, sun) / norm(sun);
    const double later = kLightDaysPerAu * (satellite.distance - planet.distance);
    const Vec3 shift = passage > 0 ? (later - passage) * satellite.velocity
                                   : (later - passage) * planet.velocity;
    return {disk.stretched(sun), disk.stretched(apart + shift)};
}

}  // namespace solsys::sky
