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

constexpr double kAuKm = 149597870.7;                    // km: IAU 2012 resolution B2
constexpr double kAuPerKm = 6.6845871222684464e-9;       // the reciprocal used for body radii
constexpr double kLightDayPerAu = 0.005775518331436995;  // day: light time of 1 au

// The same quantity in the digits that different places were built with. Each keeps its own,
// and is named for its place.
constexpr double kGaussSquared = 0.0002959122082855911;    // au^3/day^2: of catalogue records
constexpr double kSunGm = 0.00029591220828411956;          // au^3/day^2: of element orbits
constexpr double kSunGmOfMasses = 0.00029591220828559115;  // au^3/day^2: masses of bodies
constexpr double kSunMassOfMasses = 1.9891e30;             // kg: likewise
constexpr double kLightDayPerAuOfStars = 0.0057755;        // day: as catalogues are drawn with
constexpr double kGalacticCentreOfObserver = 1753250853.100319;   // au: of a placed observer
constexpr double kGalacticCentreOfTransfer = 1753250853.1003194;  // au: of transferred places
constexpr double kSatelliteAuKm = 149597870.691;  // km: of satellite tables (DE405)
constexpr double kUranianAuKm = 149597870.0;      // km: of GUST86

// Obliquity of the ecliptic at J2000 as the elements of dwarf planets were made with: 0.0009
// arcsec from the 84381.448 arcsec of IAU 1976.
constexpr double kCosObliquityOfElements = 0.9174820637487279;
constexpr double kSinObliquityOfElements = 0.3977771520580026;

}  // namespace solsys
