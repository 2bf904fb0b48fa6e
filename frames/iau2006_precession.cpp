#include "frames/iau2006_precession.h"

#include <array>
#include <string_view>

namespace solsys {
namespace {

using Polynomial = std::array<double, 6>;  // [arcsec], powers of Julian centuries of TT

struct Row {
    std::string_view angle;
    Polynomial c;
};
constexpr Row kRows[] = {
#include "precession_iau2006.inc"
};

constexpr Polynomial angle(std::string_view name) {
    for (const Row& row : kRows) {
        if (row.angle == name) return row.c;
    }
    return {};
}
constexpr Polynomial kGammaBar = angle("gamma_bar");
constexpr Polynomial kPhiBar = angle("phi_bar");
constexpr Polynomial kPsiBar = angle("psi_bar");
constexpr Polynomial kEpsilonA = angle("eps_A");
constexpr Polynomial kGmstMinusEra = angle("gmst_minus_era");
static_assert(kGammaBar[1] > 10 && kPhiBar[0] > 84381 && kPsiBar[1] > 5038 &&
              kEpsilonA[0] == 84381.406 && kGmstMinusEra[1] > 4612);

double radians(const Polynomial& c, double T) {
    return kArcsec * (c[0] + T * (c[1] + T * (c[2] + T * (c[3] + T * (c[4] + T * c[5])))));
}

}  // namespace

FukushimaWilliams fukushima_williams(Instant tt) {
    const double T = centuries_since_j2000(tt);
    return {radians(kGammaBar, T), radians(kPhiBar, T), radians(kPsiBar, T),
            radians(kEpsilonA, T)};
}

Mat3 equator_from_gcrs(const FukushimaWilliams& a, double d_psi, double d_epsilon) {
    return rotate_x(-(a.epsilon + d_epsilon)) * rotate_z(-(a.psi + d_psi)) * rotate_x(a.phi) *
           rotate_z(a.gamma);
}

Mat3 tod_from_mod_2006(double epsilon, double d_psi, double d_epsilon) {
    return rotate_x(-(epsilon + d_epsilon)) * rotate_z(-d_psi) * rotate_x(epsilon);
}

double gmst_minus_era(Instant tt) { return radians(kGmstMinusEra, centuries_since_j2000(tt)); }

}  // namespace solsys
