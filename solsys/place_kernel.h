// The arithmetic of apparent places, eight observers side by side: the way of the light, its
// bending and aberration. Compiled for every x86-64 processor, for those with AVX2 and for
// those with AVX-512, to the same bits.
//
// This header and the kernel's sources include nothing but their like: a function shared with
// the rest of the library must not be compiled for a processor that may not be there.
#pragma once

#include "ephemeris/de/batch_kernel.h"

namespace solsys {

constexpr int kPlaceLanes = kSeriesBatch;

using Lane = double[kPlaceLanes];
using LaneVector = Lane[3];

// A body that bends light, as DeflectingBody has it.
struct BendingLanes {
    LaneVector to_observer;  // [au]
    LaneVector velocity;     // [au/day]
    Lane which;              // its Deflector
    Lane two_gm;             // 2 GM/c^2 [au]
    // The least 1 + cos of the angle at the body between source and observer: `limiter`, and
    // `limb` over the square of the distance [au^2].
    Lane limiter, limb;
};

// What places need of an observer (ObserverPlace), and the frame that directions are given in.
struct ObserverLanes {
    LaneVector position;      // heliocentric [au]
    LaneVector sun_velocity;  // barycentric [au/day]
    LaneVector velocity;      // barycentric, of that of light
    Lane lorentz_reciprocal;
    BendingLanes bending[3];         // farthest first
    LaneVector frame_from_j2000[3];  // by rows
};

// Where a body is when its light leaves, `tau` [day] before it arrives.
struct LightLanes {
    SeriesSums body;  // heliocentric [au, au/day]
    Lane tau;
};

struct SeenLanes {
    LaneVector direction;  // in the observer's frame
    LaneVector path;       // the way that the light came, J2000 equator [au]
    Lane distance;         // [au]
    Lane correction;       // of the light time [day], applied along a straight line
};

// How much longer than `tau` the light is under way, by Newton's step [day].
void light_corrections_baseline(const ObserverLanes& observer, const LightLanes& light,
                                double days_per_au, Lane& out);
void light_corrections_avx2(const ObserverLanes& observer, const LightLanes& light,
                            double days_per_au, Lane& out);
void light_corrections_avx512(const ObserverLanes& observer, const LightLanes& light,
                              double days_per_au, Lane& out);

// The place after that step. `self`: the Deflector that is the body itself; -1 for none.
void see_baseline(const ObserverLanes& observer, const LightLanes& light, double self,
                  double days_per_au, SeenLanes& out);
void see_avx2(const ObserverLanes& observer, const LightLanes& light, double self,
              double days_per_au, SeenLanes& out);
void see_avx512(const ObserverLanes& observer, const LightLanes& light, double self,
                double days_per_au, SeenLanes& out);

}  // namespace solsys
