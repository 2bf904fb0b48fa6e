// The sky of an observer at an instant: what searches sample.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

#include "core/instant.h"
#include "core/linalg.h"
#include "solsys/solar_system.h"

namespace solsys::search {

// Of what cannot be computed.
inline constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

// Apparent, on the true equator and equinox of date [au, rad].
struct Place {
    double distance = 0;
    double ra = 0;
    double dec = 0;
};

// [rad], without refraction.
struct Horizontal {
    double azimuth = 0;  // from north through east
    double altitude = 0;
};

// Moves a model from instant to instant (JD TT) for the observer that it has, and keeps for
// every object asked for the light time of its last place, with which the next one begins. What
// cannot be computed is empty, or NaN.
class SkyAt {
  public:
    explicit SkyAt(CSWSolSys& model) : model_(model) {}

    // Everything below then holds for this instant. False when the date is none, or the
    // observer's body cannot be computed there.
    bool at(double jd_tt);
    bool at(Instant tt);

    // Asteroids and comets of no table, which the model shows at the Sun, are empty here.
    std::optional<Place> apparent(const SSO_ID& id);
    // Both in one.
    std::optional<Place> apparent(const SSO_ID& id, double jd_tt) {
        return at(jd_tt) ? apparent(id) : std::nullopt;
    }
    // J2000 equator, a unit vector (beyond the reach of light time: the geometric vector) and
    // the distance.
    struct Direction {
        Vec3 u{};
        double distance = 0;
    };
    std::optional<Direction> direction(const SSO_ID& id);

    [[nodiscard]] Horizontal horizontal(const Place& place) const;
    std::optional<Horizontal> horizontal(const SSO_ID& id);
    // Unit vector north, west, zenith.
    std::optional<Vec3> from_horizon(const SSO_ID& id);
    // Sine of the altitude of the centre.
    double sine_of_altitude(const SSO_ID& id);

    // Local apparent sidereal time [rad], any number of turns off.
    [[nodiscard]] double sidereal_time() const;
    // Of the observer [rad].
    [[nodiscard]] double latitude() const { return model_.GetObserver().location[2]; }
    [[nodiscard]] CSWSolSys& model() const { return model_; }

  private:
    double& light_time(const SSO_ID& id);
    [[nodiscard]] double apparent_sidereal_time() const;

    struct LightTime {
        std::int32_t type = 0;
        std::int32_t number = 0;
        double days = 0;  // 0: none known
    };
    CSWSolSys& model_;
    Instant now_{};
    std::array<LightTime, 8> light_times_{};  // of the few objects of a search
    std::size_t next_ = 0;
};

// Apparent radius of a disk [rad]; 0 when its radius is not known (not above 0).
double semidiameter(double radius_km, double distance_au);

}  // namespace solsys::search
