// Elliptic orbits of minor planets packed for a look at all of them.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "core/linalg.h"
#include "ephemeris/survey/orbit_kernel.h"

namespace solsys {

// Osculating elements on the ecliptic of J2000.
struct EllipticOrbit {
    double epoch;  // JD TT
    double a, e, i, node, peri, M, n;
};

class OrbitBlocks {
  public:
    // Mean anomalies are held for this Julian date.
    static constexpr double kReference = 2460000.5;

    void add(const EllipticOrbit& orbit);
    [[nodiscard]] std::size_t size() const { return size_; }
    [[nodiscard]] std::span<const OrbitBlock> blocks() const { return blocks_; }

  private:
    std::vector<OrbitBlock> blocks_;  // unused lanes of the last repeat its first
    std::size_t size_ = 0;
};

// Places of some blocks on the J2000 equator by the widest kernel of the processor.
void orbit_places(std::span<const OrbitBlock> blocks, double jd_tt, OrbitPlaces* places);

// One orbit at eight instants: `step` days apart, the first at `days` after the reference.
OrbitBlock one_orbit_at(const OrbitBlock& block, std::size_t lane, double step);

inline Vec3 place_of(const OrbitPlaces& places, std::size_t lane) {
    return {places.r[0][lane], places.r[1][lane], places.r[2][lane]};
}

}  // namespace solsys
