#include "ephemeris/tle/element_set.h"

#include <algorithm>

#include "core/constants.h"
#include "ephemeris/tle/teme.h"
#include "solsys/time_scales.h"

namespace solsys {
namespace {

constexpr double kMinutesPerDay = 1440;
constexpr double kKmPerAu = 149597870.7;

}  // namespace

double PreparedElements::minutes_at(Instant utc) const {
    return ((utc.day - set.c.epoch_day) + (utc.fraction - set.c.epoch_fraction)) *
           kMinutesPerDay;
}

double PreparedElements::period_minutes() const { return kTwoPi / set.c.n0; }

int PreparedElements::teme_state(double minutes, double* state) const {
    ResonanceState<double> resonance{};
    return teme_state(minutes, resonance, state);
}

int PreparedElements::teme_state(double minutes, ResonanceState<double>& resonance,
                                 double* state) const {
    double found[6];
    const int code = sgp4_state(set.kind, set.c, minutes, resonance, found);
    if (code == TLE_OK || code == TLE_DECAYED) std::copy_n(found, 6, state);
    return code;
}

int PreparedElements::j2000_state(Instant tt, ResonanceState<double>& resonance,
                                  State& state) const {
    const Instant utc{tt.day, tt.fraction - ET_UT::Get(tt.day, tt.fraction) / kSecondsPerDay};
    double km[6];
    const int code = teme_state(minutes_at(utc), resonance, km);
    if (code != TLE_OK && code != TLE_DECAYED) return code;
    const State teme{1 / kKmPerAu * load(km), kSecondsPerDay / kKmPerAu * load(km + 3)};
    state = j2000_from_teme(tt) * teme;
    return code;
}

std::optional<PreparedElements> prepared(const TLERecord& record,
                                         const GravityConstants& gravity, Sgp4Mode mode) {
    const MeanElements elements{{record.epochDay, record.epochFraction},
                                record.meanMotion,
                                record.eccentricity,
                                record.inclination * kDegree,
                                record.node * kDegree,
                                record.perigee * kDegree,
                                record.meanAnomaly * kDegree,
                                record.bstar};
    const auto set = sgp4_set(elements, gravity, mode);
    if (!set) return std::nullopt;
    return PreparedElements{*set};
}

}  // namespace solsys
