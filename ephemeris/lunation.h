// The Moon's mean phases, from which searches for the true ones start.
//
// Lunations are counted from the mean new Moon of 2000 January 6: whole numbers are new Moons,
// quarters first quarters, halves full Moons, three quarters last quarters.
#pragma once

namespace solsys {

constexpr double kFirstNewMoon = 2451550.09766;  // JD (TT) of lunation 0
constexpr double kSynodicMonth = 29.530588861;   // day

// True phases are within this of the mean ones [day]: new and full Moons within 0.62, quarters
// within 0.83, measured from -3000 to +3000.
constexpr double kLargestPhaseInequality = 1.0;

// Julian date (TT) of the mean phase `lunation`.
// Source: Chapront-Touze & Chapront 1988, Astron. Astrophys. 190, 342 (ELP-2000/82); in this
// form Meeus 1998, Astronomical Algorithms, eq. 49.1.
double mean_phase(double lunation);

// The lunation of an instant (JD, TT) by the mean month alone: within 0.014 of the inverse of
// `mean_phase` between -3000 and +3000.
constexpr double lunation_of(double jd) { return (jd - kFirstNewMoon) / kSynodicMonth; }

}  // namespace solsys
