#include "solsys/moon_age.h"

#include <cmath>
#include <limits>

#include "core/root_finder.h"
#include "ephemeris/lunation.h"
#include "ephemeris/planet_states.h"
#include "solsys/light_time.h"

namespace solsys {
namespace {

constexpr double kPhasePrecision = 1.1574074074074073e-5;  // day

class LunarLongitude {
  public:
    LunarLongitude(const Bodies& bodies, const Mat3& ecl_from_j2000)
        : moon_(bodies.find({SSO_MOON, kMoonNumber})),
          earth_(bodies.find(kEarthKey)),
          ecl_from_j2000_(ecl_from_j2000) {}

    // Apparent ecliptic longitude of the Moon less that of the Sun, seen from the Earth's
    // centre, in [-pi, pi]; NaN when one of them cannot be computed.
    [[nodiscard]] double past_sun(double jd) const {
        Vec3 moon{};
        Vec3 sun{};
        if (!seen_from_earth(&LunarLongitude::moon_at, split(jd), moon) ||
            !seen_from_earth(&LunarLongitude::sun_at, split(jd), sun))
            return std::numeric_limits<double>::quiet_NaN();
        moon = ecl_from_j2000_ * moon;
        sun = ecl_from_j2000_ * sun;
        return std::atan2(sun.x * moon.y - sun.y * moon.x, sun.x * moon.x + sun.y * moon.y);
    }

    // The true new Moon next to a mean one; NaN when it cannot be computed.
    [[nodiscard]] double new_moon(double lunation) const {
        const double mean = mean_phase(lunation);
        const double from = mean - kLargestPhaseInequality;
        const double to = mean + kLargestPhaseInequality;
        if (!(past_sun(from) < 0.0 && past_sun(to) > 0.0))
            return std::numeric_limits<double>::quiet_NaN();
        return zeroin(
            from, to, [this](double jd) { return past_sun(jd); }, kPhasePrecision);
    }

  private:
    using StateAt = bool (LunarLongitude::*)(Instant, Vec3&) const;

    // A body seen from the Earth at t is where it was, relative to the Earth, when the light
    // left it: light time and aberration in one, to (v/c)^2.
    bool seen_from_earth(StateAt state_at, Instant t, Vec3& out) const {
        return (this->*state_at)(t, out) &&
               (this->*state_at)(earlier(t, norm(out) * kLightDayPerAu), out);
    }
    bool moon_at(Instant t, Vec3& out) const {
        double r[3];
        if (moon_ == nullptr || moon_->GetState(t.day, t.fraction, false, r) != SS_OK)
            return false;
        out = load(r);
        return true;
    }
    bool sun_at(Instant t, Vec3& out) const {
        double r[3];
        if (earth_ == nullptr || earth_->ComputeState(t.day, t.fraction, false, r) != SS_OK)
            return false;
        out = -load(r);
        return true;
    }

    SS_Object* moon_;
    SS_Object* earth_;
    Mat3 ecl_from_j2000_;
};

}  // namespace

std::optional<NewMoons> new_moons_around(const Bodies& bodies, Instant t,
                                         const Mat3& ecl_from_j2000) {
    const LunarLongitude longitude(bodies, ecl_from_j2000);
    const double lunation = std::floor(lunation_of(t.jd()));
    NewMoons found{longitude.new_moon(lunation), longitude.new_moon(lunation + 1)};
    if (found.before > t.jd()) {
        found = {longitude.new_moon(lunation - 1), found.before};
    } else if (found.after <= t.jd()) {
        found = {found.after, longitude.new_moon(lunation + 2)};
    }
    if (!(found.before <= t.jd() && t.jd() < found.after)) return std::nullopt;
    return found;
}

}  // namespace solsys
