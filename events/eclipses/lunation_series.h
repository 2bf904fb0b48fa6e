// The mean-lunation series that says whether a syzygy can bring an eclipse, and about when.
// Source: Meeus 1979, Astronomical Formulae for Calculators, on the phases of the
// Moon and on eclipses.
#pragma once

namespace solsys::eclipses {

constexpr double kSynodicMonth = 29.53058868;  // day
constexpr double kSeriesEpoch = 2415020;       // JD, lunation 0 follows it

// What the series says of lunation k; full Moons have k + 1/2.
struct Lunation {
    double k = 0;
    double mean = 0;        // mean syzygy [JD ET]
    double sin_f = 0;       // of the Moon's argument of latitude
    double correction = 0;  // true minus mean syzygy [day]
    double u = 0;           // radius of the umbra on the fundamental plane [Earth radii]
    double gamma = 0;       // least distance of the axis [Earth radii]
    double n = 0;           // motion factor of lunar eclipses
};

// Latitude arguments beyond this bring no eclipse.
constexpr double kLargestSinF = 0.36;
// gamma - u beyond this: the penumbra misses the Earth.
constexpr double kSolarLimit = 1.5432;

// Only k, mean and sin_f.
Lunation mean_lunation(double k);
// All of it.
Lunation lunation_series(double k);

// The syzygy nearer to what later theories of the Moon give, some minutes from the true one in
// all of -2000 to 3000 [JD TT]; the series itself is 1.4 hours off at the far end.
double approximate_syzygy(const Lunation& lunation);

}  // namespace solsys::eclipses
