#include "solsys/reduction.h"

#include <algorithm>

#include "ephemeris/analytic/analytic_theory.h"
#include "ephemeris/de/state.h"
#include "ephemeris/planet_states.h"
#include "frames/tdb.h"
#include "solsys/de_ephemeris.h"
#include "solsys/time_scales.h"

namespace solsys {
namespace {

constexpr short kEarthInFile = 3, kMoonInFile = 10, kSunInFile = 11;
constexpr double kFirstUtcMjd = 36934;  // 1960 January 1

Instant later(Instant t, double seconds) {
    return {t.day, t.fraction + seconds / kSecondsPerDay};
}

bool in_file(DE_EvalState& file, short body, Instant t, State& out) {
    double s[6];
    if (de_state(file, t, body, true, s) != 0) return false;
    out = load_state(s);
    return true;
}

}  // namespace

EarthTurn earth_turn_at(const EarthInputs& inputs, Instant tt) {
    EarthTurn turn;
    const Instant utc = inputs.leap_seconds.utc_from_tt(tt);
    const double mjd = mjd_of(utc);
    const bool has_value = inputs.ut1_minus_utc && mjd >= kFirstUtcMjd;
    if (inputs.pole) turn.pole = *inputs.pole;
    if (const auto row = inputs.table.at(mjd, inputs.leap_seconds)) {
        turn.ut1_minus_utc = row->ut1_minus_utc;
        turn.pole = {row->x * kArcsec, row->y * kArcsec};
        turn.source = EARTH_ORIENTATION_TABLE;
    } else if (has_value || inputs.pole) {
        turn.ut1_minus_utc = has_value ? *inputs.ut1_minus_utc : 0.0;
        turn.source = EARTH_ORIENTATION_VALUE;
    }
    turn.ut1 = turn.source == EARTH_ORIENTATION_TABLE || has_value
                   ? later(utc, turn.ut1_minus_utc)
                   : later(tt, -ET_UT::Get(tt.day, tt.fraction));
    return turn;
}

Mat3 tod_from_itrs(const EarthTurn& turn, Instant tt, double equation_of_origins) {
    const double gst = greenwich_sidereal_time(turn.ut1, equation_of_origins);
    return rotate_z(-gst) * transpose(polar_motion_matrix(turn.pole, tt));
}

// Summed once a day: within it the largest term, of a year, leaves 1e-9 s of a straight line.
Instant Reduction::dynamical(Instant tt) {
    if (tt.day != day_) {
        const Instant noon{tt.day, 0.0}, next{tt.day, 1.0};
        offset_ = tdb_minus_tt(noon) / kSecondsPerDay;
        slope_ = tdb_minus_tt(next) / kSecondsPerDay - offset_;
        day_ = tt.day;
    }
    return {tt.day, tt.fraction + (offset_ + slope_ * tt.fraction)};
}

void Reduction::take_frames(const FrameSet& frames, bool on_earth) {
    equation_of_origins_ = frames.equation_of_origins;
    cur_from_tod_ = on_earth ? kIdentity : transpose(frames.tod_from_mod);
}

Mat3 Reduction::cur_from_earth(Instant tt) const {
    return cur_from_tod_ * tod_from_itrs(earth_turn_at(earth, tt), tt, equation_of_origins_);
}

Mat3 ecliptic_of(const Bodies& bodies) {
    return bodies.modern != nullptr ? bodies.modern->ecl2k_from_gcrs : bodies.ecl2k_from_j2000;
}

bool exact_state(const Reduction& reduction, const StateSource& source, Instant tdb,
                 State& out) {
    if (reduction.file == nullptr || source.object == nullptr) return false;
    const auto [type, number] = source.body;
    const bool planet = type == SSO_PLNT && number >= 1 && number <= kPlutoNumber;
    const bool moon = type == SSO_MOON && number == kMoonNumber;
    return (planet || moon) && source.object->GetIntegrator() == nullptr &&
           exact_state_in_file(*reduction.file, number, tdb, out);
}

bool exact_state_in_file(DE_EvalState& file, int body, Instant t, State& out) {
    if (body != kMoonNumber) return in_file(file, static_cast<short>(body), t, out);
    State earth{};
    State moon{};
    if (!in_file(file, kEarthInFile, t, earth) || !in_file(file, kMoonInFile, t, moon))
        return false;
    out = earth + moon;
    return true;
}

State barycentric_sun(DE_EvalState* file, Instant t) {
    State sun{};
    if (file == nullptr || !in_file(*file, kSunInFile, t, sun))
        analytic_sun_barycentric(t, sun);
    return sun;
}

DeflectingBodies bodies_around(const State& observer, const State& jupiter, const State& saturn,
                               bool on_earth) {
    DeflectingBodies bodies{{DeflectingBody{Deflector::kSun, observer.r, {}},
                             {Deflector::kJupiter, observer.r - jupiter.r, jupiter.v},
                             {Deflector::kSaturn, observer.r - saturn.r, saturn.v}},
                            on_earth};
    std::sort(bodies.farthest_first.begin(), bodies.farthest_first.end(),
              [](const DeflectingBody& a, const DeflectingBody& b) {
                  return dot(a.to_observer, a.to_observer) > dot(b.to_observer, b.to_observer);
              });
    return bodies;
}

}  // namespace solsys
