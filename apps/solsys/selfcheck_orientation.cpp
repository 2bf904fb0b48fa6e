// Check values of the Earth's orientation: precession, nutation, rotation.
#include <cmath>
#include <string>

#include "apps/solsys/selfcheck.h"
#include "apps/solsys/units.h"
#include "solsys/calendar.h"
#include "solsys/earth_orientation.h"
#include "solsys/time_scales.h"

namespace app {
namespace {

constexpr std::string_view kClassic =
#include "earth_orientation_text.inc"
    ;
constexpr std::string_view kModern =
#include "modern_orientation_text.inc"
    ;
constexpr std::string_view kTerrestrial =
#include "modern_terrestrial_text.inc"
    ;
constexpr std::string_view kDeltaT =
#include "delta_t_text.inc"
    ;
constexpr std::string_view kJulianDates =
#include "julian_dates_text.inc"
    ;

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

void add_classic(std::vector<Check>& checks) {
    Check nutation{"IAU 1980 nutation, 3000 BC to AD 3000", "ERFA nut80", "rad", 4e-15};
    Check precession{"precession angles, IAU 1976", "ERFA prec76", "rad", 4e-15};
    CheckTable(kClassic).each([&](const CheckTable::Row& row) {
        const int day = row.whole("day");
        double obliquity = 0, d_psi = 0, d_epsilon = 0;
        NutationSeidelman(day, row["fraction"], obliquity, d_psi, d_epsilon);
        nutation.add(d_psi - row["d_psi"]);
        nutation.add(d_epsilon - row["d_epsilon"]);
        double m[9], zeta = 0, z = 0, theta = 0;
        Precession(day, row["fraction"], 2451545, 0.0, m, &zeta, &z, &theta);
        precession.add(zeta - row["zeta"]);
        precession.add(z - row["z"]);
        precession.add(theta - row["theta"]);
    });
    checks.push_back(nutation);
    checks.push_back(precession);
}

void add_modern(CSWSolSys& model, std::vector<Check>& checks) {
    Check nutation{"nutation, IAU 2000A fitted to IAU 2006", "ERFA nut06a", "rad", 1e-15};
    Check matrix{"bias, precession, nutation in one matrix", "ERFA pnm06a", "1", 1e-14};
    CheckTable(kModern).each([&](const CheckTable::Row& row) {
        model.UpdateSys(row.whole("tt_day"), row["tt_fraction"]);
        double obliquity = 0, d_epsilon = 0, d_psi = 0;
        model.GetNutationAngles(&obliquity, &d_epsilon, &d_psi);
        nutation.add(d_psi - row["dpsi"]);
        nutation.add(d_epsilon - row["deps"]);
        matrix.add(largest(row, "m", model.GetMtrxEq2K_EqCur(), false));
    });
    Check earth{"celestial to terrestrial, with UT1 and polar motion", "ERFA c2t06a", "1",
                2e-11};
    CheckTable(kTerrestrial).each([&](const CheckTable::Row& row) {
        model.SetUT1(row["dut1_s"]);
        model.SetPolarMotion(row["xp_arcsec"], row["yp_arcsec"]);
        model.UpdateSys(row.whole("tt_day"), row["tt_fraction"]);
        double m[9];
        model.GetMtrxPl_Eq(SSO_ID(SSO_PLNT, 3), m, false);
        earth.add(largest(row, "t", m, true));
    });
    model.SetUT1(std::nan(""));
    model.SetPolarMotion(std::nan(""), std::nan(""));
    checks.insert(checks.end(), {nutation, matrix, earth});
}

Check delta_t() {
    Check check{"Delta T, -1000 to today", "the table and its polynomials", "s", 2e-9};
    CheckTable(kDeltaT).each([&](const CheckTable::Row& row) {
        check.add(ET_UT::Get(row.whole("day"), row["fraction"]) - row["delta_t_s"]);
    });
    return check;
}

Check calendar() {
    Check check{"calendar dates of Julian dates", "another program", "s", 1e-4};
    CheckTable(kJulianDates).each([&](const CheckTable::Row& row) {
        short y = 0, m = 0, d = 0, hour = 0, minute = 0;
        double day_fraction = 0, second = 0;
        JD(row.whole("jd_day"), row["jd_fraction"], &y, &m, &d, &day_fraction, &hour, &minute,
           &second);
        const bool same = y == row["year"] && m == row["month"] && d == row["day"];
        check.add(same ? (day_fraction - row["day_fraction"]) * kSecondsPerDay : std::nan(""));
    });
    return check;
}

}  // namespace

CheckGroup orientation_checks(CSWSolSys& model) {
    CheckGroup group{"Earth orientation, time, calendar", {}};
    add_classic(group.checks);
    model.SetReduction(REDUCTION_MODERN);
    add_modern(model, group.checks);
    group.checks.push_back(delta_t());
    group.checks.push_back(calendar());
    return group;
}

}  // namespace app
