// Closest approaches against published ones and a plain scan.
#include "solsys/sky/approaches.h"

#include <gtest/gtest.h>

#include <cmath>

#include "solsys/sky/orbits.h"
#include "tests/support/named_csv.h"

namespace solsys::sky {
namespace {

Instant day(double jd) { return Instant::from_utc(jd); }

// Published: 0.000254099 au from the Earth's centre on 2029 April 13, 21:46 TDB; the elements
// have seven digits, which allow 1000 km.
TEST(Approaches, TellApophisPastTheEarthAndTheMoon) {
    auto model = Model::open();
    const auto apophis = find_small_body("apophis");
    ASSERT_TRUE(model && apophis);
    const Span april{day(2462227.5), day(2462257.5)};
    const auto found = find_approaches(*model, *apophis, april, {.within_au = 0.01});
    ASSERT_TRUE(found) << found.message();
    ASSERT_EQ(found->size(), 2U);
    const Approach& earth = found->front();
    EXPECT_EQ(earth.planet.name, "Earth");
    EXPECT_NEAR(earth.distance_au, 0.000254099, 1000 / 149597870.7);
    EXPECT_NEAR(earth.time.jd_tt(), 2462240.5 - 1 + (21 * 60 + 46) / 1440.0, 1.5 / 1440);
    EXPECT_NEAR(earth.speed_km_s, 7.4, 0.1);
    EXPECT_EQ(found->back().planet.name, "Moon");

    const auto two_body =
        find_approaches(*model, *apophis, april, {.within_au = 0.5, .two_body = true});
    ASSERT_TRUE(two_body && !two_body->empty());
    EXPECT_GT(two_body->front().distance_au, 0.001);
}

// Six-hourly looks at the distances see the same minima, no more and no fewer.
TEST(Approaches, MissNothingThatAScanSees) {
    auto model = Model::open();
    const auto eros = find_small_body("433");
    ASSERT_TRUE(model && eros);
    const Span years{day(2455197.5), day(2458849.5)};
    const double within = 0.6;
    const auto found = find_approaches(*model, *eros, years, {.within_au = within});
    ASSERT_TRUE(found) << found.message();
    std::size_t seen = 0;
    for (const int planet : {1, 2, 3, 4, 5, 6, 7, 8, 301}) {
        const SSO_ID id(planet < 100 ? SSO_PLNT : SSO_MOON, planet);
        double before = 0, last = 0;
        for (int i = 0; i <= 4 * years.days(); ++i) {
            const JulianDate t = years.from.plus_days(i / 4.0).tt();
            model->classic().SetTime(t.day, t.fraction, false);
            double a[3], b[3];
            ASSERT_TRUE(model->classic().GetHelVec2K(eros->id, 0, a));
            ASSERT_TRUE(model->classic().GetHelVec2K(id, 0, b));
            const double distance = std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
            if (i > 1 && last < before && last <= distance && last < within) ++seen;
            before = last, last = distance;
        }
    }
    EXPECT_GT(seen, 5U);
    EXPECT_EQ(found->size(), seen);
}

TEST(Approaches, RefuseWhatHasNoOrbitOrNoSpan) {
    auto model = Model::open();
    ASSERT_TRUE(model);
    const auto eros = find_small_body("433");
    EXPECT_FALSE(find_approaches(*model, moon(), {day(2455197.5), day(2455200.5)}));
    EXPECT_FALSE(find_approaches(*model, *eros, {day(2455197.5), day(2455197.5)}));
    EXPECT_FALSE(find_approaches(*model, *eros, {day(2455197.5), day(9455197.5)}));
    EXPECT_FALSE(find_approaches(*model, *eros, {day(2455197.5), day(2455200.5)},
                                 {.within_au = std::nan("")}));
}

// The law is that of 19 places in 20 as they were measured.
TEST(Orbits, UncertaintyByAgeIsWhatWasMeasured) {
    int checked = 0;
    for (const auto& row :
         test::read_named_csv(SOLSYS_TEST_DATA "/reference/two_body_errors.csv")) {
        const double age = row["age_years"];
        const Body body = *find_body(row.text("kind") == "astr" ? "ceres" : "encke");
        const Instant then = Instant::from_tt(body.elements_epoch + age * 365.25);
        const double law = *elements_uncertainty_arcsec(body, then);
        EXPECT_GT(law, row["p90_arcsec"]) << row.text("kind") << ' ' << age;
        EXPECT_NEAR(std::log2(law / row["p95_arcsec"]), 0, 1) << row.text("kind") << ' ' << age;
        ++checked;
    }
    EXPECT_EQ(checked, 24);
}

}  // namespace
}  // namespace solsys::sky
