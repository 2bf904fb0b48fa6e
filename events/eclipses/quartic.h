// A smooth quantity over the hours around an eclipse, through its values at five instants.
#pragma once

#include <array>

namespace solsys::eclipses {

// Half the span [hours]: no eclipse lasts longer than 3.3 h from its greatest.
constexpr double kHalfSpan = 3.5;
// The instants: zeros of the Chebyshev polynomial T5, in units of the half span.
constexpr std::array<double, 5> kNodes{-0.9510565162951535, -0.5877852522924731, 0.0,
                                       0.5877852522924731, 0.9510565162951535};

// The polynomial of degree four through the values at the nodes. Left out are fifth
// differences: below 1e-8 Earth radii in x and y, 2e-9 rad in the axis.
class Quartic {
  public:
    constexpr Quartic() = default;
    constexpr explicit Quartic(const std::array<double, 5>& values) {
        // Chebyshev coefficients by discrete orthogonality, then powers.
        double a[5] = {};
        for (int j = 0; j < 5; ++j) {
            const double x = kNodes[j];
            const double t[5] = {1, x, 2 * x * x - 1, x * (4 * x * x - 3),
                                 8 * x * x * (x * x - 1) + 1};
            for (int k = 0; k < 5; ++k) a[k] += (k == 0 ? 0.2 : 0.4) * values[j] * t[k];
        }
        c_[0] = a[0] - a[2] + a[4];
        c_[1] = (a[1] - 3 * a[3]) / kHalfSpan;
        c_[2] = (2 * a[2] - 8 * a[4]) / (kHalfSpan * kHalfSpan);
        c_[3] = 4 * a[3] / (kHalfSpan * kHalfSpan * kHalfSpan);
        c_[4] = 8 * a[4] / (kHalfSpan * kHalfSpan * kHalfSpan * kHalfSpan);
    }

    // At h hours from the middle: value, change per hour, its change per hour.
    [[nodiscard]] constexpr double at(double h) const {
        return c_[0] + h * (c_[1] + h * (c_[2] + h * (c_[3] + h * c_[4])));
    }
    [[nodiscard]] constexpr double rate(double h) const {
        return c_[1] + h * (2 * c_[2] + h * (3 * c_[3] + h * 4 * c_[4]));
    }
    [[nodiscard]] constexpr double second(double h) const {
        return 2 * c_[2] + h * (6 * c_[3] + h * 12 * c_[4]);
    }

  private:
    double c_[5] = {};
};

}  // namespace solsys::eclipses
