// The body of the kernel, included by orbit_kernel_baseline.cpp, _avx2.cpp and _avx512.cpp.
#include "ephemeris/lanes.inl"
#include "ephemeris/survey/orbit_kernel.h"

namespace solsys {
namespace {

static_assert(kOrbitLanes == kLanes);

inline Vector load_lanes(const double* from) {
    Vector x;
    __builtin_memcpy(&x, from, sizeof x);
    return x;
}

// Kepler's equation by Newton's steps; from E = M + 0.85 e, with the sign of M, they do not
// leave the half turn (Danby & Burkardt 1983, Celest. Mech. 31, 95). Not a number where 30 were
// not enough.
inline Angle<Vector> solved_kepler(Vector M, Vector e) {
    Vector E = M + select(M < 0, -0.85 * e, 0.85 * e);
    Angle<Vector> at = sines(E);
    for (int k = 0; k < 30; ++k) {
        const Vector step = (M - (E - e * at.sin)) / (1.0 - e * at.cos);
        E += step;
        at = sines(E);
        if (!any(!(absolute(step) < 1e-6))) return at;
    }
    const Vector rest = M - (E - e * at.sin);
    const Vector spoilt =
        select(absolute(rest) < 1e-10, Vector{}, Vector{} + __builtin_nan(""));
    return {at.sin + spoilt, at.cos + spoilt};
}

inline void places_of_blocks(const OrbitBlock* blocks, long count, double days,
                             OrbitPlaces* places) {
    for (long k = 0; k < count; ++k) {
        const OrbitBlock& block = blocks[k];
        const Vector e = load_lanes(block.e);
        Vector M = load_lanes(block.M) + load_lanes(block.n) * days;
        M = M - kTurn * nearest(M * (1 / kTurn));
        const Angle<Vector> E = solved_kepler(M, e);
        for (int i = 0; i < 3; ++i) {
            const Vector r =
                (E.cos - e) * load_lanes(block.a[i]) + E.sin * load_lanes(block.b[i]);
            __builtin_memcpy(places[k].r[i], &r, sizeof r);
        }
    }
}

}  // namespace
}  // namespace solsys
