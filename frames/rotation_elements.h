// Pole and prime meridian of the catalogue's bodies: a function per planet, one for the Moon,
// and one per family of satellites, all of the type RotationElementsFn. A function answers
// false for a body of another family.
//
// The elements are those of the working group report of 2015 (Archinal et al. 2018, Celest.
// Mech. Dyn. Astron. 130, 22) with all periodic terms and their rates per Julian century.
// Jupiter's W is that of System III. The Earth's W follows sidereal time, so that it holds
// Delta T. Eris, Makemake, Haumea, Hyperion and the satellites without a determined pole have
// no elements.
#pragma once

#include "solsys/body_rotation.h"

namespace solsys {

bool sun_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool mercury_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool venus_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool earth_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool mars_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool jupiter_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool saturn_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool uranus_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool neptune_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool pluto_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool ceres_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool moon_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);

bool martian_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool jovian_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool saturnian_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool uranian_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool neptunian_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);
bool plutonian_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);

// Eris, Makemake, Haumea and their satellites: false, and three zeros.
bool no_rotation(int day, double fraction, int body, double* ra, double* dec, double* w);

}  // namespace solsys
