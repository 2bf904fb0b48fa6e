// The built-in theories against recorded states and against a DE file.
#include <cmath>

#include "apps/solsys/selfcheck.h"
#include "solsys/toolkit.h"

namespace app {
namespace {

constexpr std::string_view kPlanets =
#include "analytic_states_text.inc"
    ;
constexpr std::string_view kSatellites =
#include "satellite_theories_text.inc"
    ;

// Heliocentric, the Moon and satellites about their planets [au].
bool position_at(CSWSolSys& model, const SSO_ID& id, double jd, double* r) {
    const int day = static_cast<int>(std::floor(jd));
    model.SetTime(day, jd - day, false);
    return id.type == SSO_MOON ? model.GetVecCentre2K(id, 0, r) : model.GetHelVec2K(id, 0, r);
}

double relative_error(const double* r, const double* expected) {
    const double difference[3] = {r[0] - expected[0], r[1] - expected[1], r[2] - expected[2]};
    return Vmod(difference, 3) / Vmod(expected, 3);
}

bool same_name(std::string_view lower, std::string_view name) {
    return lower.size() == name.size() && lower.substr(1) == name.substr(1) &&
           (lower[0] & ~0x20) == name[0];
}

}  // namespace

CheckGroup theory_checks(CSWSolSys& model) {
    // The recorded rows take the instant as it is, without TDB - TT.
    model.SetReduction(REDUCTION_CLASSIC);
    Check planets{"planets and the Moon, 1888 and 2000, relative", "complete series, 80 bits",
                  "1", 5e-7};
    CheckTable(kPlanets).each([&](const CheckTable::Row& row) {
        if (!(row["jd_tdb"] > 2.4e6 && row["jd_tdb"] < 2.5e6)) return;
        for (const NamedBody& body : ten_bodies()) {
            if (!same_name(row.text("body"), body.name)) continue;
            const double expected[3] = {row["x"], row["y"], row["z"]};
            double r[3] = {};
            position_at(model, body.id, row["jd_tdb"], r);
            planets.add(relative_error(r, expected));
        }
    });
    Check satellites{"satellites about their planets, relative", "another program", "1", 1e-9};
    CheckTable(kSatellites).each([&](const CheckTable::Row& row) {
        // The rows of 609 count from the barycentre of the system, those of 615 hold a mean
        // motion that the model replaces by a later one.
        const SSO_ID id(SSO_MOON, row.whole("body"));
        const double expected[3] = {row["x"], row["y"], row["z"]};
        double r[3] = {};
        if (id.number != 609 && id.number != 615 && position_at(model, id, row["jd"], r))
            satellites.add(relative_error(r, expected));
    });
    return {"Built-in theories", {planets, satellites}};
}

Positions positions_of_ten(CSWSolSys& model, const std::vector<SplitDate>& instants) {
    Positions all;
    for (const SplitDate& t : instants) {
        for (const NamedBody& body : ten_bodies()) {
            double r[3] = {};
            position_at(model, body.id, t.day + t.fraction, r);
            all.insert(all.end(), r, r + 3);
        }
    }
    return all;
}

CheckGroup theory_against_file(const Positions& theory, const Positions& file) {
    // Of the longest differences of 2000 instants 1960-2059, a little more [arcsec]; the outer
    // tables were fitted to a newer ephemeris.
    constexpr double kBounds[] = {0, 0.12, 0.1, 0.11, 0.09, 0.27, 0.4, 0.4, 1.1, 1.9};
    CheckGroup group{
        "Built-in theories against DE405, heliocentric (Moon: geocentric) directions", {}};
    for (std::size_t k = 1; k < ten_bodies().size(); ++k) {
        Check check{ten_bodies()[k].name, "DE405", "arcsec", kBounds[k]};
        for (std::size_t i = 3 * k; i < theory.size(); i += 3 * ten_bodies().size())
            check.add(separation_mas(&theory[i], &file[i]) / 1000);
        group.checks.push_back(check);
    }
    return group;
}

}  // namespace app
