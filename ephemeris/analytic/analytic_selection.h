// How much of the complete tables in data/planets the library carries: change a number here
// and build again.
//
// A row of a planet's series is kept if it is larger than `near_span` anywhere in 1600-2200 or
// larger than `long_span` anywhere in -2000-3000 (amplitude times |t|^power, au). The values
// below add to the complete series, as seen from the Sun, at most
//     0.1 arcsec (Mercury 0.113, Venus 0.107) in 1600-2200, and 1.0 arcsec in -2000-3000
// (vector difference over distance at 20000 instants of each span); seen from the Earth at an
// inner conjunction Venus is off by up to 0.38 arcsec.
#pragma once

namespace solsys {

struct PlanetSelection {
    double near_span;  // au
    double long_span;  // au
};

constexpr PlanetSelection kMercurySelection{4.46e-9, 7.21e-8};  //  764 of 6359 rows
constexpr PlanetSelection kVenusSelection{1.98e-8, 3.12e-7};    //  426 of 2357
constexpr PlanetSelection kEarthSelection{2.16e-8, 2.56e-7};    //  652 of 3538
constexpr PlanetSelection kMarsSelection{2.04e-8, 2.37e-7};     // 1588 of 7073
constexpr PlanetSelection kJupiterSelection{9.37e-8, 1.21e-6};  // 1550 of 4434
constexpr PlanetSelection kSaturnSelection{1.56e-7, 1.23e-6};   // 2609 of 7512

// Farthest times of the two spans from J2000 [Julian millennia].
constexpr double kNearSpan = 0.4;
constexpr double kLongSpan = 4.0;

// Terms of the Moon smaller than this four centuries from J2000 are left out [arcsec]: 2773 of
// 35901 stay. Adds at most 0.14 arcsec in 1600-2200 and 1.4 arcsec in -2000-3000.
constexpr double kMoonSelection = 0.00153;

}  // namespace solsys
