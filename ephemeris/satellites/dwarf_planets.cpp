// The satellites of Pluto, Eris and Haumea: table rows throughout.
#include "core/linalg.h"
#include "solsys/satellite_theory.h"

using namespace solsys;

namespace {

constexpr int kPlutoSystem = 9;
constexpr int kErisSystem = 12;
constexpr int kHaumeaSystem = 14;  // rows 1 and 2 of the table shared with Eris

// From Pluto to the barycentre of Pluto and Charon, as a part of Charon's distance.
constexpr double kCharonShare = 0.10434393193013883;

}  // namespace

// 1256.019157 km^3/s^2.
ErisSat::ErisSat() : primary_gm_(2.8005769640396832e-12) {}

int ErisSat::GetSatVector(int day, double fraction, int moonNumber,
                          unsigned char velocityWanted, double* out) const {
    if (moonNumber % 100 != 1) return SAT_NOT_COVERED;
    return EvalMeanElements(kErisSystem, day, fraction, 0, velocityWanted, out);
}

double ErisSat::GetPrimaryGM(int moonNumber) const {
    return moonNumber == 1 ? primary_gm_ : -1.0;
}

// 280.2233411 km^3/s^2.
HaumeaSat::HaumeaSat() : primary_gm_(6.248209113635827e-13) {}

int HaumeaSat::GetSatVector(int day, double fraction, int moonNumber,
                            unsigned char velocityWanted, double* out) const {
    const int moon = moonNumber % 100;
    if (moon != 1 && moon != 2) return SAT_NOT_COVERED;
    return EvalMeanElements(kHaumeaSystem, day, fraction, moon, velocityWanted, out);
}

double HaumeaSat::GetPrimaryGM(int) const { return primary_gm_; }

// Pluto and Charon together, 981.5 km^3/s^2.
PlutoSat::PlutoSat() : primary_gm_(2.188474813216639e-12) {}

int PlutoSat::GetSatVector(int day, double fraction, int moonNumber,
                           unsigned char velocityWanted, double* out) const {
    const int moon = moonNumber % 100;
    if (moon < 1 || moon > 5) return SAT_NOT_COVERED;
    if (moon == 1) return EvalMeanElements(kPlutoSystem, day, fraction, 0, velocityWanted, out);

    // These orbits are about the barycentre: carry the position over to Pluto.
    double charon[6];
    Vec3 barycentre{0, 0, 0};
    if (EvalMeanElements(kPlutoSystem, day, fraction, 0, 0, charon) == 0)
        barycentre = kCharonShare * load(charon);

    const int code =
        EvalMeanElements(kPlutoSystem, day, fraction, moon - 1, velocityWanted, out);
    if (code == 0) store(load(out) + barycentre, out);
    return code;
}

double PlutoSat::GetPrimaryGM(int moonNumber) const {
    return moonNumber >= 1 && moonNumber <= 3 ? primary_gm_ : -1.0;
}
