/// \file
/// Delta T: dynamical time minus universal time.
#pragma once

#include "solsys/export.h"

/// Delta T = ET - UT [s], and universal to dynamical time.
///
/// A step table from 1650 (from 1972: TT - UTC, 32.184 s and the leap seconds), the polynomials
/// of Espenak & Meeus 2006 (NASA/TP-2006-214141) before, constant after the last leap second.
namespace ET_UT {

/// One segment of a long-term Delta T parabola or cubic: c0 + c1 T + c2 T^2 + c3 T^3 [s]
/// between two Julian day numbers, T in Julian centuries from J2000.0 (the last segment: from
/// its start). Two neighbours meet within 1.2 s. Kept with the model for callers; `Get` does
/// not use them.
class SOLSYS_API ET_UT_Poly {
  public:
    virtual ~ET_UT_Poly();

    int start_day = 0;  ///< Julian day number from which the segment holds
    int end_day = 0;    ///< Julian day number up to which it holds
    double c0 = 0;      ///< [s]
    double c1 = 0;      ///< [s per unit of T]
    double c2 = 0;      ///< [s per unit of T^2]
    double c3 = 0;      ///< [s per unit of T^3]
};

/// Registers a user of the model.
/// \param path  ignored, may be null
/// \return true
SOLSYS_API bool Init(const char* path);
/// Ends a registration; without one it changes nothing. Both may be called from any thread.
SOLSYS_API void Finish();
/// Delta T [s] at an instant; needs no registration and may be called from any thread. The
/// table is a step function: each value holds from its date on, without interpolation, the last
/// one (69.184 s, 2017) for ever. Before 1650 the polynomial of the month's decimal year,
/// formed in single precision, answers: the resolution of what it forms is 1e-6 of Delta T.
/// \param day,fraction  instant, UT or TT alike: the table is looked up as it is
/// \return [s]; NaN for an instant that is not finite
SOLSYS_API double Get(int day, double fraction);
/// A UT Julian date as a split dynamical one.
/// \param      jd            Julian date, UT
/// \param[out] day,fraction  instant, TT; the fraction may exceed 1. What is not finite, or 2e9
///                           days or more from JD 0, comes back as the fraction of day 0.
SOLSYS_API void UT2ET(double jd, int& day, double& fraction);

/// The six segments, the last one the parabola from 1820 that meets the table's last value a
/// year after its last key (T in centuries from JD 2385801); null while no user is registered.
SOLSYS_API const ET_UT_Poly* GetSegments();

}  // namespace ET_UT
