// No search hangs, whatever the place, the interval and the object.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

#include "solsys/visibility.h"
#include "tests/events/sites.h"

namespace {

constexpr double kStart = 2453371.5;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

class Extreme : public testing::TestWithParam<double> {};

// A year at the poles and the circles: at most a day each, everything finite and in its range.
TEST_P(Extreme, LatitudesGiveADayEachAtMost) {
    const auto model = support::de405_model();
    support::add_objects(*model);
    CSWVisibility visibility(model.get());
    OBSERVER observer = support::site(GetParam(), 30, 0.1);
    for (SSO_ID id : {SSO_ID(SSO_PLNT, 10), SSO_ID(SSO_MOON, 301), SSO_ID(SSO_PLNT, 2),
                      SSO_ID(SSO_STAR, support::kVega), SSO_ID(SSO_STAR, support::kSirius)}) {
        visibility.InitSearch(kStart, kStart + 365, id, &observer);
        EXPECT_LE(visibility.SearchVisibility(), 368);
        double before = 0;
        for (const VISIBILITY& day : visibility.GetResults()) {
            EXPECT_GT(day.transit, before);
            before = day.transit + 0.9;
            EXPECT_TRUE(day.rise == 0 ||
                        (day.rise > day.transit - 0.6 && day.rise < day.transit));
            EXPECT_TRUE(day.set == 0 || (day.set < day.transit + 0.6 && day.set > day.transit));
            EXPECT_TRUE(std::isfinite(day.rise_azimuth + day.set_azimuth + day.no_rise_time +
                                      day.no_set_altitude + day.transit_altitude));
        }
        RISESETVIS request;
        request.from = kStart, request.to = kStart + 30;
        visibility.InitSearch(kStart, kStart + 30, id, &observer);
        EXPECT_TRUE(visibility.SearchRiseSet(&request));
        EXPECT_LE(request.days->size(), 32U);
        visibility.FreeRiseSetVector(&request);
        double times[3], azimuth = 0;
        visibility.FindNearestRiseSetTimes(&id, kStart, 3, -0.01, times, nullptr);
        visibility.GetEventsTimeForElevation(&id, -0.01, kStart, times[0], azimuth, 1);
    }
}

// The Sun at the pole crosses the horizon at the equinoxes only, on its way from a lower
// culmination up to a transit or from a transit down to a lower culmination if at all.
TEST(Pole, HasASunriseAndASunsetAtMost) {
    const auto model = support::de405_model();
    CSWVisibility visibility(model.get());
    OBSERVER pole = support::site(90, 0);
    visibility.InitSearch(kStart, kStart + 365, SSO_ID(SSO_PLNT, 10), &pole);
    visibility.SearchVisibility();
    int rises = 0, sets = 0;
    for (const VISIBILITY& day : visibility.GetResults()) {
        if (day.sunrise != day.transit) {
            ++rises;
            EXPECT_NEAR(day.sunrise, 2453449, 3);  // two days before the equinox of March 20
        }
        if (day.sunset != day.transit) {
            ++sets;
            EXPECT_NEAR(day.sunset, 2453639, 3);
        }
    }
    EXPECT_LE(rises, 1);
    EXPECT_LE(sets, 1);
    EXPECT_GE(rises + sets, 1);
}

INSTANTIATE_TEST_SUITE_P(Latitudes, Extreme, testing::Values(90.0, -90.0, 89.99, 66.5, -66.56));

TEST(Intervals, ThatAreNoneGiveNothing) {
    const auto model = support::de405_model();
    CSWVisibility visibility(model.get());
    OBSERVER observer = support::site(50, 0);
    SSO_ID sun(SSO_PLNT, 10);
    const double ends[][2] = {{kStart, kStart - 1}, {kNaN, kStart},   {kStart, kNaN},
                              {-kInf, kInf},        {kStart, kStart}, {1e300, -1e300}};
    for (const auto& [from, to] : ends) {
        visibility.InitSearch(from, to, sun, &observer);
        EXPECT_EQ(visibility.SearchVisibility(), 0);
        VISIBILITY day;
        EXPECT_FALSE(visibility.SearchNext(&day));
        RISESETVIS request;
        request.from = from, request.to = to;
        EXPECT_EQ(visibility.SearchRiseSet(&request),
                  std::fabs(from) < 1e10 && std::fabs(to) < 1e10);
        visibility.FreeRiseSetVector(&request);
        double time = 0, value = 0, times[3];
        EXPECT_EQ(visibility.GetCulmination(&sun, from, to, &time, &value, 0), false);
        EXPECT_FALSE(visibility.GetCulmination4Spacecraft2(&sun, from, to, &time, &value, 0));
        visibility.GetCulmination4Spacecraft(&sun, from, to, &time, &value, 0);
        EXPECT_FALSE(visibility.FindNearestRiseSetTimes(&sun, from, kNaN, 0, times, nullptr));
        EXPECT_EQ(visibility.FindObjSinAltMinMax(&sun, kNaN, 1, &time, &value), 0);
        EXPECT_EQ(visibility.FindObjSinAltMinMax(&sun, kStart, kInf, &time, &value), 0);
        EXPECT_FALSE(visibility.GetEventsTimeForElevation(&sun, kNaN, kStart, time, value, 1));
        EXPECT_FALSE(visibility.GetEventsTimeForElevation(&sun, 0, kNaN, time, value, 1));
    }
    OBSERVER broken = observer;
    broken.location[2] = kNaN;  // the observer in force stays
    visibility.InitSearch(kStart, kStart + 3, sun, &broken);
    EXPECT_EQ(visibility.SearchVisibility(),
              4);  // transits of 37 degrees east: half a day early
}

TEST(Objects, ThatAreUnknownOrGoRoundTheObserverHaveNoDays) {
    const auto model = support::de405_model();
    SpacecraftRecord orbit;
    orbit.central_number = 3;
    orbit.epoch_day = 2453000;
    orbit.q = 7000 / solsys::kAuKm;
    orbit.n = 90;
    ASSERT_TRUE(model->AddSpacecraft(5, &orbit, 1));
    CSWVisibility visibility(model.get());
    OBSERVER observer = support::site(50, 0);
    for (const SSO_ID& id : {SSO_ID(SSO_SCFT, 5), SSO_ID(SSO_PLNT, 77), SSO_ID(SSO_STAR, 1),
                             SSO_ID(SSO_SCFT, 6), SSO_ID(-1, -1)}) {
        visibility.InitSearch(kStart, kStart + 1e6, id, &observer);
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(visibility.SearchVisibility(), 0);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(100));
    }
    // Null pointers.
    EXPECT_FALSE(visibility.SearchNext(nullptr));
    EXPECT_FALSE(visibility.SearchRiseSet(nullptr));
    visibility.FreeRiseSetVector(nullptr);
    visibility.InitSearch(kStart, kStart + 1, SSO_ID(SSO_PLNT, 10), nullptr);
    EXPECT_GE(visibility.SearchVisibility(), 1);
}

}  // namespace
