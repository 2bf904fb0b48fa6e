#include "frames/rotation_elements.h"

#include <cmath>

#include "core/constants.h"
#include "core/instant.h"
#include "frames/rotation_series.h"
#include "solsys/earth_orientation.h"

namespace solsys {
namespace {

// Precession of the Earth's equator, IAU 1976 [deg per Julian century]: the pole moves by
// theta = 0.557 T in declination; its right ascension, and the node of the equator of date on
// that of J2000, by zeta = z = 0.641 T. Lieske et al. 1977, Astron. Astrophys. 58, 1, to the
// three decimals of the working group's report.
constexpr double kEarthZeta = 0.641;
constexpr double kEarthTheta = 0.557;

// [0, 2 pi) of an angle in degrees.
double revolution(double degrees) {
    const double turn = std::fmod(degrees, 360.0);
    const double a = kDegree * (turn < 0 ? turn + 360.0 : turn);
    return a < kTwoPi ? a : 0.0;  // a tiny negative angle rounds to a whole turn
}

bool none(double* ra, double* dec, double* w) {
    *ra = *dec = *w = 0.0;
    return false;
}

}  // namespace

bool rotation_elements(int first, int last, int day, double fraction, int body, double* ra,
                       double* dec, double* w) {
    if (body < first || body > last || !std::isfinite(fraction)) return none(ra, dec, w);

    const Instant t{day, fraction};
    const auto angles = rotation_series(body, centuries_since_j2000(t), days_since_j2000(t));
    if (!angles) return none(ra, dec, w);
    *ra = revolution(angles->alpha);
    *dec = kDegree * angles->delta;
    *w = revolution(angles->w);
    return true;
}

bool earth_rotation(int day, double fraction, int body, double* ra, double* dec, double* w) {
    if (body != 3 || !std::isfinite(fraction)) return none(ra, dec, w);

    // The node of the equator of date on that of J2000 lies 90 deg + z ahead of the equinox of
    // date, from which sidereal time is counted. Before J2000 the pole stood on the other side,
    // and pole and node change places with their opposites.
    const double t = centuries_since_j2000({day, fraction});
    const double side = t < 0 ? 180.0 : 0.0;
    const double gmst = SiderialTime(false, day, fraction) * kDegreesPerRadian;
    *ra = revolution(side - kEarthZeta * t);
    *dec = kDegree * (90.0 - kEarthTheta * std::fabs(t));
    *w = revolution(gmst - side - 90.0 - kEarthZeta * t);
    return true;
}

}  // namespace solsys
