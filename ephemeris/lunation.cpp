#include "ephemeris/lunation.h"

namespace solsys {

double mean_phase(double lunation) {
    constexpr double kLunationsPerCentury = 1236.85;
    const double T = lunation / kLunationsPerCentury;
    const double secular = ((0.00000000073 * T - 0.000000150) * T + 0.00015437) * T * T;  // day
    return kFirstNewMoon + kSynodicMonth * lunation + secular;
}

}  // namespace solsys
