// Apparent places from the Earth's centre, good for the seconds of an almanac and smooth enough
// to be differentiated: the light time is converged to rounding, where the model's own
// iteration stops at 2e-6 day, and the frames of date are the IAU 2006 precession with the 106
// terms of the IAU 1980 nutation (0.01 arcsec from the IAU 2000A one), where the model's
// nutation has two terms: by them an equinox would come 10 s, a station an hour off.
#pragma once

#include <cstdint>
#include <vector>

#include "core/linalg.h"
#include "solsys/solar_system.h"
#include "solsys/stars.h"

namespace solsys::diary {

// What a search follows: a body of the model, or a star.
struct Target {
    SSO_ID id;
    const StarObject* star = nullptr;
};

struct Apparent {
    Vec3 direction{};     // unit vector, J2000 equator; NaN when it cannot be computed
    double distance = 0;  // that the light travelled [au]
    Vec3 path{};          // along which it came, aberration left out [au]; unset for stars
    Vec3 velocity{};      // of the body when the light left, heliocentric [au/day]
};

inline const SSO_ID kSun{SSO_PLNT, 10};
inline const SSO_ID kEarth{SSO_PLNT, 3};
inline const SSO_ID kMoon{SSO_MOON, 301};

// Moves a model from instant to instant (JD TT), without its frames and its observer.
class GeocentricSky {
  public:
    explicit GeocentricSky(CSWSolSys& model) : model_(model) {}

    // Everything below then holds for this instant. What it asks of the model is not computable
    // when the date is no instant.
    void at(double jd_tt);
    // The same, but the frames stay those of the last `at`.
    void at_in_same_frames(double jd_tt);

    Apparent apparent(const Target& target);
    Apparent sun() const;
    // A body, or a star, as seen from a place beside the Earth's centre [au, J2000 equator].
    [[nodiscard]] Apparent seen_from(const Apparent& body, Vec3 offset) const;
    // Geometric heliocentric state, J2000 equator [au, au/day]; NaN when it cannot be computed.
    State heliocentric(const SSO_ID& id);

    // J2000 equator to the true equator of date, and to the ecliptic and true equinox of date.
    [[nodiscard]] const Mat3& equator() const { return equator_; }
    [[nodiscard]] const Mat3& ecliptic() const { return ecliptic_; }
    // Apparent less mean sidereal time [rad].
    [[nodiscard]] double equation_of_equinoxes() const { return equation_of_equinoxes_; }
    [[nodiscard]] const State& earth() const { return earth_; }
    [[nodiscard]] CSWSolSys& model() const { return model_; }

  private:
    State retarded(const SSO_ID& id, double light_time);
    double& light_time(const SSO_ID& id);

    struct LightTime {
        std::int32_t type, number;
        double days;
    };
    CSWSolSys& model_;
    double jd_ = 0;
    State earth_{};
    Vec3 beta_{};
    double reciprocal_lorentz_ = 1;
    Mat3 equator_ = kIdentity;
    Mat3 ecliptic_ = kIdentity;
    double equation_of_equinoxes_ = 0;
    std::vector<LightTime>
        light_times_;  // of the few bodies of a search, from the last instant
};

}  // namespace solsys::diary
