// The members of CSWVisibility against published times, and against a scan of the altitudes
// that the model gives.
#include "solsys/visibility.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "solsys/calendar.h"
#include "solsys/earth_orientation.h"
#include "solsys/platform.h"
#include "tests/events/sites.h"

namespace {

using solsys::kDegree;
using solsys::kPi;
using support::site;

constexpr double kSecond = 1 / 86400.0;
constexpr double kMinute = 60 * kSecond;
constexpr double kLevel = -34 / 60.0 * kDegree;

const SSO_ID kSun(SSO_PLNT, 10), kMoon(SSO_MOON, 301), kJupiter(SSO_PLNT, 5);
const SSO_ID kSiriusId(SSO_STAR, support::kSirius), kVegaId(SSO_STAR, support::kVega);
const SSO_ID kCraft(SSO_USCO, 7);

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

class Visibility : public testing::Test {
  protected:
    Visibility() : model_(support::de405_model()), visibility_(model_.get()) {
        support::add_objects(*model_);
        // A satellite 700 km up, inclined by 60 degrees: 7.5 km/s, 99 minutes.
        UserObjectRecord record;
        record.epoch_day = 2453462;
        const double v = 7.5044 * 86400 / solsys::kAuKm;
        record.state[0] = 7078.0 / solsys::kAuKm;
        record.state[4] = v / 2, record.state[5] = v * std::sqrt(0.75);
        model_->AddUserObject(kCraft.number, record);
    }
    std::vector<VISIBILITY> search(double from, double days, const SSO_ID& id, OBSERVER place) {
        visibility_.InitSearch(from, from + days, id, &place);
        const int count = visibility_.SearchVisibility();
        EXPECT_EQ(count, static_cast<int>(visibility_.GetResults().size()));
        return visibility_.GetResults();
    }
    RISESETVIS rise_set(double from, double days, const SSO_ID& id, OBSERVER place) {
        visibility_.InitSearch(from, from + days, id, &place);
        RISESETVIS request;
        request.from = from, request.to = from + days;
        EXPECT_TRUE(visibility_.SearchRiseSet(&request));
        days_ = *request.days;
        visibility_.FreeRiseSetVector(&request);
        EXPECT_EQ(request.days, nullptr);
        return request;
    }

    std::unique_ptr<CSWSolSys> model_;
    CSWVisibility visibility_;
    std::vector<RISESETDAY> days_;  // of the last rise_set
};

// Printed to the minute: half a minute, and as much again for the site's rounded coordinates.
struct Published {
    double latitude, longitude;
    SSO_ID id;
    double from;                // UT midnight
    double rise, transit, set;  // minutes after `from`; negative: not given
};

TEST_F(Visibility, AgreesWithAlmanacsToTheMinute) {
    for (const Published& p :
         {// Venus at Boston: Meeus 1998, Astronomical Algorithms, example 15.a.
          Published{42.3333, -71.0833, {SSO_PLNT, 2}, jd(1988, 3, 20), 745, 1181, 175},
          // The Sun at Wayne: Almanac for Computers 1990 (US Naval Observatory).
          Published{40.9, -74.3, kSun, jd(1990, 6, 25), 566, -1, -1},
          // The longest and the shortest day of London, as every almanac of it has them.
          Published{51.5, -0.1167, kSun, jd(2024, 6, 21), 223, -1, 1221},
          Published{51.5, -0.1167, kSun, jd(2024, 12, 21), 483.5, -1, 953.5}}) {
        const auto days = search(p.from - 1, 3, p.id, site(p.latitude, p.longitude));
        for (const auto& [minutes, field] :
             {std::pair{p.rise, &VISIBILITY::rise}, std::pair{p.transit, &VISIBILITY::transit},
              std::pair{p.set, &VISIBILITY::set}}) {
            double nearest = minutes < 0 ? 0 : 1;
            for (const VISIBILITY& day : days)
                nearest = std::min(nearest, std::fabs(day.*field - p.from - minutes * kMinute));
            EXPECT_LE(nearest, kMinute) << p.from << " " << minutes;
        }
    }
}

// Every member's times against the altitudes around them: at a crossing the level lies between
// those a second before and after, at an extremum the altitude is beyond both.
struct Scan {
    CSWSolSys& model;
    OBSERVER place;
    SSO_ID id;
    double altitude(double jd_tt) const {
        return support::look(model, place, id, jd_tt, true).altitude;
    }
    void crosses(double jd_tt, double level, int sign, double slack_s = 1) const {
        EXPECT_LT((altitude(jd_tt - slack_s * kSecond) - level) * sign, 0) << id.number;
        EXPECT_GT((altitude(jd_tt + slack_s * kSecond) - level) * sign, 0) << id.number;
    }
    void culminates(double jd_tt, double value, int sign, double aside) const {
        // A satellite's extrema leave out light time: 0.04 s of 7.5 km/s beyond the Earth.
        EXPECT_NEAR(altitude(jd_tt), value, id == kCraft ? 3e-5 : 2e-6);
        for (const double t : {jd_tt - aside, jd_tt + aside})
            EXPECT_GT((value - altitude(t)) * sign, 0) << id.number;
    }
};

TEST_F(Visibility, MembersAgreeWithAScanOfAltitudes) {
    for (SSO_ID id : {kSun, kMoon, kJupiter, SSO_ID(SSO_ASTR, support::kCeres), kVegaId}) {
        const OBSERVER place = site(50, 15);
        const Scan scan{*model_, place, id};
        const double from = et(jd(2005, 4, 1));
        for (const VISIBILITY& day : search(jd(2005, 4, 1), 3, id, place))
            scan.culminates(et(day.transit), day.transit_altitude, 1, 0.02);

        double top = 0, highest = 0, low = 0, lowest = 0;
        if (!visibility_.GetCulmination(&id, from, from + 1, &top, &highest, 0))
            visibility_.GetCulmination(&id, from, from + 1, &top, &highest, 2 * kPi);
        EXPECT_TRUE(from <= top && top <= from + 1);
        EXPECT_FALSE(visibility_.GetCulmination(&id, top + 0.1, top + 0.2, &low, &lowest, 0));
        for (const int side : {-1, 1}) {
            EXPECT_TRUE(visibility_.GetCulmination(&id, std::min(top, top + side),
                                                   std::max(top, top + side), &low, &lowest,
                                                   side * kPi));
            EXPECT_NEAR(low, top + side * 0.5, 0.025);  // the Moon's half day: 0.522 at most
            scan.culminates(low, lowest, -1, 0.02);
        }
        for (const double level : {highest - 0.02, highest / 2}) {
            for (const short sign : {short{1}, short{-1}}) {
                double single = 0, time = 0, azimuth = 0;
                ASSERT_TRUE(visibility_.GetEventsTimeForElevation(&id, level, top - sign * 0.2,
                                                                  single, azimuth, sign));
                scan.crosses(single, level, sign);
                ASSERT_TRUE(visibility_.GetEventsTimeForElevation(
                    &id, level, sign > 0 ? top - 0.5 : top, sign > 0 ? top : top + 0.5, time,
                    azimuth, sign));
                scan.crosses(time, level, sign);
                EXPECT_LT((time - top) * sign, 0);
                EXPECT_NEAR(azimuth, support::look(*model_, place, id, time, true).azimuth,
                            1e-6);
            }
        }
        double time = 1, azimuth = 0;
        visibility_.GetEventsTimeForElevation(&id, highest + 0.1, top, time, azimuth, 1);
        EXPECT_EQ(time, 0);  // not reached

        for (const double aside : {-0.2, -0.05, 0.1}) {  // before it, on the way up, past it
            double times[3], angles[3];
            const double level = highest / 2;
            ASSERT_TRUE(visibility_.FindNearestRiseSetTimes(&id, top + aside, 1.2, level, times,
                                                            angles));
            scan.crosses(times[0], level, 1), scan.crosses(times[2], level, -1);
            scan.culminates(times[1], angles[1], 1, 0.02);
            EXPECT_LT(times[0], times[1]);
            EXPECT_LT(times[1], times[2]);
            for (const int i : {0, 2})
                EXPECT_NEAR(angles[i],
                            support::look(*model_, place, id, times[i], true).azimuth, 1e-6);
        }
    }
}

TEST_F(Visibility, ExtremaAlternateAndSpacecraftPassOver) {
    OBSERVER place = site(30, 15);
    const double start = et(jd(2005, 4, 1, 18));
    for (SSO_ID id : {kCraft, kJupiter}) {
        visibility_.InitSearch(jd(2005, 4, 1), jd(2005, 4, 2), id, &place);
        const Scan scan{*model_, place, id};
        const double step = id == kJupiter ? 0.4 : 0.02;
        double from = start;
        int before = 0;
        for (int i = 0; i < 6; ++i) {
            double time = 0, sine = 0, back = 0;
            const int kind =
                visibility_.FindObjSinAltMinMax(&id, from, 40 * step, &time, &sine);
            ASSERT_NE(kind, 0);
            EXPECT_LE(kind * before, 0) << "two of a kind in a row";
            scan.culminates(time, std::asin(sine), kind, 20 * kSecond);
            EXPECT_EQ(
                visibility_.FindObjSinAltMinMax(&id, time + 5 * kSecond, -step, &back, &sine),
                kind);
            EXPECT_NEAR(back, time, 2.5 * kSecond);
            before = kind;
            from = time + 2 * kSecond;
        }
    }
    // Its culmination is the first maximum, by either walk, and it rises before that.
    const Scan scan{*model_, place, kCraft};
    SSO_ID craft = kCraft;
    double top = 0, highest = 0, walked = 0, value = 0, low = 0, lowest = 0, azimuth = 0;
    ASSERT_TRUE(visibility_.GetCulmination(&craft, start, start + 0.2, &top, &highest, 0));
    scan.culminates(top, highest, 1, 20 * kSecond);
    ASSERT_TRUE(visibility_.GetCulmination4Spacecraft(&craft, top - 0.01, top + 0.01, &walked,
                                                      &value, 0));
    EXPECT_NEAR(walked, top, 3 * kSecond);
    EXPECT_NEAR(value, highest, 1e-3);
    ASSERT_TRUE(visibility_.GetCulmination(&craft, top - 0.1, top, &low, &lowest, -kPi));
    const double level = (highest + lowest) / 2;
    ASSERT_TRUE(
        visibility_.GetEventsTimeForElevation(&craft, level, low, top, walked, azimuth, 1));
    scan.crosses(walked, level, 1);
}

// What stands where a level is not crossed, at places and dates of every kind.
TEST_F(Visibility, LevelsThatAreNotCrossedLeaveTheirMarks) {
    const OBSERVER north = site(69.65, 18.96);
    for (const VISIBILITY& day : search(jd(2005, 6, 10), 10, kSun, north)) {  // midnight Sun
        for (const double slot : {day.dawn, day.dusk, day.sunrise, day.sunset})
            EXPECT_EQ(slot, day.transit);
        EXPECT_EQ(day.rise + day.set, 0);
        EXPECT_NEAR(day.no_rise_time, day.transit - 0.5, 0.01);
        EXPECT_NEAR(day.no_set_altitude,
                    support::look(*model_, north, kSun, day.no_set_time).altitude, 1e-5);
    }
    const auto winter = search(jd(2005, 12, 15), 10, kSun, north);  // twilight alone
    ASSERT_EQ(winter.size(), 10U);
    for (const VISIBILITY& day : winter) {
        EXPECT_TRUE(day.sunrise == day.transit && day.sunset == day.transit);
        EXPECT_TRUE(day.rise == day.dawn && day.set == day.dusk && day.dusk > day.transit);
    }
    for (const VISIBILITY& day : search(jd(2005, 6, 18), 5, kSun, site(55, 37))) {
        EXPECT_EQ(day.dawn, day.transit);  // white nights: the Sun sets, twilight lasts
        EXPECT_LT(day.sunrise, day.transit - 0.3);
        EXPECT_GT(day.no_rise_altitude, -18 * kDegree);
    }
    EXPECT_TRUE(search(jd(2005, 6, 10), 20, kSun, site(-88, 0)).empty());
    EXPECT_TRUE(search(jd(2005, 1, 1), 365, kSiriusId, site(80, 0)).empty());
    for (const VISIBILITY& day : search(jd(2005, 1, 1), 4, kVegaId, site(60, 0))) {
        EXPECT_EQ(day.rise + day.set, 0);
        EXPECT_NEAR(day.no_rise_altitude, (60 + 38.79 - 90) * kDegree, 3e-4);
        EXPECT_NEAR(day.no_set_time - day.transit, 0.498635, 1e-5);
    }

    // The other search: -1 for the Sun, 0 above and -2 below all day for the object.
    for (const double date : {jd(2005, 6, 21), jd(2005, 12, 21)}) {
        const RISESETVIS polar = rise_set(date, 1, kSun, site(75, 0));
        EXPECT_THAT((std::array{polar.dawn, polar.dusk, polar.sunrise, polar.sunset}),
                    testing::Each(-1.0));
    }
    rise_set(jd(2005, 1, 1), 1, kVegaId, site(60, 0));
    EXPECT_TRUE(days_[0].rise == 0 && days_[0].set == 0 && days_[0].transit > 0);
    rise_set(jd(2005, 1, 1), 1, kSiriusId, site(80, 0));
    EXPECT_TRUE(days_[0].transit == -2 && days_[0].transit_altitude == 0);
}

TEST_F(Visibility, RiseSetHasTheDaysOfTheCrossings) {
    // At sea level a planet's levels are those of the certified crossings.
    OBSERVER place = site(40, 20);
    const double first = jd(2005, 4, 1, 6);
    visibility_.InitSearch(first, first + 10, kJupiter, &place);
    ASSERT_EQ(visibility_.SearchCrossings(kLevel, false), 20);
    RISESETVIS request;
    for (const double part : {0, 5}) {  // each goes on where the last one stopped
        request.from = first + part, request.to = request.from + 5;
        ASSERT_TRUE(visibility_.SearchRiseSet(&request));
        EXPECT_EQ(request.day + request.fraction, request.from);
    }
    ASSERT_EQ(request.days->size(), 10U);
    double last = 0;
    for (const RISESETDAY& day : *request.days) {
        EXPECT_GT(day.transit, last);  // no day twice
        last = day.transit;
        for (const auto& [time, azimuth] :
             {std::pair{day.rise, day.rise_azimuth}, std::pair{day.set, day.set_azimuth}}) {
            if (time < first || time > first + 10) continue;
            EXPECT_THAT(
                visibility_.GetCrossings(),
                testing::Contains(testing::AllOf(
                    testing::Field(&CROSSING::time, testing::DoubleNear(time, kSecond)),
                    testing::Field(&CROSSING::azimuth, testing::DoubleNear(azimuth, 1e-4)))));
        }
        EXPECT_NEAR(support::look(*model_, place, kJupiter, day.transit).altitude,
                    day.transit_altitude, 1e-6);
        double lit = 0;
        model_->PhaseElongation(kJupiter, nullptr, &lit, nullptr, nullptr, nullptr);
        EXPECT_NEAR(day.illuminated, lit, 1e-6);
    }
    const auto end = support::look(*model_, place, kJupiter, first + 5);
    EXPECT_NEAR(request.days->front().end_altitude, end.altitude, 1e-6);
    EXPECT_NEAR(request.days->front().end_azimuth, end.azimuth, 1e-6);
    visibility_.FreeRiseSetVector(&request);

    const RISESETVIS spring = rise_set(jd(2005, 3, 20), 1, kSun, site(45, 0));
    const Scan scan{*model_, site(45, 0), kSun};
    scan.crosses(et(spring.sunrise), kLevel, 1), scan.crosses(et(spring.sunset), kLevel, -1);
    scan.crosses(et(spring.dawn), -18 * kDegree, 1);
    scan.crosses(et(spring.dusk), -18 * kDegree, -1);
}

TEST_F(Visibility, MoonHasTheRisesOfTheCrossingsDayByDay) {
    OBSERVER london = site(51.5, 0);
    const double first = jd(2005, 3, 1);
    visibility_.InitSearch(first, first + 30, kMoon, &london);
    visibility_.SearchCrossings(kLevel, false);
    const auto all = visibility_.GetCrossings();
    int without_rise = 0, without_set = 0;
    for (double day = first; day < first + 30; ++day) {
        const RISESETVIS found = rise_set(day, 1, kMoon, london);
        double rise = 0, set = 0;
        for (const CROSSING& c : all)
            if (c.time >= day && c.time < day + 1) (c.sense > 0 ? rise : set) = c.time;
        EXPECT_NEAR(found.moonrise, rise, kSecond);
        EXPECT_NEAR(found.moonset, set, kSecond);
        without_rise += rise == 0, without_set += set == 0;
    }
    // A lunation has 29.5 days.
    EXPECT_THAT((std::array{without_rise, without_set}),
                testing::Each(testing::AllOf(testing::Ge(1), testing::Le(2))));
}

TEST_F(Visibility, DayAndLineDescribeTheObject) {
    for (const VISIBILITY& day : search(jd(2005, 4, 1), 3, kJupiter, site(40, 20))) {
        support::look(*model_, site(40, 20), kJupiter, day.transit);
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
    const double start = jd(2005, 4, 1, 12);
    const auto days = search(start, 1, kSiriusId, site(40, 20));
    BRIEF_INFO info;
    ASSERT_TRUE(visibility_.GetBrief_OI(static_cast<int>(start), 0.0, kSiriusId, &info));
    EXPECT_NEAR(info.transit, days[0].transit, kSecond);
    EXPECT_NEAR(info.rise, days[0].rise, kSecond);
    EXPECT_NEAR(info.set, days[0].set, kSecond);
    EXPECT_NEAR(info.best_altitude, (90 - 40 - 16.72) * kDegree, 1e-3);
    EXPECT_FLOAT_EQ(info.magnitude, -1.46F);
    EXPECT_EQ(info.constellation, 13);  // Canis Major is the 14th of the alphabet
}

TEST_F(Visibility, HorizonAndZenithAreWhereTheyStand) {
    OBSERVER observer = site(40, 20);
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
    const VISIBILITY sun = search(day + 0.5, 1, kSun, observer)[0];
    for (const auto& [ut, point] :
         {std::pair{sun.dawn, morning}, std::pair{sun.sunrise, morning + 2},
          std::pair{sun.dusk, evening}, std::pair{sun.sunset, evening + 2}}) {
        int whole = 0;
        double fraction = 0;
        ET_UT::UT2ET(ut, whole, fraction);
        const double sidereal = SiderialTime(true, whole, fraction) + 20 * kDegree;
        EXPECT_NEAR(std::remainder(point[0] - sidereal, 2 * kPi), 0, 1e-6);
        EXPECT_NEAR(point[1], 40 * kDegree, 1e-9);
    }
    OBSERVER dark = site(-89, 0);
    EXPECT_EQ(visibility_.GetZenith(2453542, 0.5, &dark, morning, evening), 0);
    EXPECT_EQ(morning[0], evening[0]);
    EXPECT_NEAR(morning[1], -89 * kDegree, 1e-9);
    EXPECT_TRUE(morning[2] == 1000 && evening[3] == 1000);
}

TEST_F(Visibility, CurrentViewIsTheModels) {
    OBSERVER observer = site(40, 20, 2.5);
    tagCURVISIBILITY now;
    now.type = SSO_MOON, now.number = 301, now.flag = 1;
    now.day = 2453462, now.fraction = 0.4;
    ASSERT_TRUE(visibility_.GetCurVisibility(&observer, &now));
    // 2.5 km of height are 2.5 km, not 2.5 au.
    const auto view = support::look(*model_, observer, kMoon, now.day + now.fraction);
    EXPECT_NEAR(view.altitude, now.altitude, 1e-7);
    EXPECT_NEAR(view.azimuth, now.azimuth, 1e-7);
    EXPECT_NEAR(now.distance, view.distance, 1e-10);
    EXPECT_NEAR(now.semidiameter, std::atan(1737.4 / (view.distance * solsys::kAuKm)), 1e-6);
    EXPECT_TRUE(now.flag == 0 && now.horizontal == 1);
    EXPECT_EQ(static_cast<char>(now.constellation), model_->RADecInConstell(now.ra, now.dec));
    EXPECT_NEAR(std::cos(now.phase_angle), 2 * now.illuminated - 1, 1e-9);

    OBSERVER centre;
    centre.body_type = SSO_PLNT, centre.body_number = 3;
    now.type = SSO_STAR, now.number = support::kSirius;
    ASSERT_TRUE(visibility_.GetCurVisibility(&centre, &now));
    EXPECT_TRUE(now.horizontal == 0 && now.semidiameter == -1);
    EXPECT_FLOAT_EQ(now.magnitude, -1.46F);

    double matrix[9];
    EXPECT_TRUE(visibility_.GetMtrxEq_Ec(2453462, 0.9, matrix));
    EXPECT_THAT(matrix, testing::ElementsAreArray(model_->GetMtrxEqCur_EclCur(), 9));

    // A cluster of half a degree.
    const SSO_ID cluster(SSO_CLST, 1);
    model_->AddStar(cluster, {.ra = 1.0, .dec = 0.4, .angular_size = 0.0087F});
    now.type = cluster.type, now.number = cluster.number;
    ASSERT_TRUE(visibility_.GetCurVisibility(&centre, &now));
    EXPECT_NEAR(now.semidiameter, 0.00435, 1e-9);
}

// Escape velocity and mass of the NASA planetary fact sheets; greatest elongations of mean
// orbits: moons by atan(a / |a_planet - 1 au|).
TEST_F(Visibility, PhysicalDataArePublished) {
    struct Row {
        SSO_ID id;
        double elongation_deg, escape_km_s, mass_kg;
    };
    for (const Row& row :
         {Row{{SSO_PLNT, 1}, 22.8, 4.25, 3.30e23}, Row{{SSO_PLNT, 2}, 46.3, 10.36, 4.87e24},
          Row{{SSO_PLNT, 3}, -1, 11.19, 5.97e24}, Row{{SSO_PLNT, 5}, -1, 59.5, 1.898e27},
          Row{kMoon, -1, 2.38, 7.35e22}, Row{{SSO_MOON, 501}, 138.4 / 3600, 2.56, 8.93e22},
          Row{{SSO_MOON, 504}, 617.7 / 3600, 2.44, 1.076e23},
          Row{{SSO_MOON, 401}, 24.7 / 3600, 0.0114, 1.066e16}}) {
        for (const int day : {2453462, 2453662}) {
            model_->UpdateSys(day, 0.0);
            PHYSINFO info;
            ASSERT_TRUE(visibility_.GetPhysInfo(row.id, &info));
            EXPECT_NEAR(info.escape_velocity, row.escape_km_s, 0.02 * row.escape_km_s);
            EXPECT_NEAR(info.mass, row.mass_kg, 0.01 * row.mass_kg);
            if (row.elongation_deg > 0) {
                EXPECT_NEAR(info.max_elongation / kDegree, row.elongation_deg,
                            0.01 * row.elongation_deg);
            } else {
                EXPECT_EQ(info.max_elongation, -1);
            }
        }
    }
    PHYSINFO info;
    visibility_.GetPhysInfo(kJupiter, &info);
    EXPECT_NEAR(info.mass_ratio, 1047.35, 0.1);
    visibility_.GetPhysInfo(SSO_ID(SSO_MOON, 504), &info);
    EXPECT_NEAR(info.mass_ratio, 1.465, 0.01);  // Callisto's mass in Moons
    EXPECT_FALSE(visibility_.GetPhysInfo(kSiriusId, &info));
    EXPECT_EQ(info.mass, -1);
}

TEST(VisibilityModel, ItsOwnServesAsABorrowedOne) {
    OBSERVER observer = site(40, 20);
    const auto third_rise = [&](CSWSolSys* model) {
        CSWVisibility visibility(model);
        visibility.InitSearch(2453462, 2453465, kJupiter, &observer);
        visibility.SearchVisibility();
        return visibility.GetResults()[2].rise;
    };
    const auto model = support::de405_model();
    const double borrowed = third_rise(model.get());
    DE_Ephemeris::clear();
    StarwickPath::SetEphemerisPath(SOLSYS_DE405);
    EXPECT_EQ(third_rise(nullptr), borrowed);
    StarwickPath::SetEphemerisPath(nullptr);
}

}  // namespace
