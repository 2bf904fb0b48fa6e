// What moves a small body: the Sun with its relativity, the planets, the Moon, Ceres, Pallas
// and Vesta, the Earth's oblateness close to it, and the forces that are not gravity.
#pragma once

#include <optional>
#include <vector>

#include "ephemeris/integrator/perturbers.h"
#include "solsys/integrator.h"

namespace solsys {

// The acceleration by a point of mass gm that lies at `towards` from here.
inline Vec3 attraction(double gm, Vec3 towards) {
    const double d2 = dot(towards, towards);
    return (gm / (d2 * std::sqrt(d2))) * towards;
}

// The Sun's attraction on a heliocentric state, with the Schwarzschild term in harmonic
// coordinates. Petit & Luzum 2010, IERS Conventions, equation 10.12 (beta = gamma = 1).
Vec3 about_the_sun(const State& state);

// Forces other than gravity on a heliocentric state. Marsden, Sekanina & Yeomans 1973, Astron.
// J. 78, 211.
Vec3 not_gravity(const SmallForces& forces, const State& state);

// The Earth's oblateness (J2) on a place relative to its centre, its axis taken as that of
// J2000.
Vec3 earth_oblateness(Vec3 r);

// Bodies without mass among the massive ones, all about the Sun or all about one planet or the
// Moon; the axes are those of J2000.
class SmallBodyForce final : public Force {
  public:
    // `epoch_day`: time 0, from J2000 TDB [day]. `centre`: kTheSun, a planet or the Moon.
    SmallBodyForce(Perturbers& perturbers, double epoch_day, MassiveBody centre,
                   const SmallForces& forces, int bodies);

    // A body that starts beside a massive asteroid and with its speed is that asteroid: it does
    // not attract itself. Call with the state about the centre, before integrating.
    void tell_apart(const double* start);

    // The Sun from the origin of the coordinates at a time: the coordinates of what goes about
    // the Sun are counted from its barycentre with Mercury (see Perturbers::sun_sway). Zero
    // about other centres. False outside the ephemeris.
    bool origin(double t, State& sun);

    // What the last collision was with.
    [[nodiscard]] std::optional<MassiveBody> hit() const { return hit_; }

    bool prepare(double t, std::span<const double> offsets) override;
    bool evaluate(int node, const double* x, const double* v, double* f) override;

  private:
    struct Node {
        MassivePositions at;  // about the centre
        Vec3 centre{};        // about the Sun
        Vec3 of_centre{};     // acceleration of the centre by the others
        double day = 0, offset = 0;
    };

    bool prepare(Node& node);
    bool near_earth(Node& node, Vec3 r);
    bool accelerate(Node& node, const State& state, Vec3& out);

    Perturbers& perturbers_;
    double epoch_day_;
    MassiveBody centre_;
    SmallForces forces_;
    bool pushed_;
    std::size_t bodies_;
    std::array<double, kMassiveBodies> gm_ = kMassiveGm;  // 0: does not attract
    std::array<Node, radau::kTerms + 1> nodes_;
    std::optional<MassiveBody> hit_;
};

// The acceleration of a state about a centre at an instant; none where the force is not
// defined.
std::optional<Vec3> acceleration(Perturbers& perturbers, MassiveBody centre, Instant t,
                                 const State& state);

}  // namespace solsys
