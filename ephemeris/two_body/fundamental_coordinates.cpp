#include <cmath>

#include "solsys/kepler.h"

void FundamentalCoor(const double reference[3], const double body[3], double out[3]) {
    const double cos_ref = std::cos(reference[2]), sin_ref = std::sin(reference[2]);
    const double r = body[0];
    const double cos_dec = std::cos(body[2]), sin_dec = std::sin(body[2]);
    const double d = body[1] - reference[1];
    const double cos_d = std::cos(d), sin_d = std::sin(d);
    out[0] = -r * cos_dec * sin_d;
    out[1] = r * (cos_ref * sin_dec - cos_dec * sin_ref * cos_d);
    out[2] = r * (sin_ref * sin_dec - cos_ref * cos_dec * cos_d);
}
