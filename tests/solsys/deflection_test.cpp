// Deflection and aberration against values computed with ERFA.
#include "solsys/deflection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/constants.h"
#include "solsys/star_place.h"
#include "tests/support/named_csv.h"

namespace solsys {
namespace {

const std::string kReference = SOLSYS_TEST_DATA "/reference/";

double distance(Vec3 a, Vec3 b) { return norm(a - b); }

TEST(Deflection, OneBodyAgreesWithErfa) {
    const std::map<std::string, Deflector> kBodies{{"sun", Deflector::kSun},
                                                   {"jupiter", Deflector::kJupiter},
                                                   {"saturn", Deflector::kSaturn}};
    int compared = 0;
    for (const auto& row : test::read_named_csv(kReference + "modern_deflection.csv")) {
        const auto body = kBodies.find(row.text("body"));
        if (body == kBodies.end()) continue;
        const double e = row["elongation_deg"] * kDegree, source = row["source_au"];
        const Vec3 p{-std::cos(e), std::sin(e), 0};
        const double tau = source > 0 ? source * kLightDayPerAu : kStarLightTime;
        const Vec3 bent =
            deflected(p, source * p, tau, {body->second, {row["em_au"], 0, 0}, {}}, true);
        EXPECT_LT(distance(bent, {row["p1_x"], row["p1_y"], 0}), 2e-13) << row.text("body");
        ++compared;
    }
    EXPECT_GT(compared, 35);
}

// States of the bodies at one instant, barycentric.
using States = std::map<std::string, State>;

DeflectingBodies bodies_around(const States& states) {
    const auto body = [&](Deflector which, const char* name) {
        return DeflectingBody{which, states.at("earth").r - states.at(name).r,
                              states.at(name).v};
    };
    DeflectingBodies all{{body(Deflector::kSaturn, "saturn"),
                          body(Deflector::kJupiter, "jupiter"), body(Deflector::kSun, "sun")},
                         true};
    std::sort(
        all.farthest_first.begin(), all.farthest_first.end(),
        [](const auto& a, const auto& b) { return norm(a.to_observer) > norm(b.to_observer); });
    return all;
}

// The bodies' motion within their light time is taken as straight: 1e-12 rad here.
TEST(Deflection, PlacesAndStarsAgreeStepByStep) {
    std::map<std::string, States> at;
    for (const auto& row : test::read_named_csv(kReference + "modern_states.csv"))
        at[row.text("tt_day")][row.text("body")] = {row.vector(""), row.vector("v")};
    int compared = 0;
    for (const char* file : {"modern_places.csv", "modern_stars.csv"}) {
        for (const auto& row : test::read_named_csv(kReference + file)) {
            const auto states = at.find(row.text("tt_day"));
            if (states == at.end()) continue;
            const bool star = row.cells.count("star") > 0;
            const SSO_ID id = star ? SSO_ID(SSO_STAR, 1)
                                   : SSO_ID(SSO_PLNT, static_cast<int>(row["body"]) == 11
                                                          ? 10
                                                          : static_cast<int>(row["body"]));
            const bool moon = !star && row["body"] == 10;
            const DeflectingBodies bodies = bodies_around(states->second);
            const Vec3 p = row.vector("unit_");
            const Vec3 bent = star ? deflected(p, {}, kStarLightTime, bodies, id)
                                   : deflected(p, row.vector("p_au_"), row["light_time_days"],
                                               bodies, moon ? SSO_ID(SSO_MOON, 301) : id);
            EXPECT_LT(distance(bent, row.vector("deflected_")), 3e-12) << row.text("tt_day");
            const Vec3 beta = kLightDayPerAu * states->second.at("earth").v;
            const Vec3 seen = aberrated(bent, beta, std::sqrt(1 - dot(beta, beta)));
            EXPECT_LT(distance(seen, row.vector("aberrated_")), 3e-12) << row.text("tt_day");
            ++compared;
        }
    }
    EXPECT_GE(compared, 90);
}

}  // namespace
}  // namespace solsys
