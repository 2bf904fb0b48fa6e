// Check values of theories, calendars, magnitudes, constellations, refraction and events.
#include <cmath>

#include "apps/solsys/selfcheck.h"
#include "solsys/calendar.h"
#include "solsys/diary.h"
#include "solsys/magnitudes.h"
#include "solsys/sky/refraction.h"
#include "solsys/time_scales.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr std::string_view kSatellites =
#include "satellite_theories_check.inc"
    ;
constexpr std::string_view kDeltaT =
#include "delta_t_check.inc"
    ;
constexpr std::string_view kJulianDates =
#include "julian_dates_check.inc"
    ;
constexpr std::string_view kConstellations =
#include "constellations_check.inc"
    ;
constexpr std::string_view kMagnitudes =
#include "magnitudes_check.inc"
    ;
constexpr std::string_view kRefraction =
#include "modern_refraction_check.inc"
    ;
constexpr std::string_view kEvents =
#include "sky_events_check.inc"
    ;
constexpr double kRadian = 57.29577951308232;  // degrees
constexpr double kSecondsPerDay = 86400;

Check satellites(CSWSolSys& model) {
    Check check{"satellites about their planets, relative", "second program", "1", 1e-9};
    CheckTable(kSatellites).each([&](const CheckTable::Row& row) {
        const double jd = row["jd"];
        const int day = static_cast<int>(jd);
        model.SetTime(day, jd - day, false);
        double r[3] = {}, expected[3] = {row["x"], row["y"], row["z"]}, difference[3];
        // The rows of 609 count from the barycentre of the system.
        const SSO_ID id(SSO_MOON, static_cast<int>(row["body"]));
        if (id.number == 609 || !model.GetVecCentre2K(id, 0, r)) return;
        Vsub(r, expected, difference);
        check.add(Vmod(difference, 3) / Vmod(expected, 3));
    });
    return check;
}

Check delta_t() {
    Check check{"Delta T, -1000 to today", "table and polynomials", "s", 2e-9};
    CheckTable(kDeltaT).each([&](const CheckTable::Row& row) {
        check.add(ET_UT::Get(static_cast<int>(row["day"]), row["fraction"]) - row["delta_t_s"]);
    });
    return check;
}

Check calendar() {
    Check check{"calendar dates of Julian dates", "second program", "s", 1e-4};
    CheckTable(kJulianDates).each([&](const CheckTable::Row& row) {
        short y = 0, m = 0, d = 0, hour = 0, minute = 0;
        double day_fraction = 0, second = 0;
        JD(static_cast<int>(row["jd_day"]), row["jd_fraction"], &y, &m, &d, &day_fraction,
           &hour, &minute, &second);
        const bool same = y == row["year"] && m == row["month"] && d == row["day"];
        check.add(same ? (day_fraction - row["day_fraction"]) * kSecondsPerDay : std::nan(""));
    });
    return check;
}

Check constellations(CSWSolSys& model) {
    Check check{"constellations at B1875, wrong ones", "astropy", "1", 0};
    model.UpdateSys(2451545, 0);
    CheckTable(kConstellations).each([&](const CheckTable::Row& row) {
        double place[3] = {1, row["ra_deg"] / kRadian, row["dec_deg"] / kRadian}, v[3];
        sfp(place, v);
        MV3prod(model.GetMtrxEq2K_EqCur(), v, v);
        psf1(v, 1.0, place);
        check.add(model.RADecInConstell(place[1], place[2]) !=
                  static_cast<char>(static_cast<int>(row["index"])));
    });
    return check;
}

// From a triangle Sun, body, observer in a plane.
Check magnitudes() {
    Check check{"classic magnitudes, parts of the tolerance", "printed values", "1", 1};
    CheckTable(kMagnitudes).each([&](const CheckTable::Row& row) {
        const double phase = row["phase_deg"] / kRadian, r = row["r_au"],
                     delta = row["delta_au"];
        const double body[3] = {r, 0, 0};
        const double observer[3] = {r - delta * std::cos(phase), delta * std::sin(phase), 0};
        float magnitude = 0;
        if (StarMagPlanet(observer, static_cast<int>(row["body"]), body, &magnitude) != 0)
            return;
        check.add((magnitude - row["magnitude"]) / row["tolerance"]);
    });
    return check;
}

std::vector<Check> refraction() {
    using namespace solsys::sky;
    Check integral{"refraction, integral of 8 points", "512 steps", "arcsec", 0.008};
    Check back{"refraction, there and back", "itself", "arcsec", 0.001};
    CheckTable(kRefraction).each([&](const CheckTable::Row& row) {
        const Atmosphere air{
            {row["pressure_hpa"], row["temperature_c"], row["humidity"], row["wavelength_um"]},
            row["latitude_deg"],
            row["height_m"]};
        const double apparent = row["altitude_deg"], nan = std::nan("");
        const auto there = refraction_of_apparent(apparent, air);
        integral.add(there.value_or(nan) * 3600 - row["quadrature"]);
        if (!there) return;
        back.add((refraction_of_true(apparent - *there, air).value_or(nan) - *there) * 3600);
    });
    return {integral, back};
}

}  // namespace

std::vector<Check> table_checks(CSWSolSys& model) {
    const SolsysReduction before = model.GetReduction();
    model.SetReduction(REDUCTION_MODERN);
    std::vector<Check> checks{satellites(model), delta_t(), calendar(), constellations(model),
                              magnitudes()};
    for (const Check& check : refraction()) checks.push_back(check);
    model.SetReduction(before);
    return checks;
}

std::vector<Check> event_checks(CSWSolSys& model) {
    constexpr double kFrom = 2451545, kTo = 2455197;  // 2000 to 2009
    const SolsysReduction before = model.GetReduction();
    model.SetReduction(REDUCTION_MODERN);
    CSkyDiaryEvents diary(&model);
    diary.InitSearch(nullptr, kFrom, kTo, false);
    diary.SearchEquinox();
    Check seasons{"seasons 2000-2009", "DE431, another program", "s", 30};
    CheckTable(kEvents).each([&](const CheckTable::Row& row) {
        const int kind = static_cast<int>(row["kind"]);
        if (kind < 1 || kind > 4 || !(row["jd_tt"] > kFrom + 1 && row["jd_tt"] < kTo - 1))
            return;
        double nearest = std::nan("");
        for (const SkyEvent& event : diary.GetResults()) {
            const int day = static_cast<int>(event.time);
            const double tt = event.time + ET_UT::Get(day, event.time - day) / kSecondsPerDay;
            const double difference = (tt - row["jd_tt"]) * kSecondsPerDay;
            if (event.kind == kind && !(std::fabs(difference) > std::fabs(nearest)))
                nearest = difference;
        }
        seasons.add(nearest);
    });
    model.SetReduction(before);
    return {seasons};
}

}  // namespace app
