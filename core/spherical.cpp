// Exported spherical conversions.
#include "core/spherical.h"

#include <cstdio>

#include "solsys/toolkit.h"

using solsys::Vec3;

namespace {

constexpr double kZeroModulus = 1e-13;
constexpr double kQuarterTurn = 1.570796326794897;  // as psf gives it for the axes

}  // namespace

void psf(const double* xyz, double modulus, double* out) {
    const Vec3 v = solsys::load(xyz);
    out[0] = modulus;
    if (modulus <= kZeroModulus) {
        out[1] = out[2] = 0;
        return;
    }
    const bool no_x = std::fabs(v.x) < kZeroModulus;
    const bool no_y = std::fabs(v.y) < kZeroModulus;
    const bool no_z = std::fabs(v.z) < kZeroModulus;
    if (no_x && no_y) {
        out[1] = 0;
        out[2] = v.z > 0 ? kQuarterTurn : -kQuarterTurn;
    } else if (no_y && no_z) {
        out[1] = v.x > 0 ? 0 : solsys::kPi;
        out[2] = 0;
    } else if (no_x && no_z) {
        // Not brought into [0, 2 pi): hosts know the -y axis by this value.
        out[1] = v.y > 0 ? kQuarterTurn : -kQuarterTurn;
        out[2] = 0;
    } else {
        const solsys::Spherical s = solsys::to_spherical(v, modulus);
        out[1] = s.lon;
        out[2] = s.lat;
    }
}

void psf1(const double* xyz, double modulus, double* out) {
    const solsys::Spherical s = solsys::to_spherical(solsys::load(xyz), modulus);
    out[0] = s.r, out[1] = s.lon, out[2] = s.lat;
}

void sfp(const double* sph, double* out) {
    solsys::store(solsys::to_cartesian({sph[0], sph[1], sph[2]}), out);
}

void sfp1(const double* sph, double* out) { sfp(sph, out); }

void cartesianToSpherical(const double* xyz, double* out) {
    const Vec3 v = solsys::load(xyz);
    const double r = norm(v);
    if (r < kZeroModulus) {
        std::fputs("Vector module is too small to convert to spherical coordinates", stdout);
        return;
    }
    out[0] = 1 / r;
    out[1] = solsys::longitude_of(v.x, v.y);
    out[2] = std::asin(v.z / r);
}
