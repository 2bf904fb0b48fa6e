// Satellites described by precessing ellipses: the tables and their evaluation.
#include <iterator>
#include <span>

#include "core/fast_trig.h"
#include "core/linalg.h"
#include "ephemeris/satellites/equinoctial.h"
#include "solsys/kepler.h"
#include "solsys/satellite_theory.h"

using namespace solsys;
using namespace solsys::satellites;

namespace {

constexpr PetitSatElements kJupiter[] = {
#include "mean_elements_jupiter.inc"
};
constexpr PetitSatElements kSaturn[] = {
#include "mean_elements_saturn.inc"
};
constexpr PetitSatElements kUranus[] = {
#include "mean_elements_uranus.inc"
};
constexpr PetitSatElements kNeptune[] = {
#include "mean_elements_neptune.inc"
};
constexpr PetitSatElements kPluto[] = {
#include "mean_elements_pluto.inc"
};
constexpr PetitSatElements kDwarfPlanets[] = {
#include "mean_elements_dwarf_planets.inc"
};
static_assert(std::size(kJupiter) == 72 && kJupiter[0].number == 506 &&
              kJupiter[8].number == 517);
static_assert(std::size(kSaturn) == 65 && kSaturn[0].number == 619 &&
              kSaturn[64].number == 683);
static_assert(std::size(kUranus) == 12 && kUranus[0].number == 716);
static_assert(std::size(kNeptune) == 6 && kNeptune[0].number == 809);
static_assert(std::size(kPluto) == 6 && kPluto[4].number == 905 && kPluto[5].number == 0);
static_assert(std::size(kDwarfPlanets) == 3 && kDwarfPlanets[1].number == 1401);

std::span<const PetitSatElements> table_of(int system_code) {
    switch (system_code) {
        case 5:
            return kJupiter;
        case 6:
            return kSaturn;
        case 7:
            return kUranus;
        case 8:
            return kNeptune;
        case 9:
            return kPluto;
        case 12:
        case 14:
            return kDwarfPlanets;
        default:
            return {};
    }
}

// Null for a row that does not exist.
const PetitSatElements* row_of(int system_code, int row) {
    const auto table = table_of(system_code);
    if (row < 0 || static_cast<std::size_t>(row) >= table.size()) return nullptr;
    return &table[static_cast<std::size_t>(row)];
}

// From a plane given by its pole, x axis at its ascending node, to the equator.
Mat3 equator_from_plane(double pole_ra, double pole_dec) {
    const solsys::SinCos phi = fast_sincos(pole_ra + kHalfPi);
    const solsys::SinCos theta = fast_sincos(kHalfPi - pole_dec);
    return {{phi.cos, -phi.sin * theta.cos, phi.sin * theta.sin},
            {phi.sin, phi.cos * theta.cos, -phi.cos * theta.sin},
            {0, theta.sin, theta.cos}};
}

}  // namespace

int PetitSat::GetSatVector(int, double, int, unsigned char, double*) const {
    return SAT_NOT_COVERED;
}

double PetitSat::GetPrimaryGM(int) const { return -1.0; }

int PetitSat::EvalMeanElements(int systemCode, int day, double fraction, int row, unsigned char,
                               double* out) const {
    const PetitSatElements* table_row = row_of(systemCode, row);
    if (!table_row) return SAT_NOT_COVERED;
    if (!in_reach({day, fraction})) return kInvalid;
    const PetitSatElements& r = *table_row;

    const double dt = day - r.epoch + fraction;
    const auto at_instant = [&](double degrees, double rate) {
        return degrees * kDegree + rate * kDegree * dt;
    };
    const double elements[6] = {r.a,
                                r.e,
                                r.i * kDegree,
                                at_instant(r.m, r.rate_m),
                                at_instant(r.peri, r.rate_peri),
                                at_instant(r.node, r.rate_node)};
    // In the unit of a, km or au, and days.
    const double mu =
        r.gm * kSecondsPerDay * kSecondsPerDay * (r.unit_flag == 1 ? km3ToAU3 : 1.0);

    double in_plane[6];
    const int code = KepElla(elements, mu, in_plane);
    if (code < 0) return code;

    State state =
        equator_from_plane(r.pole_ra * kDegree, r.pole_dec * kDegree) * load_state(in_plane);
    if (r.unit_flag == 0) state = kmToAU * state;
    store(state, out);
    return kOk;
}

double PetitSat::MeanElementsGM(int systemCode, int row) const {
    const PetitSatElements* table_row = row_of(systemCode, row);
    if (!table_row) return -1.0;
    return table_row->gm * km3ToAU3 * kSecondsPerDay * kSecondsPerDay;
}
