/// \file
/// Delta T: dynamical time minus universal time.
#pragma once

#include "solsys/export.h"

/// Delta T = ET - UT [s], and universal to dynamical time.
///
/// A step table from 1650 (from 1972: TT - UTC, 32.184 s and the leap seconds), the polynomials
/// of Espenak & Meeus 2006 (NASA/TP-2006-214141) before, constant after the last leap second.
namespace ET_UT {

/// Registers a user of the model; the argument is ignored. \return true
SOLSYS_API bool Init(const char* path);
/// Ends a registration; without one it changes nothing.
SOLSYS_API void Finish();
/// Delta T [s] at an instant. Never fails; an instant that is not a number gives the value of
/// the last table entry.
SOLSYS_API double Get(int day, double fraction);
/// A UT Julian date as a split dynamical one; the fraction may exceed 1.
SOLSYS_API void UT2ET(double jd, int& day, double& fraction);

}  // namespace ET_UT
