#include "solsys/planet_magnitude_2018.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "core/constants.h"

namespace solsys {
namespace {

// Coefficients by rising powers of the phase angle in degrees; the equation's number in the
// paper.
template <std::size_t N>
double polynomial(const double (&c)[N], double x) {
    double sum = 0;
    for (std::size_t i = N; i-- > 0;) sum = sum * x + c[i];
    return sum;
}
constexpr double kMercuryCurve[] = {-0.613,      6.3280e-02, -1.6336e-03, 3.3644e-05,
                                    -3.4265e-07, 1.6893e-09, -3.0334e-12};                // 2
constexpr double kVenusCurve[] = {-4.384, -1.044e-03, 3.687e-04, -2.814e-06, 8.938e-09};  // 3
constexpr double kVenusCrescent[] = {236.05828, -2.81914, 8.39034e-03};                   // 4
constexpr double kEarthCurve[] = {-3.99, -1.060e-03, 2.054e-04};                          // 5
constexpr double kMarsCurve[] = {-1.601, 2.267e-02, -1.302e-04};                          // 6
constexpr double kMarsBeyond50[] = {-0.367, -0.02573, 3.445e-04};                         // 7
constexpr double kJupiterCurve[] = {-9.395, -3.7e-04, 6.16e-04};                          // 8
constexpr double kJupiterBeyond12[] = {1, -1.507, -0.363, -0.062, 2.809, -1.876};         // 9
constexpr double kSaturnGlobe[] = {-8.95, -3.7e-04, 6.16e-04};                            // 11
constexpr double kSaturnGlobeBeyond6[] = {-8.94, 2.446e-04, 2.672e-04, -1.506e-06,
                                          4.767e-09};         // 12
constexpr double kUranus[] = {-7.110, 6.587e-03, 1.045e-04};  // 14, 15
constexpr double kNeptune[] = {-7.00, 7.944e-03, 9.617e-05};  // 17

constexpr double kVenusCrescentFrom = 163.7, kMarsLawTo = 50, kJupiterLawTo = 12,
                 kSaturnRingsTo = 6.5, kUranusFullTo = 3.1, kNeptuneFullTo = 1.9;  // deg
constexpr double kMostRingLatitude = 27;                                           // deg

struct MarsRow {
    double angle_deg, rotation_mag, season_mag;
};
constexpr MarsRow kMarsRows[] = {
#include "mars_magnitude_corrections.inc"
};
constexpr int kMarsCount = 36;
static_assert(std::size(kMarsRows) == kMarsCount);

// Through the five rows around an angle by Stirling's formula. (The authors' program drops one
// of the differences, which is worth 0.005 mag at most.)
double correction(double MarsRow::*column, double angle_deg) {
    const double turn = std::fmod(angle_deg, 360.0);
    const double x = (turn < 0 ? turn + 360 : turn) / 10;
    if (!(x >= 0)) return x;
    const int i = static_cast<int>(x);
    const double p = x - i;
    const auto f = [&](int k) { return kMarsRows[(i + k + kMarsCount) % kMarsCount].*column; };
    const double d1 = (f(1) - f(-1)) / 2, d2 = f(1) - 2 * f(0) + f(-1);
    const double d3 = (f(2) - 2 * f(1) + 2 * f(-1) - f(-2)) / 2;
    const double d4 = f(2) - 4 * f(1) + 6 * f(0) - 4 * f(-1) + f(-2);
    return f(0) + p * (d1 + p / 2 * d2) + p * (p * p - 1) / 6 * (d3 + p / 4 * d4);
}

double mars(const PlanetAspect& a) {
    const double law = a.phase_deg <= kMarsLawTo ? polynomial(kMarsCurve, a.phase_deg)
                                                 : polynomial(kMarsBeyond50, a.phase_deg);
    return law + correction(&MarsRow::rotation_mag, a.meridian_deg) +
           correction(&MarsRow::season_mag, a.season_deg);
}

double jupiter(double phase) {
    if (phase <= kJupiterLawTo) return polynomial(kJupiterCurve, phase);
    return -9.428 - 2.5 * std::log10(polynomial(kJupiterBeyond12, phase / 180));
}

double saturn_globe(double phase) {
    return phase <= kSaturnRingsTo ? polynomial(kSaturnGlobe, phase)
                                   : polynomial(kSaturnGlobeBeyond6, phase);
}

double saturn(const PlanetAspect& a) {
    if (a.phase_deg > kSaturnRingsTo) return saturn_globe(a.phase_deg);
    const double product = a.sun_latitude_deg * a.observer_latitude_deg;
    const double B = std::min(product > 0 ? std::sqrt(product) : 0.0, kMostRingLatitude);
    const double sin_b = std::sin(B * kDegree);
    return -8.914 - 1.825 * sin_b + 0.026 * a.phase_deg -
           0.378 * sin_b * std::exp(-2.25 * a.phase_deg);  // 10
}

double uranus(const PlanetAspect& a) {
    const double latitude =
        (std::fabs(a.sun_latitude_deg) + std::fabs(a.observer_latitude_deg)) / 2;
    return polynomial(kUranus, a.phase_deg <= kUranusFullTo ? 0.0 : a.phase_deg) -
           0.00084 * latitude;
}

double neptune(const PlanetAspect& a) {
    if (a.year < 1980) return -6.89;
    if (a.year <= 2000) return -6.89 - 0.0054 * (a.year - 1980);
    return polynomial(kNeptune, a.phase_deg <= kNeptuneFullTo ? 0.0 : a.phase_deg);
}

double venus(double phase) {
    return phase < kVenusCrescentFrom ? polynomial(kVenusCurve, phase)
                                      : polynomial(kVenusCrescent, phase);
}

double distance_term(const PlanetAspect& a) { return 5 * std::log10(a.r * a.delta); }

}  // namespace

double planet_magnitude_2018(int planet, const PlanetAspect& a) {
    switch (planet) {
        case 1:
            return distance_term(a) + polynomial(kMercuryCurve, a.phase_deg);
        case 2:
            return distance_term(a) + venus(a.phase_deg);
        case 3:
            return distance_term(a) + polynomial(kEarthCurve, a.phase_deg);
        case 4:
            return distance_term(a) + mars(a);
        case 5:
            return distance_term(a) + jupiter(a.phase_deg);
        case 6:
            return distance_term(a) + saturn(a);
        case 7:
            return distance_term(a) + uranus(a);
        case 8:
            return distance_term(a) + neptune(a);
        default:
            return std::nan("");
    }
}

double saturn_globe_magnitude_2018(const PlanetAspect& a) {
    return distance_term(a) + saturn_globe(a.phase_deg);
}

}  // namespace solsys
