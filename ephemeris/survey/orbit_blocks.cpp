#include "ephemeris/survey/orbit_blocks.h"

#include <cmath>

#include "core/constants.h"
#include "platform/cpu_features.h"

namespace solsys {
namespace {

constexpr double kObliquity = 84381.448 * kArcsec;  // of J2000, IAU 1976

void store_lane(const EllipticOrbit& orbit, std::size_t lane, OrbitBlock& block) {
    const double M = orbit.M + orbit.n * (OrbitBlocks::kReference - orbit.epoch);
    block.M[lane] = std::remainder(M, kTwoPi);
    block.n[lane] = orbit.n;
    block.e[lane] = orbit.e;
    const Mat3 equator_from_orbit = rotate_x(-kObliquity) * rotate_z(-orbit.node) *
                                    rotate_x(-orbit.i) * rotate_z(-orbit.peri);
    double a[3], b[3];
    store(equator_from_orbit * Vec3{orbit.a, 0, 0}, a);
    store(equator_from_orbit * Vec3{0, orbit.a * std::sqrt(1 - orbit.e * orbit.e), 0}, b);
    for (int k = 0; k < 3; ++k) block.a[k][lane] = a[k], block.b[k][lane] = b[k];
}

}  // namespace

void OrbitBlocks::add(const EllipticOrbit& orbit) {
    const std::size_t lane = size_ % kOrbitLanes;
    if (lane == 0) {
        blocks_.emplace_back();
        for (std::size_t k = 0; k < kOrbitLanes; ++k) store_lane(orbit, k, blocks_.back());
    }
    store_lane(orbit, lane, blocks_.back());
    ++size_;
}

OrbitBlock one_orbit_at(const OrbitBlock& block, std::size_t lane, double step) {
    OrbitBlock out;
    for (std::size_t k = 0; k < kOrbitLanes; ++k) {
        out.M[k] = block.M[lane] + block.n[lane] * step * static_cast<double>(k);
        out.n[k] = block.n[lane];
        out.e[k] = block.e[lane];
        for (int i = 0; i < 3; ++i)
            out.a[i][k] = block.a[i][lane], out.b[i][k] = block.b[i][lane];
    }
    return out;
}

void orbit_places(std::span<const OrbitBlock> blocks, double jd_tt, OrbitPlaces* places) {
    const auto kernel = cpu_has_avx512() ? orbit_places_avx512
                        : cpu_has_avx2() ? orbit_places_avx2
                                         : orbit_places_baseline;
    kernel(blocks.data(), static_cast<long>(blocks.size()), jd_tt - OrbitBlocks::kReference,
           places);
}

}  // namespace solsys
