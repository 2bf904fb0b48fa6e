// Near-parabolic motion in universal form: Barker's equation, corrected for the departure from
// the parabola by the Stumpff function c3. Stumpff 1959, Himmelsmechanik; Montenbruck & Pfleger
// 2000, Astronomy on the Personal Computer.
#include <cmath>

#include "ephemeris/two_body/kepler_equation.h"

namespace solsys {
namespace {

constexpr int kPasses = 15;
constexpr double kBelow = -2.0 / 3;  // Barker's quantity where the root of g does not exist
constexpr double kTolerance = 1e-10;
// Enough for |x| of 50 revolutions squared, where the sum has long lost its digits; the bound
// is there for infinities and absurd times.
constexpr int kStumpffTerms = 500;

// c3(x) = sum over k of (-x)^k / (2k + 3)!
double stumpff_c3(double x) {
    double term = 1.0 / 6.0;
    double sum = 0;
    for (int k = 2; k < kStumpffTerms && std::fabs(term) >= kTolerance; ++k) {
        sum += term;
        term *= -x / (4 * k * (k + 0.5));
    }
    return sum;
}

}  // namespace

double near_parabolic_anomaly(double mu, double q, double e, double tau) {
    const double W = std::sqrt(mu / (q * q * q)) * tau;
    double x = 0;
    double g = e / 2;  // 3 e c3(0)
    double s = 0;
    for (int pass = 0; pass < kPasses; ++pass) {
        s = barker_root(g < 0 ? kBelow : W * std::sqrt(g)).s;
        const double previous = x;
        x = s * s * (1 - e) / g;
        g = 3 * e * stumpff_c3(x);
        if (std::fabs(x - previous) < kTolerance) break;
    }
    return std::copysign(std::sqrt(x), s);
}

}  // namespace solsys
