// Certified crossings against the altitudes of the model, sampled (a year of every minute:
// tools/check_crossings.cpp).
#include "events/visibility/crossings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "events/search/search_model.h"
#include "events/visibility/day_step.h"
#include "tests/events/sites.h"
#include "tests/support/published_sets.h"

namespace {

using namespace solsys::visibility;
using solsys::kDegree;
using solsys::search::Span;

constexpr double kStart = 2453447.5;  // 2005 March 18, two days before the equinox
constexpr double kSecond = 1 / 86400.0;
const SSO_ID kSun(SSO_PLNT, 10), kMoon(SSO_MOON, 301);
constexpr std::int32_t kSatellite = 7, kPassing = 8;

// Ceres and stars; a satellite 700 km up; one by its element set, 400 km up; an asteroid that
// passes the Earth in a few days, 0.003 au away.
void add_all(CSWSolSys& model) {
    support::add_objects(model);
    UserObjectRecord satellite;
    satellite.epoch_day = 2453447;
    const double v = 7.5044 * 86400 / solsys::kAuKm;
    satellite.state[0] = 7078.0 / solsys::kAuKm;
    satellite.state[4] = v / 2, satellite.state[5] = v * std::sqrt(0.75);
    model.AddUserObject(kSatellite, satellite);
    TLERecord set = solsys::test::published_sets().at("06251");
    set.epochDay = satellite.epoch_day;
    model.AddSatellite(kSatellite, set);
    model.UpdateSys(2453450, 0.0);
    UserObjectRecord passing;
    passing.central_number = 10;
    passing.epoch_day = 2453450;
    model.GetHelVec2K(SSO_ID(SSO_PLNT, 3), 1, passing.state);
    passing.state[2] += 0.003;
    passing.state[3] += 0.004, passing.state[4] -= 0.003;
    model.AddUserObject(kPassing, passing);
}

// Height over a level as a difference of sines, straight from the model.
double height(CSWSolSys& model, const Target& target, const Level& level, double jd_tt) {
    const solsys::Instant t = solsys::search::split(jd_tt);
    model.UpdateSys(t.day, t.fraction);
    double place[3];
    EXPECT_TRUE(model.GetRADecVis(target.id, place, 0));
    double v[3] = {std::cos(place[2]) * std::cos(place[1]),
                   std::cos(place[2]) * std::sin(place[1]), std::sin(place[2])};
    model.VecFromRAToAzm(v, v);
    return v[2] - std::sin(level.of_centre(target, {place[0], place[1], place[2]}));
}

struct Case {
    SSO_ID id;
    double days, step_s;  // of the samples
};
void PrintTo(const Case& c, std::ostream* out) { *out << "number " << c.id.number; }
struct Place {
    double latitude, height_km;
};
class CrossingsOf : public testing::TestWithParam<std::tuple<Case, Place>> {};

TEST_P(CrossingsOf, AreThoseOfSampledAltitudes) {
    const auto& [what, place] = GetParam();
    const auto model = support::de405_model();
    add_all(*model);
    OBSERVER observer = support::site(place.latitude, 37, place.height_km);
    CSWVisibility visibility(model.get());
    visibility.InitSearch(kStart, kStart + what.days, what.id, &observer);
    const Target target(*model, what.id);
    const Level level{horizon_altitude(place.height_km), rises_with_its_limb(what.id)};
    const int count = visibility.SearchCrossings(level.altitude, level.upper_limb);
    ASSERT_EQ(count, static_cast<int>(visibility.GetCrossings().size()));

    const OBSERVER in_au = support::for_model(observer);
    model->SetObserver(&in_au);
    std::vector<double> expected;  // ends of the samples' intervals, TT
    const double start = solsys::search::tt_from_ut(kStart);
    double before = height(*model, target, level, start);
    for (double t = what.step_s * kSecond; t < what.days; t += what.step_s * kSecond) {
        const double now = height(*model, target, level, start + t);
        if ((before < 0) != (now < 0)) expected.push_back(start + t);
        before = now;
    }
    ASSERT_EQ(visibility.GetCrossings().size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const CROSSING& c = visibility.GetCrossings()[i];
        const double t = solsys::search::tt_from_ut(c.time);
        EXPECT_TRUE(t > expected[i] - what.step_s * kSecond - kSecond &&
                    t < expected[i] + kSecond);
        // 0.1 s before and after it, on its side of the level.
        const double aside = 0.1 * kSecond * c.sense;
        EXPECT_LT(height(*model, target, level, t - aside), 0);
        EXPECT_GT(height(*model, target, level, t + aside), 0);
        height(*model, target, level, t);
        double seen[3], azimuth = 0, altitude = 0;
        model->GetRADecVis(what.id, seen, 0);
        model->FromRAToAzm(false, &seen[1], &seen[2], &azimuth, &altitude);
        EXPECT_NEAR(std::remainder(c.azimuth - azimuth, solsys::kTwoPi), 0, 2e-5);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Objects, CrossingsOf,
    testing::Combine(
        testing::Values(Case{kSun, 20, 600}, Case{kMoon, 28, 600}, Case{{SSO_PLNT, 1}, 10, 600},
                        Case{{SSO_PLNT, 9}, 5, 600}, Case{{SSO_MOON, 501}, 3, 300},
                        Case{{SSO_ASTR, support::kCeres}, 5, 600},
                        Case{{SSO_STAR, support::kSirius}, 5, 600},
                        Case{{SSO_USCO, kPassing}, 6, 120}, Case{{SSO_USCO, kSatellite}, 1, 15},
                        Case{{SSO_TLE, kSatellite}, 1, 15}),
        testing::Values(Place{51.5, 0}, Place{-66.56, 3}, Place{89.9, 0}, Place{0, 9})));

// Levels in one pass are those of passes of their own; what is up stays up between them.
TEST(Passings, OfSeveralLevelsAndTheStretchesAbove) {
    const auto model = support::de405_model();
    const solsys::search::SearchModel keep(model.get());
    const OBSERVER site = support::for_model(support::site(60, 25));
    model->SetObserver(&site);
    const Span span{kStart, kStart + 120, kStart};
    const Level levels[] = {{kStandardRefraction, true},
                            {-6 * kDegree, false},
                            {-12 * kDegree, false},
                            {kTwilight, false},
                            {80 * kDegree, false}};
    const Passings all = level_passings(*model, kSun, levels, span, {});
    EXPECT_TRUE(
        std::is_sorted(all.list.begin(), all.list.end(),
                       [](const Passing& a, const Passing& b) { return a.time < b.time; }));
    for (int k = 0; k < 5; ++k) {
        const Passings one = level_passings(*model, kSun, std::span(&levels[k], 1), span, {});
        std::vector<double> expected, found;
        for (const Passing& p : one.list) expected.push_back(p.time);
        for (const Passing& p : all.list)
            if (p.level == k) found.push_back(p.time);
        ASSERT_EQ(found.size(), expected.size());
        for (std::size_t i = 0; i < found.size(); ++i)
            EXPECT_NEAR(found[i], expected[i], 0.01 * kSecond);
    }
    EXPECT_EQ(all.at_start, (std::vector<std::int8_t>{-1, -1, -1, -1, -1}));
    EXPECT_TRUE(stretches_above(all, 4, span).empty());
    // Nights end at 60 degrees north: from the end of April on it is never astronomically dark.
    const auto light = stretches_above(all, 3, span);
    ASSERT_FALSE(light.empty());
    EXPECT_EQ(light.back().to, span.end);
    EXPECT_GT(light.back().to - light.back().from, 60);
    for (const Stretch& s : stretches_above(all, 0, span)) {
        const Target sun(*model, kSun);
        model->SetObserver(&site);
        EXPECT_GT(height(*model, sun, levels[0], (s.from + s.to) / 2), 0);
    }
}

// Second differences of the altitude's sine over a century stay below the bound, and not far.
TEST(AltitudeBound, HoldsOverACentury) {
    const auto model = support::de405_model();
    support::add_objects(*model);
    std::mt19937_64 random(5);
    constexpr double d = 0.005;  // day: fourth derivatives add 0.003
    for (const double latitude : {0.0, 51.5, 80.0, 90.0}) {
        const OBSERVER site = support::for_model(support::site(latitude, 0, 9));
        model->SetObserver(&site);
        for (const SSO_ID& id :
             {kSun, kMoon, SSO_ID(SSO_PLNT, 1), SSO_ID(SSO_PLNT, 2), SSO_ID(SSO_PLNT, 4),
              SSO_ID(SSO_PLNT, 7), SSO_ID(SSO_STAR, support::kVega)}) {
            const Target target(*model, id);
            const Level level{0, rises_with_its_limb(id)};
            const double bound = altitude_bound(id, latitude * kDegree);
            double worst = 0;
            for (int i = 0; i < 400; ++i) {
                const double t = std::uniform_real_distribution(2436940.0, 2473440.0)(random);
                const auto f = [&](double x) { return height(*model, target, level, x); };
                worst = std::max(worst, std::fabs(f(t - d) - 2 * f(t) + f(t + d)) / (d * d));
            }
            EXPECT_LE(worst, bound) << id.number << " at " << latitude;
            if (latitude == 0) {
                EXPECT_GT(worst, 0.75 * bound) << id.number;
            }
        }
    }
}

TEST(SearchCrossings, HasNothingWhereThereIsNothing) {
    const auto model = support::de405_model();
    CSWVisibility visibility(model.get());
    OBSERVER site = support::site(51.5, 0);
    OBSERVER mars = site;
    mars.body_number = 4;
    const double nan = std::nan("");
    struct Row {
        SSO_ID id;
        double start, end, elevation;
        OBSERVER* observer;
    };
    for (const Row& row :
         {Row{kSun, kStart, kStart + 5, nan, &site}, Row{kSun, kStart, kStart - 5, 0, &site},
          Row{kSun, nan, kStart, 0, &site}, Row{{SSO_ASTR, 12}, kStart, kStart + 5, 0, &site},
          Row{{SSO_STAR, 12}, kStart, kStart + 5, 0, &site},
          Row{kSun, kStart, kStart + 5, 2, &site}, Row{kSun, kStart, kStart + 5, 0, &mars}}) {
        visibility.InitSearch(row.start, row.end, row.id, row.observer);
        EXPECT_EQ(visibility.SearchCrossings(row.elevation, false), 0);
    }
    // Ends with the theories, two months after its start, however long the span.
    const auto built_in = std::make_unique<CSWSolSys>();
    DE_Ephemeris::clear();
    built_in->InitSys("");
    CSWVisibility far(built_in.get());
    const double late = 2816795.0 - 60;
    far.InitSearch(late, 1e9, kSun, &site);
    const int found = far.SearchCrossings(0, false);
    EXPECT_GT(found, 50);
    EXPECT_LT(found, 1000);
}

}  // namespace
