// The members of CSWVisibility against published times, the model itself and each other.
#include "solsys/visibility.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "solsys/calendar.h"
#include "solsys/earth_orientation.h"
#include "solsys/platform.h"
#include "solsys/time_scales.h"
#include "tests/events/sites.h"

namespace {

using solsys::kDegree;

constexpr double kSecond = 1 / 86400.0;
constexpr double kMinute = 60 * kSecond;
constexpr double kLevel = -34 / 60.0 * kDegree;
constexpr double kPi = solsys::kPi;

const SSO_ID kSun(SSO_PLNT, 10), kMoon(SSO_MOON, 301), kJupiter(SSO_PLNT, 5);
const SSO_ID kSiriusId(SSO_STAR, support::kSirius), kVegaId(SSO_STAR, support::kVega);

double jd(int year, int month, int day, double hours = 0) {
    int whole = 0;
    double fraction = 0;
    DJ(&whole, &fraction, static_cast<short>(year), static_cast<short>(month),
       static_cast<short>(day), 0, 0, 0);
    return whole + fraction + hours / 24;
}

double et(double ut) {
    int day = 0;
    double fraction = 0;
    ET_UT::UT2ET(ut, day, fraction);
    return day + fraction;
}

// Sine of the apparent altitude, straight from the model.
double altitude(CSWSolSys& model, const SSO_ID& id, double jd_et) {
    const int day = static_cast<int>(jd_et);
    model.UpdateSys(day, jd_et - day);
    double place[3], azimuth = 0, alt = 0;
    EXPECT_TRUE(model.GetRADecVis(id, place, 0.0));
    model.FromRAToAzm(false, &place[1], &place[2], &azimuth, &alt);
    return alt;
}

class Visibility : public testing::Test {
  protected:
    Visibility() : model_(support::de405_model()), visibility_(model_.get()) {
        support::add_objects(*model_);
    }
    std::vector<VISIBILITY> search(double from, double to, const SSO_ID& id,
                                   OBSERVER observer) {
        visibility_.InitSearch(from, to, id, &observer);
        const int count = visibility_.SearchVisibility();
        EXPECT_EQ(count, static_cast<int>(visibility_.GetResults().size()));
        return visibility_.GetResults();
    }

    std::unique_ptr<CSWSolSys> model_;
    CSWVisibility visibility_;
};

// Printed to the minute: half a minute, and as much again for the site's rounded coordinates.
struct Published {
    const char* what;
    double latitude, longitude;
    SSO_ID id;
    double from;                // UT midnight or local midnight
    double rise, transit, set;  // hours after `from`; negative: not given
};
class Almanac : public testing::TestWithParam<Published> {};

TEST_P(Almanac, AgreesToTheMinute) {
    const Published& p = GetParam();
    const auto model = support::de405_model();
    CSWVisibility visibility(model.get());
    OBSERVER observer = support::site(p.latitude, p.longitude);
    visibility.InitSearch(p.from - 1, p.from + 2, p.id, &observer);
    visibility.SearchVisibility();
    const auto expect_among = [&](double hours, double VISIBILITY::*time) {
        if (hours < 0) return;
        double nearest = 1;
        for (const VISIBILITY& day : visibility.GetResults())
            nearest = std::min(nearest, std::fabs(day.*time - (p.from + hours / 24)));
        EXPECT_LE(nearest, kMinute) << p.what;
    };
    expect_among(p.rise, &VISIBILITY::rise);
    expect_among(p.transit, &VISIBILITY::transit);
    expect_among(p.set, &VISIBILITY::set);
}

INSTANTIATE_TEST_SUITE_P(
    Published, Almanac,
    testing::Values(
        // Meeus 1998, Astronomical Algorithms, example 15.a.
        Published{"Venus at Boston", 42.3333, -71.0833, SSO_ID(SSO_PLNT, 2), jd(1988, 3, 20),
                  12 + 25 / 60.0, 19 + 41 / 60.0, 2 + 55 / 60.0},
        // Almanac for Computers 1990 (US Naval Observatory), worked example: 5:26 EDT.
        Published{"Sun at Wayne", 40.9, -74.3, kSun, jd(1990, 6, 25), 9 + 26 / 60.0, -1, -1},
        // The longest and the shortest day of London, as every almanac of it has them.
        Published{"Sun at London, June", 51.5, -0.1167, kSun, jd(2024, 6, 21), 3 + 43 / 60.0,
                  -1, 20 + 21 / 60.0},
        Published{"Sun at London, December", 51.5, -0.1167, kSun, jd(2024, 12, 21),
                  8 + 3.5 / 60.0, -1, 15 + 53.5 / 60.0}));

TEST_F(Visibility, DayDescribesTheObjectAtItsTransit) {
    const auto days = search(jd(2005, 4, 1), jd(2005, 4, 4), kJupiter, support::site(40, 20));
    ASSERT_EQ(days.size(), 4U);  // from half a day before the interval on
    for (const VISIBILITY& day : days) {
        EXPECT_NEAR(altitude(*model_, kJupiter, et(day.transit)), day.transit_altitude, 1e-6);
        float magnitude = 0;
        model_->GetMagnitude(kJupiter, &magnitude);
        EXPECT_NEAR(day.magnitude, magnitude, 1e-4);
        double phase = 0, lit = 0, elongation = 0, limb = 0, age = 0;
        model_->PhaseElongation(kJupiter, &phase, &lit, &elongation, &limb, &age);
        EXPECT_NEAR(day.phase_angle, phase, 1e-7);
        EXPECT_NEAR(day.illuminated, lit, 1e-7);
        EXPECT_NEAR(day.elongation, elongation, 1e-6);
        // 71492 km from the distance given; the diameter in April 2005 was 44 arcsec.
        EXPECT_NEAR(day.diameter, 2 * 71492 / (day.distance * solsys::kAuKm), 1e-9);
        EXPECT_NEAR(day.diameter / kDegree * 3600, 44.2, 0.5);
        // Azimuths are symmetric about the meridian but for the planet's own motion.
        EXPECT_NEAR(day.rise_azimuth + day.set_azimuth, 2 * kPi, 1e-3);
    }
}

TEST_F(Visibility, SunNeverDarkAndNeverDownLeavesTheTransitInItsSlots) {
    const OBSERVER north = support::site(69.65, 18.96);
    for (const VISIBILITY& day : search(jd(2005, 6, 10), jd(2005, 6, 20), kSun, north)) {
        for (const double slot : {day.dawn, day.dusk, day.sunrise, day.sunset})
            EXPECT_EQ(slot, day.transit);
        EXPECT_EQ(day.rise, 0);
        EXPECT_EQ(day.set, 0);
        EXPECT_NEAR(day.no_rise_time, day.transit - 0.5, 0.01);
        EXPECT_NEAR(day.no_set_altitude, altitude(*model_, kSun, et(day.no_set_time)), 1e-5);
    }
    // Polar night: twilight alone, which then fills rise and set too.
    const auto winter = search(jd(2005, 12, 15), jd(2005, 12, 25), kSun, north);
    ASSERT_EQ(winter.size(), 10U);
    for (const VISIBILITY& day : winter) {
        EXPECT_EQ(day.sunrise, day.transit);
        EXPECT_EQ(day.sunset, day.transit);
        EXPECT_EQ(day.rise, day.dawn);
        EXPECT_NEAR(altitude(*model_, kSun, et(day.dawn)), -18 * kDegree, 1e-5);
        EXPECT_LT(day.dawn, day.transit);
        EXPECT_GT(day.dusk, day.transit);
    }
    // White nights of 55 degrees: the Sun sets, twilight lasts.
    for (const VISIBILITY& day :
         search(jd(2005, 6, 18), jd(2005, 6, 23), kSun, support::site(55, 37))) {
        EXPECT_EQ(day.dawn, day.transit);
        EXPECT_LT(day.sunrise, day.transit - 0.3);
        EXPECT_GT(day.no_rise_altitude, -18 * kDegree);
    }
    // Far south in its winter the Sun stays below -18 degrees: no day at all.
    EXPECT_TRUE(search(jd(2005, 6, 10), jd(2005, 7, 1), kSun, support::site(-88, 0)).empty());
}

TEST_F(Visibility, StarsThatNeverSetAndNeverRise) {
    for (const VISIBILITY& day :
         search(jd(2005, 1, 1), jd(2005, 1, 5), kVegaId, support::site(60, 0))) {
        EXPECT_EQ(day.rise, 0);
        EXPECT_EQ(day.set, 0);
        EXPECT_NEAR(day.no_rise_altitude, (60 + 38.79 - 90) * kDegree, 3e-4);
        EXPECT_NEAR(day.transit - day.no_rise_time, 0.498635, 1e-5);
        EXPECT_NEAR(day.no_set_time - day.transit, 0.498635, 1e-5);
    }
    EXPECT_TRUE(
        search(jd(2005, 1, 1), jd(2006, 1, 1), kSiriusId, support::site(80, 0)).empty());
}

TEST_F(Visibility, ADayOfEachLunationHasNoMoonrise) {
    CSWVisibility& v = visibility_;
    OBSERVER london = support::site(51.5, 0);
    const double first = jd(2005, 3, 1);
    const auto days = search(first - 2, first + 33, kMoon, london);
    v.InitSearch(first, first + 30, kMoon, &london);
    RISESETVIS request;
    int without_rise = 0, without_set = 0;
    for (int i = 0; i < 30; ++i) {
        request.from = first + i, request.to = first + i + 1;
        ASSERT_TRUE(v.SearchRiseSet(&request));
        EXPECT_GE(request.moonrise, 0);
        EXPECT_GE(request.moonset, 0);
        // A day without one: neither is there one in the other search, unless at midnight.
        for (const auto& [time, field] : {std::pair{request.moonrise, &VISIBILITY::rise},
                                          std::pair{request.moonset, &VISIBILITY::set}}) {
            if (time != 0) continue;
            for (const VISIBILITY& day : days)
                EXPECT_FALSE(day.*field > request.from + 4 * kMinute &&
                             day.*field < request.to - 4 * kMinute);
        }
        without_rise += request.moonrise == 0;
        without_set += request.moonset == 0;
        // Of the same definition but for the disk: 15 to 17 arcmin, that is one to four minutes
        // here; nothing else may lie between.
        for (const auto& [time, field] : {std::pair{request.moonrise, &VISIBILITY::rise},
                                          std::pair{request.moonset, &VISIBILITY::set}}) {
            if (time == 0) continue;
            EXPECT_GE(time, request.from);
            EXPECT_LE(time, request.to);
            double nearest = 1;
            for (const VISIBILITY& day : days)
                nearest = std::min(nearest, std::fabs(day.*field - time));
            EXPECT_LT(nearest, 4 * kMinute);
            EXPECT_GT(nearest, kMinute);
        }
    }
    EXPECT_GE(without_rise, 1);
    EXPECT_LE(without_rise, 2);  // a lunation has 29.5 days
    EXPECT_GE(without_set, 1);
    EXPECT_LE(without_set, 2);
    v.FreeRiseSetVector(&request);
    EXPECT_EQ(request.days, nullptr);
}

TEST_F(Visibility, RiseSetGoesOnWhereItStopped) {
    // At sea level a planet's levels are those of the day-by-day search.
    OBSERVER observer = support::site(40, 20);
    const double first = jd(2005, 4, 1, 6);
    const auto days = search(first - 2, first + 12, kJupiter, observer);
    visibility_.InitSearch(first, first + 10, kJupiter, &observer);
    RISESETVIS request;
    for (int part = 0; part < 2; ++part) {
        request.from = first + 5 * part, request.to = request.from + 5;
        ASSERT_TRUE(visibility_.SearchRiseSet(&request));
        EXPECT_EQ(request.day + request.fraction, request.from);
    }
    std::size_t matched = 0;
    double last = 0;
    for (const RISESETDAY& found : *request.days) {
        EXPECT_GT(found.transit, last);  // no day twice
        last = found.transit;
        for (const VISIBILITY& day : days) {
            if (std::fabs(day.transit - found.transit) > 0.1) continue;
            ++matched;
            EXPECT_NEAR(found.rise, day.rise, kSecond);
            EXPECT_NEAR(found.set, day.set, kSecond);
            EXPECT_NEAR(found.rise_azimuth, day.rise_azimuth, 1e-4);
            EXPECT_NEAR(found.transit_altitude, day.transit_altitude, 1e-6);
            EXPECT_NEAR(found.illuminated, day.illuminated, 1e-6);
        }
        EXPECT_NEAR(found.end_altitude, altitude(*model_, kJupiter, et(first + 5)), 1.0);
    }
    EXPECT_EQ(matched, 10U);
    EXPECT_EQ(request.days->size(), 10U);
    visibility_.FreeRiseSetVector(&request);
}

TEST_F(Visibility, RiseSetTellsTheSunsDayAndItsSentinels) {
    const auto day_of = [&](double from, const OBSERVER& place, const SSO_ID& id) {
        OBSERVER observer = place;
        visibility_.InitSearch(from, from + 1, id, &observer);
        RISESETVIS request;
        request.from = from, request.to = from + 1;
        EXPECT_TRUE(visibility_.SearchRiseSet(&request));
        return request;
    };
    RISESETVIS spring = day_of(jd(2005, 3, 20), support::site(45, 0), kSun);
    for (const double t : {spring.sunrise, spring.sunset})
        EXPECT_NEAR(altitude(*model_, kSun, et(t)), kLevel, 1e-5);
    for (const double t : {spring.dawn, spring.dusk})
        EXPECT_NEAR(altitude(*model_, kSun, et(t)), -18 * kDegree, 1e-5);
    EXPECT_LT(spring.dawn, spring.sunrise);
    EXPECT_LT(spring.sunset, spring.dusk);
    visibility_.FreeRiseSetVector(&spring);

    for (const double date : {jd(2005, 6, 21), jd(2005, 12, 21)}) {
        RISESETVIS polar = day_of(date, support::site(75, 0), kSun);
        for (const double t : {polar.dawn, polar.dusk, polar.sunrise, polar.sunset})
            EXPECT_EQ(t, -1);
        visibility_.FreeRiseSetVector(&polar);
    }
    RISESETVIS up = day_of(jd(2005, 1, 1), support::site(60, 0), kVegaId);
    EXPECT_EQ(up.days->front().rise, 0);
    EXPECT_EQ(up.days->front().set, 0);
    EXPECT_GT(up.days->front().transit, 0);
    visibility_.FreeRiseSetVector(&up);
    RISESETVIS down = day_of(jd(2005, 1, 1), support::site(80, 0), kSiriusId);
    EXPECT_EQ(down.days->front().transit, -2);
    EXPECT_EQ(down.days->front().transit_altitude, 0);
    visibility_.FreeRiseSetVector(&down);
}

TEST_F(Visibility, CulminationsStandOnTheMeridian) {
    OBSERVER observer = support::site(50, 15);
    const double from = et(jd(2005, 2, 1));
    for (SSO_ID id : {kSun, kMoon, kJupiter, kVegaId}) {
        visibility_.InitSearch(jd(2005, 2, 1), jd(2005, 2, 2), id, &observer);
        double upper = 0, highest = 0, time = 0, lowest = 0;
        if (!visibility_.GetCulmination(&id, from, from + 1, &upper, &highest, 0))
            visibility_.GetCulmination(&id, from, from + 1, &upper, &highest, 2 * kPi);
        EXPECT_TRUE(from <= upper && upper <= from + 1);
        EXPECT_TRUE(visibility_.GetCulmination(&id, upper - 1, upper, &time, &lowest, -kPi));
        EXPECT_NEAR(time, upper - 0.5, 0.02);
        EXPECT_TRUE(visibility_.GetCulmination(&id, upper, upper + 1, &time, &lowest, kPi));
        EXPECT_NEAR(time, upper + 0.5, 0.02);
        EXPECT_FALSE(
            visibility_.GetCulmination(&id, upper + 0.1, upper + 0.2, &time, &lowest, 0));
        // The altitude is least and greatest there, but for the motion in declination.
        for (const double aside : {-0.02, 0.02})
            EXPECT_GT(highest, altitude(*model_, id, upper + aside));
    }
}

TEST_F(Visibility, CrossingsOfAnAltitudeAreThere) {
    OBSERVER observer = support::site(50, 15);
    for (SSO_ID id : {kSun, kMoon, kJupiter, SSO_ID(SSO_ASTR, support::kCeres), kVegaId}) {
        visibility_.InitSearch(jd(2005, 4, 1), jd(2005, 4, 2), id, &observer);
        double top = 0, highest = 0;
        const double from = et(jd(2005, 4, 1));
        visibility_.GetCulmination(&id, from, from + 1, &top, &highest, 0);
        for (const double elevation : {highest - 0.02, highest / 2}) {
            for (const short sign : {short{1}, short{-1}}) {
                double single = 0, time = 0, azimuth = 0;
                ASSERT_TRUE(visibility_.GetEventsTimeForElevation(
                    &id, elevation, top - sign * 0.2, single, azimuth, sign));
                ASSERT_TRUE(visibility_.GetEventsTimeForElevation(
                    &id, elevation, sign > 0 ? top - 0.5 : top, sign > 0 ? top : top + 0.5,
                    time, azimuth, sign));
                EXPECT_NEAR(single, time, kSecond);
                EXPECT_NEAR(altitude(*model_, id, time), elevation, 1e-5);
                EXPECT_LT((time - top) * sign, 0);
                EXPECT_EQ(sign > 0, azimuth < kPi);
            }
        }
        double time = 1, azimuth = 0;
        visibility_.GetEventsTimeForElevation(&id, highest + 0.1, top, time, azimuth, 1);
        EXPECT_EQ(time, 0);  // not reached
    }
}

TEST_F(Visibility, NearestTimesAreThoseOfTheSearch) {
    const OBSERVER observer = support::site(40, 20);
    for (SSO_ID id : {kJupiter, kSiriusId}) {
        const auto days = search(jd(2005, 4, 1), jd(2005, 4, 9), id, observer);
        const VISIBILITY& day = days[3];
        for (const double aside : {-0.3, -0.1, 0.05, 0.15}) {  // below, up, past the transit
            double times[3], azimuths[3];
            ASSERT_TRUE(visibility_.FindNearestRiseSetTimes(&id, et(day.transit + aside), 1.2,
                                                            kLevel, times, azimuths));
            EXPECT_NEAR(times[0], et(day.rise), 1.5 * kSecond);
            EXPECT_NEAR(times[1], et(day.transit), 30 * kSecond);  // the planet moves
            EXPECT_NEAR(times[2], et(day.set), 1.5 * kSecond);
            EXPECT_NEAR(azimuths[0], day.rise_azimuth, 1e-4);
            EXPECT_NEAR(azimuths[1], day.transit_altitude, 1e-5);
            EXPECT_NEAR(azimuths[2], day.set_azimuth, 1e-4);
        }
    }
    SSO_ID vega = kVegaId;  // does not set at 60 degrees
    double times[3];
    OBSERVER north = support::site(60, 0);
    visibility_.InitSearch(jd(2005, 1, 1), jd(2005, 1, 2), vega, &north);
    EXPECT_FALSE(visibility_.FindNearestRiseSetTimes(&vega, et(jd(2005, 1, 1)), 1.2, kLevel,
                                                     times, nullptr));
}

TEST_F(Visibility, ExtremaAlternateAndSpacecraftPassOver) {
    OBSERVER observer = support::site(30, 15);
    visibility_.InitSearch(jd(2005, 4, 1), jd(2005, 4, 2), kSun, &observer);
    // A satellite 700 km up, inclined by 60 degrees: 7.5 km/s, 99 minutes.
    UserObjectRecord record;
    record.epoch_day = 2453462;
    const double r = 7078.0 / solsys::kAuKm;
    const double v = 7.5044 * 86400 / solsys::kAuKm;
    record.state[0] = r;
    record.state[4] = v / 2, record.state[5] = v * std::sqrt(0.75);
    ASSERT_TRUE(model_->AddUserObject(7, record));
    for (SSO_ID id : {SSO_ID(SSO_USCO, 7), kJupiter}) {
        const double start = et(jd(2005, 4, 1, 18));
        const double step = id == kJupiter ? 0.4 : 0.02;
        double from = start;
        int before = 0;
        for (int i = 0; i < 6; ++i) {
            double time = 0, sine = 0;
            const int kind =
                visibility_.FindObjSinAltMinMax(&id, from, 40 * step, &time, &sine);
            ASSERT_NE(kind, 0);
            EXPECT_EQ(kind * before <= 0, true) << "two of a kind in a row";
            for (const double aside : {-20 * kSecond, 20 * kSecond})
                EXPECT_GT(kind * (std::asin(sine) - altitude(*model_, id, time + aside)), 0);
            double back = 0;
            EXPECT_EQ(
                visibility_.FindObjSinAltMinMax(&id, time + 5 * kSecond, -step, &back, &sine),
                kind);
            EXPECT_NEAR(back, time, 2.5 * kSecond);
            before = kind;
            from = time + 2 * kSecond;
        }
    }
    // Its culmination is the first maximum, by either walk, and it rises before that.
    SSO_ID craft(SSO_USCO, 7);
    const double from = et(jd(2005, 4, 1, 18));
    double time = 0, highest = 0, walked = 0, walked_altitude = 0, azimuth = 0;
    ASSERT_TRUE(visibility_.GetCulmination(&craft, from, from + 0.2, &time, &highest, 0));
    ASSERT_TRUE(visibility_.GetCulmination4Spacecraft(&craft, time - 0.01, time + 0.01, &walked,
                                                      &walked_altitude, 0));
    EXPECT_NEAR(walked, time, 3 * kSecond);
    EXPECT_NEAR(walked_altitude, highest, 1e-3);
    double low = 0, lowest = 0;
    ASSERT_TRUE(visibility_.GetCulmination(&craft, time - 0.1, time, &low, &lowest, -kPi));
    const double level = (highest + lowest) / 2;
    ASSERT_TRUE(
        visibility_.GetEventsTimeForElevation(&craft, level, low, time, walked, azimuth, 1));
    EXPECT_NEAR(altitude(*model_, craft, walked), level, 1e-4);
}

TEST_F(Visibility, HorizonAndZenithAreWhereTheyStand) {
    OBSERVER observer = support::site(40, 20);
    const int day = 2453462;
    const auto* points = visibility_.GetHorizon(day, 0.3, &observer, 4);
    ASSERT_EQ(points->size(), 4U);
    std::vector<double> azimuths;
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_GE((*points)[i > 0 ? i - 1 : 0].ra, (*points)[i].ra);
        double azimuth = 0, alt = 0;
        model_->FromRAToAzm(false, &(*points)[i].ra, &(*points)[i].dec, &azimuth, &alt);
        EXPECT_NEAR(alt, 0, 1e-12);
        azimuths.push_back(std::round(azimuth / kDegree * 1e6) / 1e6);
    }
    EXPECT_THAT(azimuths,
                testing::UnorderedElementsAre(testing::AnyOf(0.0, 360.0), 90, 180, 270));
    EXPECT_TRUE(visibility_.GetHorizon(day, 0.3, &observer, 0)->empty());
    EXPECT_TRUE(visibility_.GetHorizon(day, 0.3, &observer, -3)->empty());

    double morning[4], evening[4];
    EXPECT_EQ(visibility_.GetZenith(day, 0.5, &observer, morning, evening), 4);
    const auto days = search(day + 0.5, day + 1.5, kSun, observer);
    const auto expect_zenith = [&](double ut, const double* point) {
        int whole = 0;
        double fraction = 0;
        ET_UT::UT2ET(ut, whole, fraction);
        const double sidereal = SiderialTime(true, whole, fraction) + 20 * kDegree;
        EXPECT_NEAR(std::remainder(point[0] - sidereal, 2 * kPi), 0, 1e-6);
        EXPECT_NEAR(point[1], 40 * kDegree, 1e-9);
    };
    expect_zenith(days[0].dawn, morning);
    expect_zenith(days[0].sunrise, morning + 2);
    expect_zenith(days[0].dusk, evening);
    expect_zenith(days[0].sunset, evening + 2);
    OBSERVER dark = support::site(-89, 0);
    EXPECT_EQ(visibility_.GetZenith(2453542, 0.5, &dark, morning, evening), 0);
    EXPECT_EQ(morning[0], evening[0]);
    EXPECT_NEAR(morning[1], -89 * kDegree, 1e-9);
    EXPECT_EQ(morning[2], 1000);
    EXPECT_EQ(evening[3], 1000);
}

TEST_F(Visibility, CurrentViewIsTheModels) {
    OBSERVER observer = support::site(40, 20, 2.5);
    tagCURVISIBILITY now;
    now.type = SSO_MOON, now.number = 301, now.flag = 1;
    now.day = 2453462, now.fraction = 0.4;
    ASSERT_TRUE(visibility_.GetCurVisibility(&observer, &now));
    // 2.5 km of height are 2.5 km, not 2.5 au.
    const OBSERVER in_au = support::for_model(observer);
    model_->SetObserver(&in_au);
    EXPECT_NEAR(altitude(*model_, kMoon, et(now.day + now.fraction)), now.altitude, 1e-7);
    double place[3];
    model_->GetRADecVis(kMoon, place, 0.0);
    EXPECT_NEAR(now.distance, place[0], 1e-10);
    EXPECT_NEAR(now.semidiameter, std::atan(1737.4 / (place[0] * solsys::kAuKm)), 1e-6);
    EXPECT_EQ(now.flag, 0);
    EXPECT_EQ(now.horizontal, 1);
    EXPECT_EQ(static_cast<char>(now.constellation), model_->RADecInConstell(now.ra, now.dec));
    EXPECT_NEAR(std::cos(now.phase_angle), 2 * now.illuminated - 1, 1e-9);

    OBSERVER centre;
    centre.body_type = SSO_PLNT, centre.body_number = 3;
    now.type = SSO_STAR, now.number = support::kSirius;
    ASSERT_TRUE(visibility_.GetCurVisibility(&centre, &now));
    EXPECT_EQ(now.horizontal, 0);
    EXPECT_EQ(now.semidiameter, -1);
    EXPECT_FLOAT_EQ(now.magnitude, -1.46F);
    now.number = 12345;
    EXPECT_FALSE(visibility_.GetCurVisibility(&centre, &now));

    double matrix[9];
    visibility_.GetMtrxEq_Ec(2453462, 0.9, matrix);
    EXPECT_THAT(std::vector<double>(matrix, matrix + 9),
                testing::ElementsAreArray(model_->GetMtrxEqCur_EclCur(), 9));
}

TEST_F(Visibility, PhysicalDataArePublished) {
    model_->UpdateSys(2453462, 0.0);
    struct Row {
        SSO_ID id;
        double elongation_deg, escape_km_s, mass_kg;
    };
    // Maximum elongation of the mean orbit; escape velocity and mass of the NASA planetary fact
    // sheets.
    for (const Row& row :
         {Row{SSO_ID(SSO_PLNT, 1), 22.8, 4.25, 3.30e23},
          Row{SSO_ID(SSO_PLNT, 2), 46.3, 10.36, 4.87e24},
          Row{SSO_ID(SSO_PLNT, 3), -1, 11.19, 5.97e24},
          Row{SSO_ID(SSO_PLNT, 5), -1, 59.5, 1.898e27}, Row{kMoon, -1, 2.38, 7.35e22}}) {
        PHYSINFO info;
        ASSERT_TRUE(visibility_.GetPhysInfo(row.id, &info));
        EXPECT_NEAR(info.escape_velocity, row.escape_km_s, 0.01 * row.escape_km_s);
        EXPECT_NEAR(info.mass, row.mass_kg, 0.005 * row.mass_kg);
        if (row.elongation_deg > 0) {
            EXPECT_NEAR(info.max_elongation / kDegree, row.elongation_deg, 0.1);
        } else {
            EXPECT_EQ(info.max_elongation, -1);
        }
    }
    PHYSINFO info;
    visibility_.GetPhysInfo(SSO_ID(SSO_PLNT, 5), &info);
    EXPECT_NEAR(info.mass_ratio, 1047.35, 0.1);
    // Callisto: 1.883 million km at 4.44 au, about ten minutes of arc; 1.465 Moon masses.
    visibility_.GetPhysInfo(SSO_ID(SSO_MOON, 504), &info);
    EXPECT_NEAR(info.max_elongation / kDegree * 60, 9.7, 0.2);
    EXPECT_NEAR(info.mass_ratio, 1.465, 0.01);
    EXPECT_FALSE(visibility_.GetPhysInfo(kSiriusId, &info));
    EXPECT_EQ(info.mass, -1);
}

TEST_F(Visibility, BriefLineIsOfTheDay) {
    const OBSERVER observer = support::site(40, 20);
    const auto days = search(jd(2005, 4, 1, 12), jd(2005, 4, 2, 12), kSiriusId, observer);
    BRIEF_INFO info;
    const double start = jd(2005, 4, 1, 12);
    ASSERT_TRUE(visibility_.GetBrief_OI(static_cast<int>(start), 0.0, kSiriusId, &info));
    EXPECT_NEAR(info.transit, days[0].transit, kSecond);
    EXPECT_NEAR(info.rise, days[0].rise, kSecond);
    EXPECT_NEAR(info.set, days[0].set, kSecond);
    EXPECT_NEAR(info.best_altitude, (90 - 40 - 16.72) * kDegree, 1e-3);
    EXPECT_FLOAT_EQ(info.magnitude, -1.46F);
    EXPECT_EQ(info.constellation, 13);  // Canis Major is the 14th of the alphabet
    EXPECT_FALSE(
        visibility_.GetBrief_OI(static_cast<int>(start), 0.0, SSO_ID(SSO_STAR, 5), &info));
}

TEST(VisibilityModel, ItsOwnServesAsABorrowedOne) {
    DE_Ephemeris::clear();
    StarwickPath::SetEphemerisPath(SOLSYS_DE405);
    OBSERVER observer = support::site(40, 20);
    const double from = jd(2005, 4, 1);
    std::vector<VISIBILITY> own;
    {
        CSWVisibility visibility;
        visibility.InitSearch(from, from + 3, kJupiter, &observer);
        visibility.SearchVisibility();
        own = visibility.GetResults();
    }
    StarwickPath::SetEphemerisPath(nullptr);
    const auto model = support::de405_model();
    CSWVisibility visibility(model.get());
    visibility.InitSearch(from, from + 3, kJupiter, &observer);
    ASSERT_EQ(visibility.SearchVisibility(), static_cast<int>(own.size()));
    EXPECT_EQ(visibility.GetResults()[2].rise, own[2].rise);
}

}  // namespace
