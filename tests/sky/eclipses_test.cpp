// Eclipses of the typed layer.
#include "solsys/sky/eclipses.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/csv.h"

namespace solsys::sky {
namespace {

// Printed to 1 s, 1e-4 and 1 km.
TEST(TypedEclipses, AgreeWithTheCanon) {
    auto model = Model::open();
    ASSERT_TRUE(model);
    int central = 0;
    for (const auto& row : test::read_csv(SOLSYS_TEST_DATA "/reference/solar_eclipses.csv")) {
        const Instant greatest = Instant::from_tt(std::stod(row[3]));
        if (std::abs(greatest.jd_tt() - 2451545) > 20000) continue;
        const Span span{greatest.plus_days(-2), greatest.plus_days(2)};
        const auto found = find_eclipses(*model, EclipseKind::kSolar, span);
        ASSERT_EQ(found.size(), 1U) << row[1];
        EXPECT_EQ(found[0].type, row[9]);
        EXPECT_EQ(found[0].saros, std::stoi(row[7]));
        EXPECT_NEAR(days_between(greatest, found[0].greatest) * 86400, 0, 1.3) << row[1];
        EXPECT_NEAR(found[0].magnitude, std::stod(row[12]), 1.4e-4) << row[1];
        if (!found[0].path_width_km || row[17].empty()) continue;
        EXPECT_NEAR(*found[0].path_width_km, std::stod(row[17]),
                    std::max(0.8, 0.01 * std::stod(row[17])));
        ++central;
    }
    EXPECT_GT(central, 15);
}

TEST(TypedEclipses, KeepTheModelWhereItWas) {
    auto model = Model::open();
    ASSERT_TRUE(model);
    const Instant t = *Instant::from_iso("2026-01-01");
    ASSERT_TRUE(model->move_to(t));
    const Span span{*Instant::from_iso("2018-01-01"), *Instant::from_iso("2019-01-01")};
    const auto found = find_eclipses(*model, EclipseKind::kLunar, span);
    ASSERT_EQ(found.size(), 2U);
    const EclipseMap map = eclipse_map(*model, found[1]);
    ASSERT_EQ(map.curves.size(), 7U);
    // Where the Moon rises and sets at each contact.
    const int contacts[] = {ECLIPSE_P1, ECLIPSE_U1, ECLIPSE_U2, -1,
                            ECLIPSE_U3, ECLIPSE_U4, ECLIPSE_P4};
    const char* const names[] = {"P1", "U1", "U2", "greatest", "U3", "U4", "P4"};
    for (std::size_t i = 0; i < 7; ++i) {
        EXPECT_EQ(map.curves[i].label, names[i]);
        const Instant& at =
            contacts[i] < 0 ? found[1].greatest : *found[1].contacts[contacts[i]];
        EXPECT_NEAR(days_between(map.curves[i].at, at) * 86400, 0, 1) << names[i];
    }
    const auto moon = moon_in_shadow(*model, found[1], *found[1].contacts[ECLIPSE_U1]);
    ASSERT_TRUE(moon);
    EXPECT_NEAR(std::hypot(moon->east, moon->north), moon->umbra + moon->moon, 1e-6);
    int day = 0;
    double fraction = 0;
    model->classic().GetTime(&day, &fraction);
    EXPECT_NEAR(day + fraction, t.jd_tt(), 1e-8);
    int told = 0;
    EclipseOptions stop;
    stop.progress = [&](double) { return ++told < 5; };
    EXPECT_LE(find_eclipses(*model, EclipseKind::kLunar, span, stop).size(), 2U);
    EXPECT_EQ(told, 5);
}

}  // namespace
}  // namespace solsys::sky
