// No search hangs, whatever the place, the interval and the object.
#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>

#include "solsys/earth_orientation.h"
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

TEST(Destinations, ThatAreNullAreRefused) {
    const auto model = support::de405_model();
    CSWVisibility v(model.get());
    OBSERVER site = support::site(50, 0);
    SSO_ID sun(SSO_PLNT, 10);
    double x = 0;
    EXPECT_FALSE(v.GetCulmination(&sun, kStart, kStart + 1, nullptr, &x, 0));
    EXPECT_FALSE(v.GetCulmination(&sun, kStart, kStart + 1, &x, nullptr, 0));
    EXPECT_FALSE(v.GetCulmination4Spacecraft(&sun, kStart, kStart + 1, nullptr, nullptr, 0));
    EXPECT_FALSE(v.GetCulmination4Spacecraft2(&sun, kStart, kStart + 1, nullptr, nullptr, 0));
    EXPECT_EQ(v.FindObjSinAltMinMax(&sun, kStart, 1, nullptr, &x), 0);
    EXPECT_EQ(v.FindObjSinAltMinMax(&sun, kStart, 1, &x, nullptr), 0);
    EXPECT_FALSE(v.FindNearestRiseSetTimes(&sun, kStart, 2, 0, nullptr, nullptr));
    EXPECT_EQ(v.GetZenith(2453371, 0.5, &site, nullptr, &x), 0);
    EXPECT_FALSE(v.GetMtrxEq_Ec(2453371, 0.5, nullptr));
    EXPECT_FALSE(v.GetCurVisibility(&site, nullptr));
    EXPECT_FALSE(v.GetBrief_OI(2453371, 0.5, sun, nullptr));
}

// What is in no table, or in none at that instant, is not shown at the Sun, and what cannot be
// computed not at another instant.
TEST(CurrentView, RefusesWhatTheModelCannotCompute) {
    DE_Ephemeris::clear();
    CSWSolSys model;
    model.InitSys("");
    support::add_objects(model);
    CSWVisibility v(&model);
    OBSERVER site = support::site(50, 0);
    const auto seen = [&](const SSO_ID& id, int day, double fraction) {
        tagCURVISIBILITY now;
        now.type = id.type, now.number = id.number;
        now.day = day, now.fraction = fraction;
        return v.GetCurVisibility(&site, &now);
    };
    const SSO_ID sirius(SSO_STAR, support::kSirius), sun(SSO_PLNT, 10);
    for (const std::int32_t type :
         {SSO_ASTR, SSO_COMT, SSO_FAST, SSO_FCOM, SSO_FSCO, SSO_TLE}) {
        const SSO_ID unknown(type, 4321);
        EXPECT_FALSE(seen(unknown, 2453371, 0.5));
        BRIEF_INFO info;
        EXPECT_FALSE(v.GetBrief_OI(2453371, 0.5, unknown, &info));
        v.InitSearch(kStart, kStart + 1e8, unknown, &site);
        EXPECT_EQ(v.SearchVisibility(), 0);
    }
    EXPECT_TRUE(seen(SSO_ID(SSO_ASTR, support::kCeres), 2453371, 0.5));
    tagAster_SPH_5 held{};
    held.number = 4321;
    held.e = 0.1F, held.a = 2.5;
    held.P[0] = held.Q[1] = 1;
    model.HoldAsteroid(&held);
    EXPECT_TRUE(seen(SSO_ID(SSO_ASTR, 4321), 2453371, 0.5));

    EXPECT_TRUE(seen(sirius, 2453371, 0.5));
    for (const SSO_ID& id : {sirius, sun}) {
        EXPECT_FALSE(seen(id, 2459000, 1e300));
        EXPECT_FALSE(seen(id, 2459000, kNaN));
        EXPECT_FALSE(seen(id, 3474000, 0));  // beyond the theories the Earth has no place
    }
    double matrix[9];
    EXPECT_TRUE(v.GetHorizon(2459000, 1e300, &site, 4)->empty());
    EXPECT_FALSE(v.GetMtrxEq_Ec(2459000, 1e300, matrix));

    // Spans that go on for ever end where the theories do.
    v.InitSearch(2816795 - 30, 1e9, sun, &site);
    EXPECT_NEAR(v.SearchVisibility(), 30, 1);
    v.InitSearch(-1e9, 625295 + 30, sun, &site);
    EXPECT_NEAR(v.SearchVisibility(), 30, 1);
    double times[3];
    SSO_ID target = sun;
    EXPECT_FALSE(v.FindNearestRiseSetTimes(&target, 2816795 - 30, 1e8, 1.5, times, nullptr));
}

// Sidereal time plus the angle asked for is the right ascension.
TEST(Culmination, AtAGeneralHourAngle) {
    const auto model = support::de405_model();
    CSWVisibility v(model.get());
    const OBSERVER site = support::for_model(support::site(50, 20));
    model->SetObserver(&site);
    SSO_ID jupiter(SSO_PLNT, 5);
    for (const double angle : {0.5, -1.0, 2.5}) {
        double time = 0, altitude = 0, place[3];
        v.GetCulmination(&jupiter, kStart, kStart + 1, &time, &altitude, angle);
        const int day = static_cast<int>(time);
        model->UpdateSys(day, time - day);
        model->GetRADecVis(jupiter, place, 0);
        const double sidereal = SiderialTime(true, day, time - day) + 20 * solsys::kDegree;
        EXPECT_NEAR(std::remainder(sidereal + angle - place[1], solsys::kTwoPi), 0, 1e-5);
    }
}

// Maxima of a satellite's altitude close to either end of the interval, from either end.
TEST(Culmination, OfASpacecraftCloseToAnEnd) {
    const auto model = support::de405_model();
    UserObjectRecord record;
    record.epoch_day = 2453371;
    const double v = 7.5044 * 86400 / solsys::kAuKm;
    record.state[0] = 7078.0 / solsys::kAuKm;
    record.state[4] = v / 2, record.state[5] = v * std::sqrt(0.75);
    ASSERT_TRUE(model->AddUserObject(7, record));
    const OBSERVER site = support::for_model(support::site(50, 20));
    model->SetObserver(&site);
    CSWVisibility visibility(model.get());
    SSO_ID craft(SSO_USCO, 7);
    double top = 0, highest = 0, time = 0, altitude = 0;
    ASSERT_TRUE(
        visibility.GetCulmination4Spacecraft2(&craft, kStart, kStart + 0.2, &top, &highest, 0));
    constexpr double second = 1 / 86400.0;
    for (const double aside : {3, 20, 40, 59}) {
        for (const double angle : {0.0, -6.28318530717958}) {
            ASSERT_TRUE(visibility.GetCulmination4Spacecraft2(
                &craft, top - aside * second, top + 0.02, &time, &altitude, angle));
            EXPECT_NEAR(time, top, second);
            ASSERT_TRUE(visibility.GetCulmination4Spacecraft2(
                &craft, top - 0.02, top + aside * second, &time, &altitude, angle));
            EXPECT_NEAR(time, top, second);
            EXPECT_NEAR(altitude, highest, 1e-6);
        }
    }
}

}  // namespace
