// Positions of the planets and the Moon by Chebyshev polynomials fitted to the built-in
// theories window by window, as the windows are asked for. An integration asks for each many
// times, at nearby instants, and the series of a theory cost a hundred times as much.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "core/linalg.h"
#include "ephemeris/integrator/massive_bodies.h"

namespace solsys {

// One user, one thread.
class PlanetWindows {
  public:
    // The heliocentric position of a planet (kMercury to kPluto; kEarth: the barycentre of
    // Earth and Moon) or the geocentric one of the Moon on the J2000 equator [au], to about
    // 1e-10 au of the theory (the Earth: 1e-8; the giants and Pluto: 1e-7). The instant is day
    // + offset, both counted from J2000 TDB [day]; what is small belongs into the offset. False
    // outside the theories.
    bool position(MassiveBody body, double day, double offset, Vec3& out);
    // The same with the velocity [au/day].
    bool state(MassiveBody body, double day, double offset, State& out);

  private:
    struct Window {
        double middle = 0;  // day from J2000
        std::vector<Vec3> terms;
        bool known = false;
    };
    struct Body {
        std::unordered_map<long, Window> windows;
        const Window* recent = nullptr;
        long recent_index = 0;
    };

    const Window& window(MassiveBody body, long index);
    static void fit(MassiveBody body, long index, Window& made);
    const Window* window_at(MassiveBody body, double day, double offset, double& x);

    std::array<Body, kPluto + 1> bodies_;
};

}  // namespace solsys
