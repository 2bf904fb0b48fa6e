// Where the massive bodies are, for whoever is integrated among them.
#pragma once

#include <array>
#include <memory>

#include "core/instant.h"
#include "ephemeris/integrator/planet_windows.h"
#include "ephemeris/integrator/trajectory.h"
#include "solsys/de_ephemeris.h"

namespace solsys {

// Positions at one instant, relative to the body that the integration goes about. The Sun's own
// place among them counts when that is a planet.
struct MassivePositions {
    std::array<Vec3, kMassiveBodies> r{};
    Vec3 sun{};             // the Sun from its barycentre with Mercury
    Vec3 earth_and_moon{};  // their barycentre
    Vec3 moon_from_earth{};
    bool moon_known = false;
};

// The massive bodies of an ephemeris: the planets and the Moon from it, the great asteroids by
// an integration among these from elements of 2022 (farther than 150 years from then on the
// osculating orbits, to spare long integrations: their pull is 1e-9 of the Sun's). May be
// shared by any number of integrations in one thread; keeps what it has computed.
class Perturbers {
  public:
    // `file`: whether the DE file that the process has open serves, where it reaches.
    explicit Perturbers(bool file);
    ~Perturbers();
    Perturbers(const Perturbers&) = delete;
    Perturbers& operator=(const Perturbers&) = delete;

    // Positions about the Sun at day + offset from J2000 TDB [day], of the planets or of all
    // bodies; the Earth and the Moon both stand at their barycentre. False outside the
    // ephemeris.
    bool planets(double day, double offset, MassivePositions& out);
    bool all(double day, double offset, MassivePositions& out);
    // Puts the Earth and the Moon of `at` where they are.
    bool place_moon(double day, double offset, MassivePositions& at);
    // The Sun from the barycentre of the Sun and Mercury [au, au/day]: what moves about the Sun
    // is integrated about that point. Mercury sways the Sun with a period of 88 days, which
    // steps would have to resolve, and its distant pull on what goes about both is nothing.
    bool sun_sway(double day, double offset, State& out);
    // The state about the Sun of Ceres, Pallas or Vesta.
    bool asteroid(MassiveBody body, double day, State& out);
    // Forgets everything when the process's DE file has changed. \return whether it had
    bool renew();

  private:
    class Asteroids;
    void start_asteroids();
    bool mercury(double day, double offset, State& out);

    bool use_file_;
    std::uint32_t file_changes_ = 0;
    DE_EvalState file_;
    PlanetWindows windows_;  // where the file does not reach
    std::unique_ptr<Asteroids> asteroids_;
};

}  // namespace solsys
