#include "ephemeris/planet_states.h"

#include "ephemeris/analytic/analytic_theory.h"
#include "ephemeris/de/open_file.h"

namespace solsys {
namespace {

constexpr short kMoonInFile = 10;  // geocentric

// The velocity of the built-in Moon is a difference over this step [day] ...
constexpr double kMoonStep = 0.00027;
constexpr double kPerMoonStep = 3703.7037037037035;  // ... and its reciprocal [1/day]

bool in_file(DE_EvalState& file, short body, Instant t, bool with_velocity, State& out) {
    double s[6];
    s[3] = s[4] = s[5] = 0.0;
    const short velocities = with_velocity ? 1 : 0;
    if (DE_Ephemeris::getState(file, t.day, t.fraction, body, velocities, s) != 0) return false;
    out = load_state(s);
    return true;
}

}  // namespace

bool planet_state(DE_EvalState* file, int body, Instant t, bool with_velocity, State& out) {
    if (body == kSunNumber) {
        out = State{};
        return true;
    }
    if (body == kMoonNumber) {
        State earth{};
        State moon{};
        if (!planet_state(file, kEarthNumber, t, with_velocity, earth) ||
            !moon_from_earth(file, t, with_velocity, moon)) {
            return false;
        }
        out = earth + moon;
        return true;
    }
    if (body < 1 || body > kPlutoNumber) return false;
    return (file != nullptr &&
            in_file(*file, static_cast<short>(body), t, with_velocity, out)) ||
           analytic_planet(body, t, with_velocity, out);
}

bool moon_from_earth(DE_EvalState* file, Instant t, bool with_velocity, State& out) {
    return (file != nullptr && moon_in_file(*file, t, with_velocity, out)) ||
           moon_by_theory(t, with_velocity, out);
}

bool moon_in_file(DE_EvalState& file, Instant t, bool with_velocity, State& out) {
    return in_file(file, kMoonInFile, t, with_velocity, out);
}

bool moon_by_theory(Instant t, bool with_velocity, State& out) {
    State now{};
    if (!analytic_moon(t, false, now)) return false;
    if (with_velocity) {
        State later{};
        if (!analytic_moon({t.day, t.fraction + kMoonStep}, false, later)) return false;
        now.v = kPerMoonStep * (later.r - now.r);
    }
    out = now;
    return true;
}

std::uint32_t de_file_changes() { return de_file.generation.load(std::memory_order_acquire); }

}  // namespace solsys
