// Recorded instants of events, found again.
#include <algorithm>
#include <cmath>
#include <string>

#include "apps/solsys/selfcheck.h"
#include "apps/solsys/units.h"
#include "solsys/diary.h"
#include "solsys/eclipses.h"
#include "solsys/sky/phenomena.h"
#include "solsys/time_scales.h"

namespace app {
namespace {

namespace sky = solsys::sky;

constexpr std::string_view kEvents =
#include "sky_events_text.inc"
    ;
constexpr std::string_view kSolarEclipses =
#include "solar_eclipses_text.inc"
    ;
constexpr std::string_view kLunarEclipses =
#include "lunar_eclipses_text.inc"
    ;
constexpr std::string_view kPhenomena =
#include "satellite_phenomena_text.inc"
    ;

// Recorded instants of some kinds of a body within a span, each beside the nearest event found.
void compare(const std::vector<SkyEvent>& found, int first_kind, int last_kind, int body,
             double from, double to, Check& check) {
    CheckTable(kEvents).each([&](const CheckTable::Row& row) {
        const int kind = row.whole("kind");
        if (kind < first_kind || kind > last_kind) return;
        if (body != 0 && row.whole("body") != body) return;
        if (!(row["jd_tt"] > from + 1 && row["jd_tt"] < to - 1)) return;
        double nearest = std::nan("");
        for (const SkyEvent& event : found) {
            const int day = static_cast<int>(event.time);
            const double tt = event.time + ET_UT::Get(day, event.time - day) / kSecondsPerDay;
            const double difference = (tt - row["jd_tt"]) * kSecondsPerDay;
            if (event.kind == kind && !(std::fabs(difference) > std::fabs(nearest)))
                nearest = difference;
        }
        check.add(nearest);
    });
}

void add_diary(CSWSolSys& model, std::vector<Check>& checks) {
    constexpr double kFrom = 2451545, kTo = 2455197;                // 2000 to 2009
    constexpr double kPlanetsFrom = 2451910, kPlanetsTo = 2453371;  // 2001 to 2004
    CSkyDiaryEvents diary(&model);
    Check seasons{"equinoxes, solstices 2000-2009", "DE431 (Swiss Ephemeris)", "s", 5};
    diary.InitSearch(nullptr, kFrom, kTo, false);
    diary.SearchEquinox();
    compare(diary.GetResults(), 1, 4, 0, kFrom, kTo, seasons);
    Check phases{"phases of the Moon 2000-2009", "DE431 (Swiss Ephemeris)", "s", 2};
    diary.InitSearch(nullptr, kFrom, kTo, false);
    diary.SearchMoonPhases();
    compare(diary.GetResults(), 7, 10, 0, kFrom, kTo, phases);
    Check inner{"conjunctions, elongations of Mercury and Venus 2001-2004",
                "DE431 (Swiss Ephemeris)", "s", 60};
    for (const int planet : {1, 2}) {
        diary.InitSearch(nullptr, kPlanetsFrom, kPlanetsTo, false);
        diary.SearchInner({SSO_PLNT, planet});
        compare(diary.GetResults(), 11, 14, planet, kPlanetsFrom, kPlanetsTo, inner);
    }
    checks.insert(checks.end(), {seasons, phases, inner});
}

struct EclipseChecks {
    Check instant, gamma, magnitude;

    void add(const ECLIPSE& e, double jd_tt, double gamma_, double magnitude_) {
        instant.add((e.day - jd_tt + e.greatest) * kSecondsPerDay + e.delta_t);
        gamma.add(e.gamma - gamma_);
        magnitude.add((e.kind == ECLIPSE_LUNAR ? e.penumbral_magnitude : e.magnitude) -
                      magnitude_);
    }
};

ECLIPSE eclipse_near(CSWEclipses& search, double jd, short kind) {
    ECLIPSE e;
    search.InitSearch(jd - 3, jd + 3);
    search.SearchNext(&e, kind);
    return e;
}

// The first of every five rows.
void add_eclipses(CSWSolSys& model, std::vector<Check>& checks) {
    CSWEclipses search(&model);
    search.SetPrecise(true);
    EclipseChecks solar{
        {"greatest solar eclipse 1701-2200", "canon of Espenak & Meeus 2006", "s", 1.3},
        {"its gamma", "the same, printed to 1e-4", "1", 1.4e-4},
        {"its magnitude", "the same, printed to 1e-4", "1", 1.4e-4}};
    int count = 0;
    CheckTable(kSolarEclipses).each([&](const CheckTable::Row& row) {
        if (count++ % 5 != 0) return;
        const double jd = row["jd_td"];
        solar.add(eclipse_near(search, jd, ECLIPSE_SOLAR), jd, row["gamma"], row["magnitude"]);
    });
    search.SetShadow(ECLIPSE_SHADOW_FIFTIETH);
    EclipseChecks lunar{{"greatest lunar eclipse 1701-2200", "DE431", "s", 1},
                        {"its gamma", "DE431", "1", 5e-5},
                        {"its penumbral magnitude, rule of 1/50", "DE431", "1", 1.5e-4}};
    CheckTable(kLunarEclipses).each([&](const CheckTable::Row& row) {
        if (count++ % 5 != 0) return;
        const double jd = row["calc_greatest_jd_tt"];
        lunar.add(eclipse_near(search, jd, ECLIPSE_LUNAR), jd, row["calc_gamma"],
                  row["cha_pen_magnitude"]);
    });
    for (const EclipseChecks& c : {solar, lunar})
        checks.insert(checks.end(), {c.instant, c.gamma, c.magnitude});
}

// The published list of ten days of January 2016.
Check phenomena(CSWSolSys& classic) {
    Check check{"phenomena of the Galilean satellites, January 2016", "Swiss Ephemeris", "s",
                60};
    sky::Model model(classic);
    const sky::Span span{*sky::Instant::from_iso("2015-12-31"),
                         *sky::Instant::from_iso("2016-01-12")};
    const auto found =
        sky::satellite_phenomena(model, sky::Body({SSO_PLNT, 5}, "Jupiter"), span);
    CheckTable(kPhenomena).each([&](const CheckTable::Row& row) {
        const auto at = sky::Instant::from_iso(std::string(row.text("time_utc")));
        if (!at || *at < span.from || span.to < *at) return;
        double nearest = std::nan("");
        for (const auto& event : found) {
            const double difference = sky::days_between(*at, event.at) * kSecondsPerDay;
            if (event.moon.id.number == row.whole("satellite") &&
                row.text("phenomenon") == sky::to_string(event.kind) &&
                event.begins == (row.text("phase") == "begins") &&
                !(std::fabs(difference) > std::fabs(nearest)))
                nearest = difference;
        }
        check.add(nearest);
    });
    return check;
}

}  // namespace

CheckGroup event_checks(CSWSolSys& model) {
    model.SetReduction(REDUCTION_MODERN);
    CheckGroup group{"Events, on the built-in theories", {}};
    add_diary(model, group.checks);
    add_eclipses(model, group.checks);
    group.checks.push_back(phenomena(model));
    return group;
}

}  // namespace app
