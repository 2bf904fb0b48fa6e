// The atmosphere as the ray sees it: its refractive index by the distance from the Earth's
// centre.
#pragma once

#include "solsys/sky/refraction.h"

namespace solsys::sky {

struct RefractiveIndex {
    double n, slope;  // slope per metre
};

// Hohenkerk & Sinclair 1985: a troposphere with a lapse rate, an isothermal stratosphere.
class AirColumn {
  public:
    explicit AirColumn(const Atmosphere& atmosphere);

    [[nodiscard]] RefractiveIndex troposphere(double r) const;
    [[nodiscard]] RefractiveIndex stratosphere(double r) const;

    double ground;      // distance of the observer from the Earth's centre [m]
    double tropopause;  // of the end of the lapse
    double top;         // beyond, nothing bends

  private:
    double temperature_;          // of the observer [K]
    double ga_, k1_, k2_;         // see the constructor
    double scale_;                // of the stratosphere [1/m]
    double index_at_tropopause_;  // n - 1
};

// Refraction [rad] for a zenith distance [rad] of the ray at the observer.
double refraction_integral(const AirColumn& column, double zenith_distance);

}  // namespace solsys::sky
