// A year of days against the crossings that miss none (crossings_test.cpp holds those to
// sampled altitudes) and against the meridian: every event of the one is an event of the other.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "events/visibility/day_step.h"
#include "tests/events/sites.h"

namespace {

using solsys::kDegree;
using Times = std::vector<double>;

constexpr double kStart = 2453371.5;  // 2005 January 1
constexpr double kYear = 365;
constexpr double kSecond = 1 / 86400.0;
// The search ends where it expects 0.1 s or less to remain, judging by how fast its corrections
// shrink; it is allowed to be three times too hopeful. (Worst seen: 0.11 s.)
constexpr double kTolerance = 0.3 * kSecond;

// Every event of `a`, a day away from the ends of the year, is one of `b`.
void contained(const Times& a, const Times& b, const char* what) {
    for (const double t : a) {
        if (t < kStart + 1 || t > kStart + kYear - 1) continue;
        const auto next = std::lower_bound(b.begin(), b.end(), t - kTolerance);
        EXPECT_TRUE(next != b.end() && *next <= t + kTolerance)
            << what << " at JD " << std::to_string(t);
    }
}
void same(const Times& a, const Times& b, const char* what) {
    contained(a, b, what), contained(b, a, what);
}

struct Place {
    double latitude, longitude, height_km;
};
class Year : public testing::TestWithParam<std::tuple<Place, SSO_ID>> {};

TEST_P(Year, HasTheDaysOfTheCrossings) {
    const auto& [place, id] = GetParam();
    const auto model = support::de405_model();
    support::add_objects(*model);
    OBSERVER site = support::site(place.latitude, place.longitude, place.height_km);
    CSWVisibility visibility(model.get());
    visibility.InitSearch(kStart, kStart + kYear, id, &site);
    visibility.SearchVisibility();
    const bool sun = id == SSO_ID(SSO_PLNT, 10);

    Times rises, sets, dawns, dusks;
    for (const VISIBILITY& day : visibility.GetResults()) {
        const auto add = [](double t, double none, Times& list) {
            if (t != none) list.push_back(t);
        };
        add(sun ? day.sunrise : day.rise, sun ? day.transit : 0, rises);
        add(sun ? day.sunset : day.set, sun ? day.transit : 0, sets);
        if (sun) add(day.dawn, day.transit, dawns), add(day.dusk, day.transit, dusks);
        // On the meridian: half a second before and after it on either side.
        double azimuth[2];
        for (const int side : {0, 1})
            azimuth[side] =
                support::look(*model, site, id, day.transit + (side - 0.5) * kSecond).azimuth;
        EXPECT_LT(std::sin(azimuth[0]) * std::sin(azimuth[1]), 0);
    }
    const auto crossings = [&](double elevation, bool limb, int sense) {
        visibility.SearchCrossings(elevation, limb);
        Times found;
        for (const CROSSING& c : visibility.GetCrossings())
            if (c.sense == sense) found.push_back(c.time);
        return found;
    };
    const double horizon = solsys::visibility::horizon_altitude(place.height_km);
    const bool limb = solsys::visibility::rises_with_its_limb(id);
    // A day whose transit is not above the limit is passed over, even if the object peeps over
    // the horizon by its radius or the dip: such a visit lasts less than two hours here.
    const Times up = crossings(horizon, limb, 1), down = crossings(horizon, limb, -1);
    contained(rises, up, "rise"), contained(sets, down, "set");
    const auto of_long_visits = [&](const Times& times, const Times& others, double sense) {
        Times kept;
        for (const double t : times)
            if (std::none_of(others.begin(), others.end(), [&](double u) {
                    return (u - t) * sense > 0 && (u - t) * sense < 0.2;
                }))
                kept.push_back(t);
        return kept;
    };
    contained(of_long_visits(up, down, 1), rises, "rise of the year");
    contained(of_long_visits(down, up, -1), sets, "set of the year");
    if (sun) {
        same(dawns, crossings(-18 * kDegree, false, 1), "dawn");
        same(dusks, crossings(-18 * kDegree, false, -1), "dusk");
    }
}

INSTANTIATE_TEST_SUITE_P(
    SunMoonPlanets, Year,
    testing::Combine(testing::Values(Place{0, 37, 0.0}, Place{51.5, -0.13, 0.03},
                                     Place{69.6, 18.9, 0.0}, Place{-77.8, 166.7, 0.2}),
                     testing::Values(SSO_ID(SSO_PLNT, 10), SSO_ID(SSO_MOON, 301),
                                     SSO_ID(SSO_PLNT, 1), SSO_ID(SSO_PLNT, 2),
                                     SSO_ID(SSO_PLNT, 4), SSO_ID(SSO_PLNT, 5),
                                     SSO_ID(SSO_PLNT, 9), SSO_ID(SSO_ASTR, support::kCeres),
                                     SSO_ID(SSO_STAR, support::kSirius),
                                     SSO_ID(SSO_STAR, support::kVega))));

}  // namespace
