// Which theory serves which satellite of Saturn.
#include "ephemeris/satellites/precessing_ellipse.h"
#include "ephemeris/satellites/theories.h"
#include "solsys/satellite_theory.h"

using namespace solsys;
using namespace solsys::satellites;

namespace {

constexpr int kSystem = 6;
constexpr int kFirstTableMoon = 19;
constexpr int kLastMoon = 83;
constexpr int kAtlas = 15;

// The ellipse of Atlas was determined in 1981. Its mean motion is too small: this one [rad/day]
// joins the longitude of 1981 to that of an osculating orbit of 2017.
constexpr double kAtlasMeanMotion = 6.924925590e-3 * kDegree * kSecondsPerDay;

int inner_state(int moon, Instant t, State& state) {
    PrecessingEllipse ellipse = *find_ellipse(kSystem * 100 + moon);
    if (moon == kAtlas) ellipse.mean_motion = kAtlasMeanMotion;
    return ellipse_state(ellipse, t, state);
}

int own_state(int moon, Instant t, State& state) {
    if (moon <= 8) return tass_state(moon, t, state);
    if (moon == 9) return phoebe_state(t, state);
    if (moon >= 12 && moon <= 14) return htc_state(moon, t, state);
    return inner_state(moon, t, state);
}

}  // namespace

// Saturn alone, 37931207 km^3/s^2.
SaturnSat::SaturnSat() : primary_gm_(37931207.0 * kSecondsPerDay * kSecondsPerDay * km3ToAU3) {}

int SaturnSat::GetSatVector(int day, double fraction, int moonNumber,
                            unsigned char velocityWanted, double* out) const {
    const int moon = moonNumber % 100;
    if (moon < 1 || moon > kLastMoon) return SAT_NOT_COVERED;
    if (moon >= kFirstTableMoon)
        return EvalMeanElements(kSystem, day, fraction, moon - kFirstTableMoon, velocityWanted,
                                out);
    return answer({day, fraction}, out,
                  [&](Instant t, State& state) { return own_state(moon, t, state); });
}

double SaturnSat::GetPrimaryGM(int moonNumber) const {
    if (moonNumber < 1) return -1.0;
    if (moonNumber < kFirstTableMoon) return primary_gm_;
    return MeanElementsGM(kSystem, moonNumber - kFirstTableMoon);
}
