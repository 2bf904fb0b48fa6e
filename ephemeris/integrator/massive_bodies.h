// The bodies whose attraction moves small ones: masses and radii.
#pragma once

#include <array>
#include <cstddef>

#include "core/constants.h"

namespace solsys {

// In the order of every table here. The Sun stands last; it is a perturber when a body is
// integrated about a planet.
enum MassiveBody : std::size_t {
    kMercury,
    kVenus,
    kEarth,
    kTheMoon,
    kMars,
    kJupiter,
    kSaturn,
    kUranus,
    kNeptune,
    kPluto,
    kCeres,
    kPallas,
    kVesta,
    kTheSun,
    kMassiveBodies
};

constexpr double kEarthOverMoon = 81.3005678;  // masses
constexpr double kMoonShare = 1 / (1 + kEarthOverMoon);

// GM [au^3/day^2]; planets from Mars outwards with their satellites.
// Luzum et al. 2011, Celest. Mech. Dyn. Astr. 110, 293 (ratios to the Sun); Standish 1998, JPL
// IOM 312.F-98-048 (the asteroids, DE405).
constexpr std::array<double, kMassiveBodies> kMassiveGm = [] {
    constexpr double kEarthAndMoon = kGaussSquared / 328900.5596153;
    return std::array<double, kMassiveBodies>{kGaussSquared / 6023600,
                                              kGaussSquared / 408523.719,
                                              kEarthAndMoon / (1 + 1 / kEarthOverMoon),
                                              kEarthAndMoon / (1 + kEarthOverMoon),
                                              kGaussSquared / 3098703.59,
                                              kGaussSquared / 1047.348644,
                                              kGaussSquared / 3497.9018,
                                              kGaussSquared / 22902.98,
                                              kGaussSquared / 19412.26,
                                              kGaussSquared / 136566000,
                                              1.390787378942278e-13,
                                              2.959122082855911e-14,
                                              3.846858707712684e-14,
                                              kGaussSquared};
}();

// Of the mass of the Sun and Mercury.
constexpr double kMercuryShare =
    kMassiveGm[kMercury] / (kMassiveGm[kMercury] + kMassiveGm[kTheSun]);

// Mean radii [km], where a motion ends. Archinal et al. 2011, Celest. Mech. Dyn. Astr. 109,
// 101.
constexpr std::array<double, kMassiveBodies> kMassiveRadiusKm{
    2439.7, 6051.8, 6371.0, 1737.4, 3389.5, 69911, 58232,
    25362,  24622,  1195,   469.7,  256,    262.7, 696000};

}  // namespace solsys
