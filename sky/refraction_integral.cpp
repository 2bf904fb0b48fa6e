#include "sky/refraction_integral.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "sky/units.h"

namespace solsys::sky {
namespace {

constexpr double kGas = 8314.36;        // J/(kmol K)
constexpr double kDry = 28.966;         // molar mass of dry air
constexpr double kVapour = 18.016;      // and of water vapour
constexpr double kVapourPower = 18.36;  // exponent of the vapour pressure's fall
constexpr double kLapse = 0.0065;       // K/m
constexpr double kEarth = 6378120;      // m
constexpr double kTropopause = 11000;   // m
constexpr double kTop = 80000;          // m

// Gauss-Legendre, eight points on -1..1: the positive ones.
constexpr std::array<double, 4> kPoints{0.18343464249564980, 0.52553240991632899,
                                        0.79666647741362674, 0.96028985649753623};
constexpr std::array<double, 4> kWeights{0.36268378337836198, 0.31370664587788729,
                                         0.22238103445337447, 0.10122853629037626};
constexpr int kNewtonSteps = 4;

// Bending in one layer between two zenith distances of the ray: the integral of
// r n' / (n + r n') dz where r solves n r sin z = invariant.
template <class Layer>
double bending(Layer layer, double invariant, double z_low, double z_high, double r_start) {
    const double middle = (z_high + z_low) / 2, half = (z_high - z_low) / 2;
    double sum = 0;
    double r = r_start;  // each solution is the next one's start; from the lower end upwards
    const auto point = [&](double x, double weight) {
        const double sin_z = std::sin(middle + half * x);
        RefractiveIndex at = layer(r);
        for (int step = 0; step < kNewtonSteps; ++step) {
            r -= (at.n * r * sin_z - invariant) / ((at.n + r * at.slope) * sin_z);
            at = layer(r);
        }
        sum += weight * r * at.slope / (at.n + r * at.slope);
    };
    for (std::size_t i = kPoints.size(); i-- > 0;) point(kPoints[i], kWeights[i]);
    for (std::size_t i = 0; i < kPoints.size(); ++i) point(-kPoints[i], kWeights[i]);
    return half * sum;
}

}  // namespace

AirColumn::AirColumn(const Atmosphere& a)
    : ground(kEarth + a.height_m),
      tropopause(kEarth + std::max(kTropopause, a.height_m)),
      top(kEarth + kTop),
      temperature_(273.15 + a.air.temperature_c) {
    const double gravity =
        9.784 * (1 - 0.0026 * std::cos(2 * a.latitude_deg / kDegrees) - 2.8e-7 * a.height_m);
    const double l2 = a.air.wavelength_um * a.air.wavelength_um;
    const double dispersion =
        (287.604 + 1.6288 / l2 + 0.0136 / (l2 * l2)) * (273.15 / 1013.25) * 1e-6;
    const double vapour = a.air.humidity * std::pow(temperature_ / 247.1, kVapourPower);  // hPa
    ga_ = gravity * kDry / (kGas * kLapse);
    const double b = vapour * (1 - kVapour / kDry) * ga_ / (kVapourPower - ga_);
    k1_ = dispersion * (a.air.pressure_hpa + b) / temperature_;
    k2_ = (dispersion * b + 11.2684e-6 * vapour) / temperature_;
    const double isothermal = temperature_ - kLapse * (tropopause - ground);
    scale_ = gravity * kDry / kGas / isothermal;
    index_at_tropopause_ = troposphere(tropopause).n - 1;
}

RefractiveIndex AirColumn::troposphere(double r) const {
    const double x = 1 - kLapse * (r - ground) / temperature_;
    const double dry = k1_ * std::pow(x, ga_ - 2), wet = k2_ * std::pow(x, kVapourPower - 2);
    return {1 + (dry - wet) * x,
            -(kLapse / temperature_) * ((ga_ - 1) * dry - (kVapourPower - 1) * wet)};
}

RefractiveIndex AirColumn::stratosphere(double r) const {
    const double rest = index_at_tropopause_ * std::exp(-scale_ * (r - tropopause));
    return {1 + rest, -scale_ * rest};
}

double refraction_integral(const AirColumn& column, double z0) {
    const double sin_z0 = std::sin(z0);
    if (!(sin_z0 > 0)) return 0;
    const double invariant = column.troposphere(column.ground).n * column.ground * sin_z0;
    const double zt =
        std::asin(invariant / (column.troposphere(column.tropopause).n * column.tropopause));
    const double zs = std::asin(invariant / (column.stratosphere(column.top).n * column.top));
    return -bending([&](double r) { return column.troposphere(r); }, invariant, zt, z0,
                    column.ground) -
           bending([&](double r) { return column.stratosphere(r); }, invariant, zs, zt,
                   column.tropopause);
}

}  // namespace solsys::sky
