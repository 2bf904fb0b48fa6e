// Check values of apparent places, and how the two reductions differ.
#include <cmath>
#include <limits>

#include "apps/solsys/selfcheck.h"
#include "apps/solsys/units.h"
#include "solsys/stars.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr std::string_view kClassicPlaces =
#include "apparent_places_text.inc"
    ;
constexpr std::string_view kClassicStars =
#include "star_places_text.inc"
    ;
constexpr std::string_view kModernPlaces =
#include "modern_places_text.inc"
    ;
constexpr std::string_view kModernStars =
#include "modern_stars_text.inc"
    ;
constexpr std::string_view kModernChain =
#include "modern_reduction_text.inc"
    ;
constexpr std::string_view kModernStarChain =
#include "modern_star_places_text.inc"
    ;
constexpr double kMas = 4.84813681109536e-9;  // rad

struct Vector {
    double x[3];
};

Vector vector_of(const CheckTable::Row& row, const std::string& stem) {
    return {{row[stem + "x"], row[stem + "y"], row[stem + "z"]}};
}

// The Sun is planet 10; satellites have three digits.
SSO_ID body_of(int number) { return {number > 100 ? SSO_MOON : SSO_PLNT, number}; }

Vector direction_of_date(CSWSolSys& model, const SSO_ID& id) {
    const double none = std::nan("");
    double place[3];
    Vector v{{none, none, none}};
    if (!model.GetRADecVis(id, place, 0.0)) return v;
    place[0] = 1;
    sfp(place, v.x);
    return v;
}

void observe_from_site(CSWSolSys& model, const CheckTable::Row& row) {
    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[0] = row["height_km"] / kAuKm;
    site.location[1] = row["longitude_deg"] * kDegree;
    site.location[2] = row["latitude_deg"] * kDegree;
    model.SetObserver(&site);
}

StarObject star_of(const CheckTable::Row& row) {
    StarObject star;
    const double mas = kMas;
    star.ra = row["ra_icrs_deg"] * kDegree;
    star.dec = row["dec_icrs_deg"] * kDegree;
    star.pm_ra = static_cast<float>(row["pm_ra_mas_yr"] * mas / std::cos(star.dec));
    star.pm_dec = static_cast<float>(row["pm_dec_mas_yr"] * mas);
    star.parallax = static_cast<float>(row["parallax_mas"] * mas);
    star.radial_velocity = static_cast<float>(row["rv_km_s"]);
    return star;
}

void add_step_by_step(CSWSolSys& model, std::vector<Check>& checks) {
    Check gcrs{"Sun, Moon, planets, eight instants: ICRS axes", "ERFA, DE405", "mas", 0.01};
    Check date{"the same: true equator of date", "ERFA, DE405", "mas", 0.05};
    CheckTable(kModernPlaces).each([&](const CheckTable::Row& row) {
        model.UpdateSys(row.whole("tt_day"), row["tt_fraction"]);
        // These rows number the Moon 10 and the Sun 11.
        const int number = row.whole("body");
        const SSO_ID id = body_of(number == 10 ? 301 : number == 11 ? 10 : number);
        double seen[4] = {}, turned[3];
        model.GetSSOVisVec2K(id, seen, 0.0);
        gcrs.add(separation_mas(seen, vector_of(row, "aberrated_").x));
        MV3prod(model.GetMtrxEq2K_EqCur(), seen, turned);
        date.add(separation_mas(turned, vector_of(row, "true_").x));
    });
    Check stars{"five stars, four instants: ICRS axes", "ERFA, DE405", "mas", 0.1};
    CheckTable(kModernStars).each([&](const CheckTable::Row& row) {
        model.UpdateSys(row.whole("tt_day"), row["tt_fraction"]);
        const StarObject star = star_of(row);
        double seen[3] = {};
        model.GetRADecVisStar(&star, nullptr, seen, false);
        stars.add(separation_mas(seen, vector_of(row, "aberrated_").x));
    });
    checks.insert(checks.end(), {gcrs, date, stars});
}

// Whole chains, from the Earth's centre and from sites with UT1 and polar motion.
struct ChainChecks {
    Check gcrs, date, horizon, skyfield;

    explicit ChainChecks(const std::string& what, double bound)
        : gcrs{what + ": ICRS axes", "ERFA, DE405", "mas", bound},
          date{what + ": true equator of date", "ERFA, DE405", "mas", std::fmax(bound, 0.05)},
          horizon{what + ": over the horizon", "ERFA, DE405", "mas", 0.1},
          skyfield{what + ": ICRS axes", "Skyfield, DE405", "mas", bound} {}

    void add(CSWSolSys& model, const CheckTable::Row& row, const double* seen,
             const double* of_date) {
        gcrs.add(separation_mas(seen, vector_of(row, "gcrs_").x));
        date.add(separation_mas(of_date, vector_of(row, "date_").x));
        if (std::isnan(row["latitude_deg"])) {
            skyfield.add(separation_mas(seen, vector_of(row, "skyfield_").x));
            return;
        }
        double v[3];
        model.VecFromRAToAzm(of_date, v);
        horizon.add(separation_mas(v, vector_of(row, "horizon_").x));
    }
    void into(std::vector<Check>& checks) const {
        checks.insert(checks.end(), {gcrs, date, horizon, skyfield});
    }
};

void go_to(CSWSolSys& model, const CheckTable::Row& row) {
    model.SetUT1(row["dut1_s"]);
    model.SetPolarMotion(row["xp_arcsec"], row["yp_arcsec"]);
    std::isnan(row["latitude_deg"]) ? observe_from_earth(model) : observe_from_site(model, row);
    model.UpdateSys(row.whole("day"), row["fraction"]);
}

void add_whole_chains(CSWSolSys& model, std::vector<Check>& checks) {
    ChainChecks bodies("ten bodies and the Galilean satellites", 0.01);
    CheckTable(kModernChain).each([&](const CheckTable::Row& row) {
        go_to(model, row);
        const SSO_ID id = body_of(row.whole("body"));
        double seen[4] = {};
        model.GetSSOVisVec2K(id, seen, 0.0);
        bodies.add(model, row, seen, direction_of_date(model, id).x);
    });
    ChainChecks stars("40 stars", 0.1);
    CheckTable(kModernStarChain).each([&](const CheckTable::Row& row) {
        go_to(model, row);
        StarObject star;
        star.ra = row["ra"], star.dec = row["dec"];
        star.pm_ra = static_cast<float>(row["pm_ra"]);
        star.pm_dec = static_cast<float>(row["pm_dec"]);
        star.parallax = static_cast<float>(row["parallax"]);
        star.radial_velocity = static_cast<float>(row["velocity"]);
        double seen[3] = {}, of_date[3] = {};
        model.GetRADecVisStar(&star, nullptr, seen, false);
        model.GetRADecVisStar(&star, nullptr, of_date, true);
        stars.add(model, row, seen, of_date);
    });
    model.SetUT1(std::nan(""));
    model.SetPolarMotion(std::nan(""), std::nan(""));
    observe_from_earth(model);
    bodies.into(checks);
    stars.into(checks);
}

}  // namespace

CheckGroup classic_place_checks(CSWSolSys& model) {
    model.SetReduction(REDUCTION_CLASSIC);
    Check bodies{"Sun, Moon, planets, from the centre and from sites",
                 "ERFA with the same models, DE405", "mas", 0.002};
    CheckTable(kClassicPlaces).each([&](const CheckTable::Row& row) {
        row["from_site"] == 1 ? observe_from_site(model, row) : observe_from_earth(model);
        model.UpdateSys(row.whole("day"), row["fraction"]);
        const Vector seen = direction_of_date(model, body_of(row.whole("body")));
        bodies.add(separation_mas(seen.x, vector_of(row, "").x));
    });
    observe_from_earth(model);
    Check stars{"stars without deflection", "ERFA with the same models", "mas", 0.001};
    CheckTable(kClassicStars).each([&](const CheckTable::Row& row) {
        const double observer[6] = {row["rx"], row["ry"], row["rz"],
                                    row["vx"], row["vy"], row["vz"]};
        double out[3] = {}, light_years = 0;
        CalcProperMotionD(row["years"], observer, out, row["ra"], row["dec"], row["pm_ra"],
                          row["pm_dec"], row["parallax"], row["velocity"], light_years);
        stars.add(separation_mas(out, vector_of(row, "plain_").x));
    });
    return {"Apparent places, classic reduction", {bodies, stars}};
}

CheckGroup modern_place_checks(CSWSolSys& model) {
    model.SetReduction(REDUCTION_MODERN);
    observe_from_earth(model);
    CheckGroup group{"Apparent places, modern reduction", {}};
    add_step_by_step(model, group.checks);
    add_whole_chains(model, group.checks);
    return group;
}

CheckGroup reduction_differences(CSWSolSys& model) {
    constexpr double kNoBound = std::numeric_limits<double>::infinity();
    observe_from_earth(model);
    CheckGroup group{"Classic minus modern, apparent places of date 1960-2059", {}};
    for (const NamedBody& body : ten_bodies())
        group.checks.push_back({body.name, "the other reduction", "mas", kNoBound});
    group.checks.push_back({"apparent sidereal time", "the other reduction", "mas", kNoBound});
    for (const SplitDate& t : spread_instants(400)) {
        std::vector<Vector> classic;
        double sidereal[2] = {};
        for (const SolsysReduction reduction : {REDUCTION_CLASSIC, REDUCTION_MODERN}) {
            model.SetReduction(reduction);
            model.UpdateSys(t.day, t.fraction);
            sidereal[reduction] = model.GetSiderealTime(true);
            for (std::size_t k = 0; k < ten_bodies().size(); ++k) {
                const Vector v = direction_of_date(model, ten_bodies()[k].id);
                if (reduction == REDUCTION_CLASSIC) {
                    classic.push_back(v);
                } else {
                    group.checks[k].add(separation_mas(classic[k].x, v.x));
                }
            }
        }
        group.checks.back().add(std::remainder(sidereal[0] - sidereal[1], 360 * kDegree) /
                                kMas);
    }
    return group;
}

}  // namespace app
