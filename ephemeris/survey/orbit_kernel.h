// Places on many elliptic orbits at one instant, eight beside each other, compiled for every
// x86-64 processor, for those with AVX2 and for those with AVX-512; every build gives the same
// bits.
//
// This header and the kernel's sources include nothing: a function shared with the rest of
// the library must not be compiled for a processor that may not be there.
#pragma once

namespace solsys {

constexpr int kOrbitLanes = 8;

// Of eight orbits: mean anomaly at the reference instant, motion, eccentricity, and the places
// as multiples of two vectors, r = (cos E - e) a + sin E b.
struct OrbitBlock {
    double M[kOrbitLanes], n[kOrbitLanes], e[kOrbitLanes];  // rad, rad/day
    double a[3][kOrbitLanes], b[3][kOrbitLanes];            // au
};

struct OrbitPlaces {
    double r[3][kOrbitLanes];  // au
};

// Places of `count` blocks, `days` after the reference instant: to 1e-9 au where the mean
// anomaly is below 1e6 rad; not a number where Kepler's equation was not solved in 30 steps.
void orbit_places_baseline(const OrbitBlock* blocks, long count, double days,
                           OrbitPlaces* places);
void orbit_places_avx2(const OrbitBlock* blocks, long count, double days, OrbitPlaces* places);
void orbit_places_avx512(const OrbitBlock* blocks, long count, double days,
                         OrbitPlaces* places);

}  // namespace solsys
