#include "frames/cio_locator.h"

#include <array>
#include <cmath>
#include <iterator>

#include "frames/fundamental_arguments.h"

namespace solsys {
namespace {

struct Row {
    int power;
    int n_l, n_lp, n_f, n_d, n_om, n_ve, n_e, n_pa;
    double sin_coeff, cos_coeff;  // [microarcsec]
};
constexpr Row kRows[] = {
#include "cio_locator_terms.inc"
};
static_assert(std::size(kRows) == 72);
constexpr int kPowers = 6;

}  // namespace

double cio_locator_plus_half_xy(Instant tt) {
    const double T = centuries_since_j2000(tt);
    const auto a = fundamental_arguments(ArgumentSet::kIers2003, T);
    std::array<double, kPowers> sums{};
    for (std::size_t i = std::size(kRows); i-- > 0;) {
        const Row& r = kRows[i];
        const double x = r.n_l * a[kArgL] + r.n_lp * a[kArgLp] + r.n_f * a[kArgF] +
                         r.n_d * a[kArgD] + r.n_om * a[kArgOm] + r.n_ve * a[kArgVe] +
                         r.n_e * a[kArgE] + r.n_pa * a[kArgPa];
        sums[r.power] += r.sin_coeff * std::sin(x) + r.cos_coeff * std::cos(x);
    }
    double sum = 0;
    for (std::size_t k = sums.size(); k-- > 0;) sum = sum * T + sums[k];
    return sum * 1e-6 * kArcsec;
}

double equation_of_origins(const Mat3& m, double locator_plus_half_xy) {
    const double x = m.r2.x, y = m.r2.y, z = m.r2.z;
    const double s = locator_plus_half_xy - x * y / 2;
    const Vec3 sigma{1 - x * x / (1 + z), -x * y / (1 + z), -x};
    return s - std::atan2(dot(m.r1, sigma), dot(m.r0, sigma));
}

}  // namespace solsys
