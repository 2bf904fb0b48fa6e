#include "frames/body_rotation.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/constants.h"
#include "core/fast_trig.h"
#include "core/instant.h"
#include "core/sin_cos.h"
#include "frames/rotation_series.h"
#include "solsys/earth_orientation.h"

namespace solsys {
namespace {

// Columns of the result: the prime meridian's equator point, the point 90 degrees east of it,
// and the pole.
Mat3 body_matrix(SinCos alpha, SinCos delta, SinCos w) {
    return {{-w.cos * alpha.cos - w.sin * delta.sin * alpha.sin,
             w.sin * alpha.cos - w.cos * delta.sin * alpha.sin, delta.cos * alpha.sin},
            {w.cos * alpha.sin - w.sin * delta.sin * alpha.cos,
             -w.sin * alpha.sin - w.cos * delta.sin * alpha.cos, delta.cos * alpha.cos},
            {w.sin * delta.cos, w.cos * delta.cos, delta.sin}};
}

SinCos decode(double e) {
    const double c = std::clamp(e > 0 ? e - 2.0 : e + 2.0, -1.0, 1.0);
    return {e > 0 ? unit_leg(c) : -unit_leg(c), c};
}

}  // namespace

Mat3 body_matrix_from_encoded(double e, double sin_dec, double w) {
    return body_matrix(decode(e), {sin_dec, unit_leg(sin_dec)}, fast_sincos_by_sine(w));
}

Mat3 body_matrix_from_angles(double alpha, double delta, double w) {
    return body_matrix(library_sin_cos(alpha), library_sin_cos(delta), library_sin_cos(w));
}

Mat3 body_matrix_from_pole(double pole_ra, double pole_dec, double w) {
    // alpha = pi/2 - right ascension: its cosine and sine are those of the latter exchanged.
    const auto [s, c] = library_sin_cos(pole_ra);
    return body_matrix({c, s}, library_sin_cos(pole_dec), library_sin_cos(w));
}

namespace {

struct TableRow {
    int row;
    int body;
    double alpha0, alpha1, delta0, delta1, w0, w1, w_t;
};
constexpr TableRow kTable[] = {
#include "rotation_table.inc"
};
constexpr int kRows = 46;
static_assert(std::size(kTable) == kRows);

constexpr int kEarthRow = 3;
constexpr int kMoonRow = 10;
constexpr int kMoon = 301;
constexpr double kTableUnit = 3652500.0;  // day: ten thousand Julian years

RotationAngles table_angles(int row, double d) {
    if (row < 1 || row > kRows) return {0.0, 0.0, 0.0};

    const double t = d / kTableUnit;
    if (row == kMoonRow) return *rotation_series(kMoon, t, d);
    const TableRow& e = kTable[row - 1];
    return {e.alpha0 + e.alpha1 * t, e.delta0 + e.delta1 * t,
            e.w0 + std::fmod(e.w1 * d, 360.0) + e.w_t * t};
}

}  // namespace
}  // namespace solsys

double EncodeRightAscension(double angle) {
    return std::sin(angle) >= 0 ? std::cos(angle) + 2.0 : std::cos(angle) - 2.0;
}

void DecodeRightAscension(double e, double* cosine, double* sine) {
    const auto [s, c] = solsys::decode(e);
    *cosine = c;
    *sine = s;
}

BodyRotationParams EncodeBodyRotation(double pole_ra, double pole_dec, double w0, double rate) {
    return {static_cast<float>(EncodeRightAscension(solsys::kHalfPi - pole_ra)),
            static_cast<float>(std::sin(pole_dec)), static_cast<float>(w0),
            static_cast<float>(rate)};
}

short PlanetographicalIndex(int body) {
    for (const auto& row : solsys::kTable) {
        if (row.body == body) return static_cast<short>(row.row);
    }
    return 0;
}

void PlanetographicalMatrix(int day, double fraction, short body, const double* m,
                            double* out_transposed, double* out) {
    using namespace solsys;
    Mat3 equator_from_body{};
    if (body == kEarthRow) {
        const double theta = SiderialTime(true, day, fraction);
        equator_from_body = rotate_z(-theta);
    } else {
        const double d = days_since_j2000({day, fraction});
        const auto [alpha, delta, w] = table_angles(body, d);
        equator_from_body = load_matrix(m) * body_matrix_from_pole(
                                                 kDegree * alpha, kDegree * delta, kDegree * w);
    }
    store(transpose(equator_from_body), out_transposed);
    store(equator_from_body, out);
}
