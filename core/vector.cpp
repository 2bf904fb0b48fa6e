// Exported operations on vectors.
#include <cmath>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kZeroLength = 1e-13;
constexpr double kUnitCosine = 1e-12;

// The component of the normal that tells the sense of the angle from a to b. The last choice is
// minus the y component of a x b: that is how the sense is defined there.
double sense_of(solsys::Vec3 a, solsys::Vec3 b) {
    double k = a.x * b.y - b.x * a.y;
    if (std::fabs(k) < kUnitCosine) k = b.z * a.y - a.z * b.y;
    if (std::fabs(k) < kUnitCosine) k = b.z * a.x - a.z * b.x;
    return k;
}

}  // namespace

double SVprod(const double* a, const double* b, short n) {
    if (n == 3) return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
    double sum = 0;
    int i = 0;
    for (; i + 4 <= n; i += 4)
        sum += a[i] * b[i] + a[i + 1] * b[i + 1] + a[i + 2] * b[i + 2] + a[i + 3] * b[i + 3];
    for (; i < n; ++i) sum += a[i] * b[i];
    return sum;
}

double Vmod(const double* v, short n) { return std::sqrt(SVprod(v, v, n)); }

void Vprod(const double* a, const double* b, double* out) {
    solsys::store(cross(solsys::load(a), solsys::load(b)), out);
}

void Vadd(const double* a, const double* b, double* out) {
    solsys::store(solsys::load(a) + solsys::load(b), out);
}

double* Vmmad(const double* a, double ka, const double* b, double kb, double* out) {
    solsys::store(ka * solsys::load(a) + kb * solsys::load(b), out);
    return out;
}

void Vnorm(const double* v, double* out, short n, double* modulus) {
    *modulus = Vmod(v, n);
    if (*modulus < kZeroLength) {
        out[0] = 0, out[1] = 0, out[2] = 1;
        return;
    }
    const double scale = 1 / *modulus;
    for (int i = 0; i < n; ++i) out[i] = v[i] * scale;
}

void Vnorm2(double* v) { solsys::store(unit(solsys::load(v)), v); }

double VectorsAngle(short oriented, const double* a, const double* b) {
    const solsys::Vec3 u = solsys::load(a);
    const solsys::Vec3 w = solsys::load(b);
    const double moduli = norm(u) * norm(w);
    if (norm(u) == 0 || norm(w) == 0) return 0;
    const double x = dot(u, w) / moduli;
    if (std::fabs(std::fabs(x) - 1) < kUnitCosine) return x >= 0 ? 0 : solsys::kPi;
    const double angle = x >= 1 ? 0 : x <= -1 ? solsys::kPi : std::acos(x);
    return oriented != 0 && sense_of(u, w) < 0 ? solsys::kTwoPi - angle : angle;
}
