// Constants that several folders share, each exactly as the models were built with.
#pragma once

namespace solsys {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 6.28318530717958647692;
constexpr double kHalfPi = 1.57079632679489661923;
constexpr double kDegree = 0.017453292519943295;  // rad
constexpr double kDegreesPerRadian = 57.29577951308232;
constexpr double kArcsec = 4.84813681109536e-6;  // rad

constexpr double kSecondsPerDay = 86400.0;
constexpr int kJ2000Day = 2451545;  // 2000 January 1, 12h
constexpr double kDaysPerJulianCentury = 36525.0;
constexpr double kDaysPerJulianYear = 365.25;

constexpr double kAuKm = 149597870.7;                    // km
constexpr double kAuPerKm = 6.6845871222684464e-9;       // the reciprocal used for body radii
constexpr double kLightDayPerAu = 0.005775518331436995;  // day: light time of 1 au
constexpr double kGaussSquared = 0.0002959122082855911;  // au^3/day^2: k^2
constexpr double kSunGm = 0.00029591220828411956;        // au^3/day^2: of element orbits

}  // namespace solsys
