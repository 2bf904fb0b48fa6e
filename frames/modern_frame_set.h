// The rotations of an instant by the models in force since 2006: IAU 2006 precession with the
// frame bias, IAU 2000A nutation.
#pragma once

#include "frames/frame_set.h"
#include "frames/pole_nodes.h"

namespace solsys {

// As `frames_at`, from the axes of the GCRS (which the ephemerides have) instead of the mean
// equator of J2000: mod_from_j2000 is bias and precession, ecl_from_j2000 leads to the true
// ecliptic and equinox of date. A host's own models come first here too; without the Earth
// below the observer the equator of date is the mean one, and the ecliptic that of its
// obliquity.
FrameSet modern_frames_at(Instant tt, bool observer_on_earth, PrecessionSource precession,
                          NutationSource nutation, PoleNodes& nodes);

// GCRS to mean ecliptic and equinox of J2000.0.
Mat3 ecl2k_from_gcrs();

// GCRS to the mean equator and equinox of B1875.0, in which the constellations have their
// boundaries.
Mat3 b1875_from_gcrs();

}  // namespace solsys
