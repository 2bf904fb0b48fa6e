// Positions of the planets and the Moon by Chebyshev polynomials fitted to their ephemeris
// window by window, as the windows are asked for. An integration asks for each many times, at
// nearby instants, and needs them smooth: the series of a theory cost a hundred times as much,
// and a file is read at instants rounded to 40 microseconds.
#pragma once

#include <array>
#include <unordered_map>
#include <vector>

#include "core/instant.h"
#include "core/linalg.h"
#include "ephemeris/integrator/massive_bodies.h"
#include "solsys/de_ephemeris.h"

namespace solsys {

// One user, one thread.
class PlanetWindows {
  public:
    // From the DE file that the process has open, where it reaches, and the built-in theories;
    // or from these alone.
    explicit PlanetWindows(bool file) : use_file_(file) {}

    // The heliocentric position of a planet (kMercury to kPluto) or the geocentric one of the
    // Moon on the J2000 equator [au], to about 1e-10 au of the ephemeris (the giants and Pluto:
    // 1e-7). The instant is day + offset, both counted from J2000 TDB [day]; what is small
    // belongs into the offset. False outside the ephemeris.
    bool position(MassiveBody body, double day, double offset, Vec3& out);

    // Forgets everything when the process's file has changed. \return whether it had
    bool renew();

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
    bool sample(MassiveBody body, bool from_file, double day, Vec3& out);

    bool use_file_;
    std::uint32_t file_changes_ = 0;
    DE_EvalState file_;
    std::array<Body, kPluto + 1> bodies_;
};

}  // namespace solsys
