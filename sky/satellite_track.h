// A satellite and the Sun over a site, in the frame of the element sets.
#pragma once

#include <optional>
#include <vector>

#include "core/linalg.h"
#include "ephemeris/tle/element_set.h"
#include "events/search/keep_model.h"
#include "solsys/sky/passes.h"

namespace solsys::sky {

constexpr double kEarthRadiusKm = 6378.137;

// The geocentric Sun [km] and UT1 - UTC, from nodes that are asked of the model once.
class SunPath {
  public:
    SunPath(CSWSolSys& model, const Instant& start) : model_(model), start_(start) {}

    struct Place {
        Vec3 sun{};
        double ut1_utc = 0;  // day
    };
    // `t` days after the start.
    Place at(double t);

  private:
    struct Node {
        long number = 0;
        bool known = false;
        Vec3 r{}, v{};  // km, km/day
        double ut1_utc = 0;
    };
    const Node& node(long number);

    CSWSolSys& model_;
    Instant start_;
    std::vector<Node> nodes_;  // by number, in a ring
};

class SatelliteTrack {
  public:
    SatelliteTrack(Model& model, const Site& site, const PreparedElements& elements,
                   const Instant& start);

    // Everything in TEME [km], t days after the start.
    struct Look {
        Vec3 satellite{}, velocity{};  // km, km/s, geocentric
        Vec3 line{};                   // from the site to the satellite
        double gmst = 0;               // rad
        [[nodiscard]] double range() const { return norm(line); }
    };
    // None where the satellite has no state.
    std::optional<Look> look(double t);
    // Sine of the altitude.
    double sine_of_altitude(const Look& look) const { return dot(up(look), unit(look.line)); }
    Vec3 up(const Look& look) const { return turned(up_, look.gmst); }

    // How far the satellite is outside the shadow's edge, as an angle at the Earth's centre
    // [rad]: of the umbra (side -1), of the penumbra (side 1).
    double outside_shadow(const Look& look, double t, int side);
    SatellitePlace view(const Look& look, double t);

    [[nodiscard]] double site_radius() const { return norm(site_); }
    [[nodiscard]] double period_days() const { return elements_.period_minutes() / 1440; }
    void set_standard_magnitude(std::optional<double> m) { standard_magnitude_ = m; }

  private:
    static Vec3 turned(Vec3 fixed, double gmst);

    search::KeepModel keep_;
    SunPath sun_;
    PreparedElements elements_;
    ResonanceState<double> resonance_{};
    Instant start_;
    double first_minute_;
    Vec3 site_, up_, north_, east_;  // Earth-fixed
    std::optional<double> standard_magnitude_;
};

}  // namespace solsys::sky
