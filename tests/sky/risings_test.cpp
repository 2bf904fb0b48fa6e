// Rows of risings: against published times, and against the passages that they are made of.
#include "solsys/sky/risings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "solsys/sky/places.h"

namespace solsys::sky {
namespace {

Site site_at(double latitude, double longitude) {
    Site site;
    site.latitude_deg = latitude, site.longitude_deg = longitude;
    return site;
}
Span days_from(const char* date, double days) {
    const Instant from = *Instant::from_iso(date);
    return {from, from.plus_days(days)};
}
double seconds_between(const Instant& a, const Instant& b) {
    return 86400 * days_between(a, b);
}

// London, 2024: as every almanac of it has them, to the minute.
TEST(Risings, OfTheSunAreThoseOfAlmanacs) {
    auto model = Model::open();
    const Site london = site_at(51.5, -0.1167);
    struct Day {
        const char *date, *rise, *set;
        bool dark;
    };
    for (const Day& d :
         {Day{"2024-06-21", "2024-06-21T03:43Z", "2024-06-21T20:21Z", false},
          Day{"2024-12-21", "2024-12-21T08:03:30Z", "2024-12-21T15:53:30Z", true}}) {
        const Risings found = risings(*model, london, sun(), days_from(d.date, 1));
        ASSERT_EQ(found.rows.size(), 1U);
        const Rising& row = found.rows[0];
        EXPECT_TRUE(found.known && !found.up_at_start);
        EXPECT_NEAR(seconds_between(*Instant::from_iso(d.rise), *row.rise), 0, 60);
        EXPECT_NEAR(seconds_between(*Instant::from_iso(d.set), *row.set), 0, 60);
        EXPECT_EQ(row.astronomical_dusk.has_value(), d.dark);
        EXPECT_LT(*row.civil_dawn, *row.rise);
        EXPECT_LT(*row.rise, *row.transit);
        EXPECT_LT(*row.set, *row.civil_dusk);
        EXPECT_EQ(row.anchor(), *row.transit);
        EXPECT_NEAR(row.rise_azimuth_deg + row.set_azimuth_deg, 360, 0.5);
    }
}

// Far north the Sun does not rise, or does not set, and the rows say so.
TEST(Risings, OfPolarNightAndPolarDay) {
    auto model = Model::open();
    const Site tromso = site_at(69.65, 18.96);
    const Risings night = risings(*model, tromso, sun(), days_from("2024-12-18", 4));
    ASSERT_EQ(night.rows.size(), 4U);
    for (const Rising& row : night.rows) {
        EXPECT_FALSE(row.rise || row.set);
        EXPECT_TRUE(row.civil_dawn && row.transit && row.civil_dusk);
        EXPECT_LT(row.transit_altitude_deg, -1);
    }
    const Risings day = risings(*model, tromso, sun(), days_from("2024-06-18", 4));
    EXPECT_TRUE(day.up_at_start);
    ASSERT_EQ(day.rows.size(), 4U);
    for (const Rising& row : day.rows) EXPECT_FALSE(row.rise || row.set || row.civil_dawn);
    const Span week = days_from("2024-06-18", 7);
    const auto up = times_above(*model, tromso, sun(), horizon_of(tromso, sun()), week);
    ASSERT_EQ(up.size(), 1U);
    EXPECT_NEAR(up[0].days(), 7, 1e-6);
    EXPECT_TRUE(times_above(*model, tromso, sun(), kCivilTwilight, week).size() == 1);
    EXPECT_TRUE(times_above(*model, tromso, sun(), {80, false}, week).empty());
}

// Every passage stands in one row, in its place; altitudes there are the horizon's.
TEST(Risings, HoldEveryPassageOnce) {
    auto model = Model::open();
    for (const double latitude : {0.0, 51.5, 66.56, -85.0}) {
        const Site site = site_at(latitude, 10);
        for (const char* name : {"moon", "mercury", "sirius", "ceres"}) {
            const auto body = find_body(name);
            ASSERT_TRUE(body) << body.message();
            const Span span = days_from("2026-03-01", 60);
            const Altitude horizon = horizon_of(site, *body);
            const auto all = passages(*model, site, *body, {&horizon, 1}, span);
            const Risings found = risings(*model, site, *body, span);
            std::vector<Instant> of_rows;
            std::optional<Instant> last_transit;
            for (const Rising& row : found.rows) {
                if (row.rise) of_rows.push_back(*row.rise);
                if (row.set) of_rows.push_back(*row.set);
                if (row.rise && row.transit) {
                    EXPECT_LT(*row.rise, *row.transit);
                }
                if (row.transit && row.set) {
                    EXPECT_LT(*row.transit, *row.set);
                }
                if (row.transit && last_transit) {
                    EXPECT_GT(days_between(*last_transit, *row.transit), 0.9);
                }
                if (row.transit) last_transit = row.transit;
            }
            ASSERT_EQ(of_rows.size(), all.size()) << name << " at " << latitude;
            for (std::size_t i = 0; i < all.size(); ++i) {
                EXPECT_NEAR(seconds_between(all[i].at, of_rows[i]), 0, 1e-3);
                EXPECT_EQ(i > 0 && all[i].rising == all[i - 1].rising, false);
            }
        }
    }
}

// Where the air is known, the limb stands on the horizon of that air when the Sun rises.
TEST(Risings, FollowTheAirWhereItIsKnown) {
    auto model = Model::open();
    Site site = site_at(51.5, 0);
    site.height_m = 300, site.above_horizon_m = 100;
    const Span day = days_from("2026-02-01", 1);
    const auto standard = risings(*model, site, sun(), day).rows.at(0);
    for (const Air& air : {Air{1040, -30}, Air{980, 35, 0.8}}) {
        const auto horizon = horizon_of(site, sun(), air);
        ASSERT_TRUE(horizon && horizon->upper_limb);
        const Atmosphere atmosphere{air, site.latitude_deg, site.height_m};
        const auto row = risings(*model, site, sun(), day, *horizon).rows.at(0);
        model->observe_from(site);
        for (const Instant& t : {*row.rise, *row.set}) {
            model->move_to(t);
            const auto place = apparent_place(*model, sun());
            const double limb =
                horizontal_of(*model, *place).altitude_deg + 959.63 / 3600 / place->distance_au;
            const auto seen = true_altitude(-*dip_of_horizon(100, atmosphere), atmosphere);
            EXPECT_NEAR(limb, *seen, 0.001);
        }
        const double earlier = seconds_between(*row.rise, *standard.rise);
        EXPECT_EQ(earlier > 0, air.temperature_c < 0) << earlier;
        EXPECT_GT(std::fabs(earlier), 15);
    }
    EXPECT_FALSE(horizon_of(site, sun(), {.pressure_hpa = 2000}));
}

TEST(Risings, LeaveTheModelAloneAndRefuseTheUnknown) {
    auto model = Model::open();
    const Site oslo = site_at(59.9, 10.7);
    model->observe_from(site_at(-30, 20));
    model->move_to(*Instant::from_iso("2026-11-21T18:00Z"));
    const auto before = horizontal_of(*model, *apparent_place(*model, moon()));
    EXPECT_TRUE(risings(*model, oslo, moon(), days_from("2026-01-01", 2)).known);
    const auto after = horizontal_of(*model, *apparent_place(*model, moon()));
    EXPECT_NEAR(before.azimuth_deg, after.azimuth_deg, 1e-9);
    EXPECT_NEAR(before.altitude_deg, after.altitude_deg, 1e-9);

    const Body unknown(SSO_ID(SSO_ASTR, 4321), "nobody");
    EXPECT_FALSE(risings(*model, oslo, unknown, days_from("2026-01-01", 2)).known);
    const Span backwards{Instant::from_utc(2461000.5), Instant::from_utc(2460000.5)};
    EXPECT_TRUE(risings(*model, oslo, sun(), backwards).rows.empty());
    EXPECT_TRUE(passages(*model, oslo, sun(), {}, days_from("2026-01-01", 2)).empty());
}

TEST(Risings, StoppedHalfwayAreThoseTillThen) {
    auto model = Model::open();
    const Site site = *find_city("Quito");
    const Span years{Instant::from_utc({2461041, 0.5}), Instant::from_utc({2461771, 0.5})};
    const Altitude horizon = horizon_of(site, sun());
    double told = 0;
    SearchControl* self = nullptr;
    SearchControl control([&](double done) {
        EXPECT_GE(done, told);
        told = done;
        if (done >= 0.5) self->stop();
    });
    self = &control;

    const auto all = passages(*model, site, sun(), {&horizon, 1}, years);
    const auto half = passages(*model, site, sun(), {&horizon, 1}, years, &control);
    EXPECT_NEAR(told, 0.5, 0.01);
    EXPECT_NEAR(static_cast<double>(half.size()), static_cast<double>(all.size()) / 2, 3);
    for (std::size_t i = 0; i < half.size(); ++i) EXPECT_EQ(half[i].at, all[i].at);

    told = 0;
    EXPECT_TRUE(risings(*model, site, sun(), years, horizon, &control).rows.size() < 3);
    SearchControl watched([&](double done) { told = done; });
    EXPECT_EQ(risings(*model, site, sun(), years, horizon, &watched).rows.size(),
              risings(*model, site, sun(), years).rows.size());
    EXPECT_GT(told, 0.99);
}

}  // namespace
}  // namespace solsys::sky
