// The sine of an object's altitude, and how fast it changes.
#pragma once

#include "solsys/solar_system.h"

namespace solsys::visibility {

// Evaluates at instants in dynamical time for the observer the model has; it counts what it
// evaluates. What cannot be computed is NaN.
class AltitudeSine {
  public:
    AltitudeSine(CSWSolSys& model, const SSO_ID& id) : model_(model), id_(id) {}

    double sine(double jd_et);
    // Of the sign of the rate [1/day].
    double rate(double jd_et);
    // Azimuth, from north through east.
    double azimuth(double jd_et);

    [[nodiscard]] int evaluations() const { return evaluations_; }

  private:
    bool horizontal(double jd_et, double out[3]);
    bool nearby(double jd_et, double out[3]);

    CSWSolSys& model_;
    SSO_ID id_;
    int evaluations_ = 0;
};

}  // namespace solsys::visibility
