// Check values of apparent places, and how the two reductions differ.
#include <cmath>
#include <random>

#include "apps/solsys/selfcheck.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr std::string_view kPlaces =
#include "modern_places_check.inc"
    ;
constexpr std::string_view kStars =
#include "modern_stars_check.inc"
    ;
constexpr double kRadian = 57.29577951308232;  // degrees
constexpr double kMas = 4.84813681109536e-9;   // rad

// Angle between two directions [mas].
double separation(const double* a, const double* b) {
    double cross[3];
    VVprod(a, b, cross);
    return std::atan2(Vmod(cross, 3), VSprod(a, b)) / kMas;
}

void vector(const CheckTable::Row& row, const char* const (&names)[3], double* out) {
    for (int i = 0; i < 3; ++i) out[i] = row[names[i]];
}
constexpr const char* kSeen[3] = {"aberrated_x", "aberrated_y", "aberrated_z"};
constexpr const char* kTrue[3] = {"true_x", "true_y", "true_z"};

// The numbers of the check values: 10 the Moon, 11 the Sun.
SSO_ID body_of(int number) {
    if (number == 10) return {SSO_MOON, 301};
    return {SSO_PLNT, number == 11 ? 10 : number};
}

StarObject star_of(const CheckTable::Row& row) {
    StarObject star;
    const double arcsec_per_year = 1e3 * kMas, mas = kMas;
    star.ra = row["ra_icrs_deg"] / kRadian;
    star.dec = row["dec_icrs_deg"] / kRadian;
    star.pm_ra =
        static_cast<float>(row["pm_ra_mas_yr"] / 1e3 * arcsec_per_year / std::cos(star.dec));
    star.pm_dec = static_cast<float>(row["pm_dec_mas_yr"] / 1e3 * arcsec_per_year);
    star.parallax = static_cast<float>(row["parallax_mas"] * mas);
    star.radial_velocity = static_cast<float>(row["rv_km_s"]);
    return star;
}

bool direction_of_date(CSWSolSys& model, const SSO_ID& id, double* out) {
    double place[3];
    if (!model.GetRADecVis(id, place, 0.0)) return false;
    place[0] = 1;
    sfp(place, out);
    return true;
}

void observe_from_earth(CSWSolSys& model) {
    OBSERVER centre;
    centre.kind = LOCATION_BODY_FIXED;
    centre.body_type = SSO_PLNT, centre.body_number = 3;
    model.SetObserver(&centre);
}

}  // namespace

std::vector<Check> place_checks(CSWSolSys& model) {
    const SolsysReduction before = model.GetReduction();
    model.SetReduction(REDUCTION_MODERN);
    observe_from_earth(model);
    Check gcrs{"Sun, Moon, planets: apparent, ICRS axes", "ERFA on DE405", "mas", 0.01};
    Check date{"the same on the true equator of date", "ERFA on DE405", "mas", 0.05};
    CheckTable(kPlaces).each([&](const CheckTable::Row& row) {
        model.UpdateSys(static_cast<int>(row["tt_day"]), row["tt_fraction"]);
        const SSO_ID id = body_of(static_cast<int>(row["body"]));
        double seen[4] = {}, expected[3], turned[3];
        model.GetSSOVisVec2K(id, seen, 0.0);
        vector(row, kSeen, expected);
        gcrs.add(separation(seen, expected));
        MV3prod(model.GetMtrxEq2K_EqCur(), seen, turned);
        vector(row, kTrue, expected);
        date.add(separation(turned, expected));
    });
    Check stars{"stars: apparent, ICRS axes", "ERFA on DE405", "mas", 0.1};
    CheckTable(kStars).each([&](const CheckTable::Row& row) {
        model.UpdateSys(static_cast<int>(row["tt_day"]), row["tt_fraction"]);
        const StarObject star = star_of(row);
        double seen[3], expected[3];
        model.GetRADecVisStar(&star, nullptr, seen, false);
        vector(row, kSeen, expected);
        stars.add(separation(seen, expected));
    });
    model.SetReduction(before);
    return {gcrs, date, stars};
}

std::vector<Check> reduction_differences(CSWSolSys& model) {
    const struct {
        const char* name;
        int number;
    } kBodies[] = {{"Sun", 11},    {"Moon", 10},  {"Mercury", 1}, {"Venus", 2},   {"Mars", 4},
                   {"Jupiter", 5}, {"Saturn", 6}, {"Uranus", 7},  {"Neptune", 8}, {"Pluto", 9}};
    constexpr int kInstants = 400;
    const SolsysReduction before = model.GetReduction();
    observe_from_earth(model);
    std::vector<Check> checks;
    for (const auto& body : kBodies)
        checks.push_back({std::string(body.name) + ", classic minus modern", "this program",
                          "mas", std::numeric_limits<double>::infinity()});
    std::mt19937_64 random(1960);
    for (int i = 0; i < kInstants; ++i) {
        const int day = 2436935 + static_cast<int>(random() % 36515);
        const double fraction = static_cast<double>(random() % 1000000) / 1e6;
        double places[2][std::size(kBodies)][3] = {};
        for (const SolsysReduction reduction : {REDUCTION_CLASSIC, REDUCTION_MODERN}) {
            model.SetReduction(reduction);
            model.UpdateSys(day, fraction);
            for (std::size_t k = 0; k < std::size(kBodies); ++k)
                direction_of_date(model, body_of(kBodies[k].number), places[reduction][k]);
        }
        for (std::size_t k = 0; k < std::size(kBodies); ++k)
            checks[k].add(separation(places[0][k], places[1][k]));
    }
    model.SetReduction(before);
    return checks;
}

}  // namespace app
