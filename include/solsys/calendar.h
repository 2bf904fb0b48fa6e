/// \file
/// Calendar dates and Julian dates.
///
/// An instant is a split Julian date: a day number and a fraction of a day. The Julian day
/// begins at noon. Calendar dates are of the Julian calendar before 1582 October 15 and of the
/// Gregorian one from then on; years are numbered historically: the year before 1 is -1.
#pragma once

#include "solsys/export.h"

/// Calendar to Julian date, split by truncation.
///
/// \param[out] day,fraction  Julian date, in the scale of the clock given
/// \param      year          historical: -1 is the year before 1
/// \param      month,day_of_month  calendar date
/// \param      hour,minute,second  clock
///
/// 1582 October 5 to 14 count as Julian dates;
/// year 0 acts as year 1. Months, days, hours, minutes and seconds may lie outside their usual
/// range where the arithmetic carries them; the result is rounded as a double Julian date, to
/// about 4e-5 s.
///
/// A second that is not finite, or carries the date beyond 2e9 days, leaves day 0 and the whole
/// Julian date in the fraction.
///
/// Source: Meeus 1998, Astronomical Algorithms, chapter 7.
SOLSYS_API void DJ(int* day, double* fraction, short year, short month, short day_of_month,
                   short hour, short minute, double second);

/// Julian date to calendar.
///
/// \param      day,fraction  Julian date
/// \param[out] year          historical: -1 is the year before 1
/// \param[out] month,day_of_month  calendar date
/// \param[out] day_fraction  of the day, from midnight
/// \param[out] hour,minute,second  clock, in the scale of the Julian date
///
/// A second within 0.0001 of 60 carries into the minute and the hour,
/// not into the day: an hour of 24 can result. Dates before JD 0 are outside the rule's range:
/// their parts follow its truncations.
///
/// A date that is not finite, or whose year does not fit a `short`, gives zeros: no month is 0.
///
/// Source: Meeus 1998, Astronomical Algorithms, chapter 7.
SOLSYS_API void JD(int day, double fraction, short* year, short* month, short* day_of_month,
                   double* day_fraction, short* hour, short* minute, double* second);

/// Julian date of the start of a Julian or Besselian epoch year.
/// \param      kind          'J' or 'j': Julian; any other: Besselian
/// \param      year          number of the epoch, 2000 for J2000
/// \param[out] day,fraction  Julian date, TT
///
/// Source: Lieske 1979, Astron. Astrophys. 73, 282.
SOLSYS_API void BJ(char kind, short year, int* day, double* fraction);

/// Moves whole days of the fraction into the day; after JD 2400000 the fraction ends in [0, 1),
/// before it may end in (-1, 0).
/// \param[in,out] day,fraction  Julian date. One that is not finite, or beyond 2e9 days, stays
/// as it is.
SOLSYS_API void Adjust_JD(int* day, double* fraction);
