// Check values of refraction, magnitudes and constellations.
#include <cmath>

#include "apps/solsys/selfcheck.h"
#include "apps/solsys/units.h"
#include "solsys/magnitudes.h"
#include "solsys/sky/refraction.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr std::string_view kConstellations =
#include "constellations_text.inc"
    ;
constexpr std::string_view kMagnitudes =
#include "magnitudes_text.inc"
    ;
constexpr std::string_view kRefraction =
#include "modern_refraction_text.inc"
    ;

Check constellations(CSWSolSys& model) {
    Check check{"constellations (1: another one)", "astropy's lookup", "1", 0};
    model.UpdateSys(2451545, 0);
    CheckTable(kConstellations).each([&](const CheckTable::Row& row) {
        double place[3] = {1, row["ra_deg"] * kDegree, row["dec_deg"] * kDegree}, v[3], date[3];
        sfp(place, v);
        MV3prod(model.GetMtrxEq2K_EqCur(), v, date);
        psf1(date, 1.0, place);
        check.add(model.RADecInConstell(place[1], place[2]) !=
                  static_cast<char>(row.whole("index")));
    });
    return check;
}

// From a triangle of the Sun, the body and the observer.
Check magnitudes() {
    Check check{"classic magnitudes, in units of each one's tolerance", "printed values", "1",
                1};
    CheckTable(kMagnitudes).each([&](const CheckTable::Row& row) {
        const double phase = row["phase_deg"] * kDegree, r = row["r_au"],
                     delta = row["delta_au"];
        const double body[3] = {r, 0, 0};
        const double observer[3] = {r - delta * std::cos(phase), delta * std::sin(phase), 0};
        float magnitude = 0;
        if (StarMagPlanet(observer, row.whole("body"), body, &magnitude) != 0) return;
        check.add((double{magnitude} - row["magnitude"]) / row["tolerance"]);
    });
    return check;
}

void add_refraction(std::vector<Check>& checks) {
    using namespace solsys::sky;
    Check integral{"refraction, -1 to 89 degrees, six kinds of air",
                   "the integral by 512 steps a layer", "arcsec", 0.007};
    Check back{"refraction, to the true altitude and back", "itself", "arcsec", 0.001};
    CheckTable(kRefraction).each([&](const CheckTable::Row& row) {
        const Atmosphere air{
            {row["pressure_hpa"], row["temperature_c"], row["humidity"], row["wavelength_um"]},
            row["latitude_deg"],
            row["height_m"]};
        const double apparent = row["altitude_deg"], nan = std::nan("");
        const double there = refraction_of_apparent(apparent, air).value_or(nan);
        integral.add(there * 3600 - row["quadrature"]);
        back.add((refraction_of_true(apparent - there, air).value_or(nan) - there) * 3600);
    });
    checks.push_back(integral);
    checks.push_back(back);
}

}  // namespace

CheckGroup table_checks(CSWSolSys& model) {
    model.SetReduction(REDUCTION_MODERN);
    CheckGroup group{"Constellations, magnitudes, refraction",
                     {constellations(model), magnitudes()}};
    add_refraction(group.checks);
    return group;
}

}  // namespace app
