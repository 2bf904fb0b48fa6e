// Source: Bretagnon & Francou 1988, Astron. Astrophys. 202, 309.
#include "ephemeris/analytic/vsop87a.h"

#include "core/constants.h"
#include "core/linalg.h"
#include "ephemeris/analytic/series_sum.h"
#include "ephemeris/analytic/vsop87a_table.h"

namespace solsys {
namespace {

constexpr Vsop87Row kMercury[] = {
#include "vsop87a_mercury.inc"
};
constexpr Vsop87Row kVenus[] = {
#include "vsop87a_venus.inc"
};
constexpr Vsop87Row kEarth[] = {
#include "vsop87a_earth.inc"
};
constexpr Vsop87Row kMars[] = {
#include "vsop87a_mars.inc"
};
constexpr Vsop87Row kJupiter[] = {
#include "vsop87a_jupiter.inc"
};
constexpr Vsop87Row kSaturn[] = {
#include "vsop87a_saturn.inc"
};
constexpr Vsop87Row kSun[] = {
#include "sun_barycentric_series.inc"
};
constexpr PlanetSelection kWhole{0, 0};

// By planet number; the Sun, from the barycentre, at 0.
constexpr SeriesView kSeries[] = {
    Vsop87Table<kSun, kWhole>::kPacked.view(),
    Vsop87Table<kMercury, kMercurySelection>::kPacked.view(),
    Vsop87Table<kVenus, kVenusSelection>::kPacked.view(),
    Vsop87Table<kEarth, kEarthSelection>::kPacked.view(),
    Vsop87Table<kMars, kMarsSelection>::kPacked.view(),
    Vsop87Table<kJupiter, kJupiterSelection>::kPacked.view(),
    Vsop87Table<kSaturn, kSaturnSelection>::kPacked.view(),
};

// From the dynamical ecliptic and equinox J2000 of the theory to the equator and equinox of
// J2000 (FK5), as printed with it; within 0.02 arcsec of ICRS for Mercury to Mars.
constexpr Mat3 kEquatorFromEcliptic{{1.000000000000, 0.000000440360, -0.000000190919},
                                    {-0.000000479966, 0.917482137087, -0.397776982902},
                                    {0.000000000000, 0.397776982902, 0.917482137087}};

constexpr double kDaysPerMillennium = 10 * kDaysPerJulianCentury;

State evaluate(const SeriesView& series, double days, bool with_velocity) {
    const SeriesSum sum = sum_series(series, days / kDaysPerMillennium, with_velocity);
    return kEquatorFromEcliptic *
           State{load(sum.value), (1 / kDaysPerMillennium) * load(sum.rate)};
}

}  // namespace

State vsop87a_planet(int planet, double days, bool with_velocity) {
    return evaluate(kSeries[planet], days, with_velocity);
}

State sun_from_barycentre(double days, bool with_velocity) {
    return evaluate(kSeries[0], days, with_velocity);
}

}  // namespace solsys
