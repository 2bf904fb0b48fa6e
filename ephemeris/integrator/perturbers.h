// Where the massive bodies are, for whoever is integrated among them.
#pragma once

#include <array>
#include <memory>

#include "ephemeris/integrator/planet_windows.h"
#include "ephemeris/integrator/trajectory.h"

namespace solsys {

// Positions at one instant, relative to the body that the integration goes about. The Sun's own
// place among them counts when that is a planet.
struct MassivePositions {
    std::array<Vec3, kMassiveBodies> r{};
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
    // bodies, the Moon's left out (its place is the Earth's). False outside the ephemeris.
    bool planets(double day, double offset, MassivePositions& out);
    bool all(double day, double offset, MassivePositions& out);
    // Puts the Moon where it is, beside the Earth of `at`.
    bool place_moon(double day, double offset, MassivePositions& at);
    // The state about the Sun of Ceres, Pallas or Vesta.
    bool asteroid(MassiveBody body, double day, State& out);
    // Forgets everything when the process's DE file has changed. \return whether it had
    bool renew();

  private:
    class Asteroids;
    void start_asteroids();

    PlanetWindows windows_;
    std::unique_ptr<Asteroids> asteroids_;
};

}  // namespace solsys
