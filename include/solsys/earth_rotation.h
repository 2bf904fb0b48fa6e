/// \file
/// Observed rotation of the Earth and leap seconds: what a host gives to the modern reduction.
#pragma once

#include "solsys/export.h"

/// One row of a table of the Earth's orientation, as the IERS publishes it.
struct EarthOrientationRow {
    double mjd_utc;        ///< Modified Julian date, UTC: JD - 2400000.5
    double ut1_minus_utc;  ///< [s], within 1 s of 0 (from 1972; before, UTC had other rates)
    double x, y;           ///< pole [arcsec]: x towards Greenwich, y towards 90 degrees west
};

/// What became of the rows of a table.
struct EarthOrientationReport {
    int rows = 0;          ///< in use
    int rejected = 0;      ///< not finite, before 1960 or beyond 1 s or 2 arcsec: left out
    int out_of_order = 0;  ///< earlier than the one before it: put where they belong
    int repeated = 0;      ///< the same date again: the last one counts
    int holes = 0;  ///< gaps of more than 5.5 days: inside them the table does not answer
    double first_mjd = 0, last_mjd = 0;  ///< span of the rows in use
};

/// Where UT1 and the pole of an instant came from.
enum EarthOrientationSource {
    EARTH_ORIENTATION_NONE =
        0,  ///< nothing was given: UT1 = TT - Delta T of `ET_UT`, no polar motion
    EARTH_ORIENTATION_VALUE = 1,  ///< the values of `SetUT1` and `SetPolarMotion`
    EARTH_ORIENTATION_TABLE = 2   ///< the table
};

/// A leap second: TAI - UTC [s] from 0h UTC of a day on.
struct LeapSecond {
    double mjd_utc;
    double tai_minus_utc;
};

/// TAI - UTC [s] of the built-in table at a Modified Julian date of UTC, from 1960 (before: the
/// value of 1960 January 1); NaN for one that is not finite.
SOLSYS_API double TaiMinusUtc(double mjd_utc);
/// Modified Julian date up to which the built-in table is known to hold.
SOLSYS_API double LeapSecondsValidUntil();
