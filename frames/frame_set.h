// All rotations in force at one instant. Everything here follows from the date (and from
// whether the observer stands on the Earth), so the set is replaced whole, never in part.
#pragma once

#include "core/instant.h"
#include "core/linalg.h"

namespace solsys {

// J2000 equator to galactic axes.
inline constexpr Mat3 kGalFromJ2000{
    {-0.05551151475432439, -0.872876934443017, -0.484772450792164},
    {0.493822968634106, -0.445982449865116, 0.746484112397383},
    {-0.86778876887125, -0.197953306943002, 0.455803840364746}};

struct FrameSet {
    Mat3 mod_from_j2000 = kIdentity;  // precession: mean equator of date
    Mat3 tod_from_mod = kIdentity;    // nutation: true equator of date
    Mat3 cur_from_j2000 = kIdentity;  // both; precession alone for an observer off the Earth
    Mat3 ecl_from_tod = kIdentity;    // about x by the true obliquity
    Mat3 ecl_from_j2000 = kIdentity;  // ecliptic of date, by way of the mean equator of date
    double obliquity = 0;             // mean [rad]
    double d_epsilon = 0;             // nutation in obliquity [rad]
    double d_psi = 0;                 // nutation in longitude [rad]
    // Earth rotation angle minus sidereal time [rad]; only the modern reduction needs it.
    double equation_of_origins = 0;

    // To galactic axes; few ask.
    [[nodiscard]] Mat3 gal_from_cur() const {
        return kGalFromJ2000 * transpose(cur_from_j2000);
    }
};

// Replacements of a host for the built-in models; null or a false answer leaves them alone.
using PrecessionSource = bool (*)(int day, double fraction, double* matrix);
using NutationSource = bool (*)(int day, double fraction, double* matrix, double* obliquity,
                                double* d_epsilon, double* d_psi);

FrameSet frames_at(Instant t, bool observer_on_earth, PrecessionSource precession,
                   NutationSource nutation);

}  // namespace solsys
