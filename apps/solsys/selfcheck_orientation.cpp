// Check values of the Earth's orientation: precession, nutation, rotation.
#include <cmath>
#include <string>

#include "apps/solsys/selfcheck.h"

namespace app {
namespace {

constexpr std::string_view kOrientation =
#include "modern_orientation_check.inc"
    ;
constexpr std::string_view kTerrestrial =
#include "modern_terrestrial_check.inc"
    ;

void move_to(CSWSolSys& model, const CheckTable::Row& row) {
    model.UpdateSys(static_cast<int>(row["tt_day"]), row["tt_fraction"]);
}

// Columns stem11 .. stem33 of a row less a matrix, or its transpose.
double largest(const CheckTable::Row& row, const std::string& stem, const double* m,
               bool transposed) {
    double most = 0;
    for (int i = 0; i < 3; ++i) {
        for (int k = 0; k < 3; ++k) {
            const std::string name =
                stem + static_cast<char>('1' + i) + static_cast<char>('1' + k);
            most = std::fmax(most,
                             std::fabs(row[name] - (transposed ? m[3 * k + i] : m[3 * i + k])));
        }
    }
    return most;
}

}  // namespace

std::vector<Check> orientation_checks(CSWSolSys& model) {
    const SolsysReduction before = model.GetReduction();
    model.SetReduction(REDUCTION_MODERN);
    Check nutation{"nutation, IAU 2000A with IAU 2006", "ERFA", "rad", 1e-14};
    Check matrix{"precession-nutation matrix, IAU 2006/2000A", "ERFA", "1", 1e-14};
    CheckTable(kOrientation).each([&](const CheckTable::Row& row) {
        move_to(model, row);
        double obliquity = 0, d_epsilon = 0, d_psi = 0;
        model.GetNutationAngles(&obliquity, &d_epsilon, &d_psi);
        nutation.add(d_psi - row["dpsi"]);
        nutation.add(d_epsilon - row["deps"]);
        matrix.add(largest(row, "m", model.GetMtrxEq2K_EqCur(), false));
    });
    Check earth{"celestial to terrestrial matrix, UT1 and polar motion", "ERFA", "1", 2e-11};
    CheckTable(kTerrestrial).each([&](const CheckTable::Row& row) {
        model.SetUT1(row["dut1_s"]);
        model.SetPolarMotion(row["xp_arcsec"], row["yp_arcsec"]);
        move_to(model, row);
        double m[9];
        model.GetMtrxPl_Eq(SSO_ID(SSO_PLNT, 3), m, false);
        earth.add(largest(row, "t", m, true));
    });
    const double none = std::nan("");
    model.SetUT1(none);
    model.SetPolarMotion(none, none);
    model.SetReduction(before);
    return {nutation, matrix, earth};
}

}  // namespace app
