// Visual magnitudes of the planets by Mallama & Hilton 2018, Astronomy and Computing 25, 10.
#pragma once

namespace solsys {

// How a planet stands to the Sun and to its observer. What a law does not ask for may stay 0.
struct PlanetAspect {
    double r = 0, delta = 0;      // from the Sun, from the observer [au]
    double phase_deg = 0;         // angle Sun - planet - observer
    double sun_latitude_deg = 0;  // sub-solar, planetocentric (Saturn), planetographic (Uranus)
    double observer_latitude_deg = 0;  // sub-observer, likewise
    double meridian_deg = 0;  // Mars: mean of the west longitudes below Sun and observer
    double season_deg = 0;    // Mars: areocentric longitude of the Sun
    double year = 2000;       // Neptune: decimal calendar year
};

constexpr double kSunMagnitude2018 = -26.74;  // at 1 au

// Planets 1 to 8. Beyond the reach of a law the nearest one serves: Saturn with its rings,
// known up to 6.5 degrees of phase and 27 of latitude, is taken as the globe alone beyond that
// phase and as at 27 degrees beyond that latitude; Neptune before 2000 without its phase.
double planet_magnitude_2018(int planet, const PlanetAspect& aspect);

// Saturn without its rings.
double saturn_globe_magnitude_2018(const PlanetAspect& aspect);

}  // namespace solsys
