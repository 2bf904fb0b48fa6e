// Eclipses as sites see them.
#include <gtest/gtest.h>

#include <cmath>

#include "core/constants.h"
#include "solsys/calendar.h"
#include "solsys/eclipses.h"
#include "tests/events/sites.h"
#include "tests/support/csv.h"

namespace {

using solsys::kDegree;
using solsys::test::CsvRow;

double jd_of_iso(const std::string& text) {  // 2017-08-21T17:19:28Z
    int day = 0;
    double fraction = 0;
    const auto number = [&](int at, int n) {
        return static_cast<short>(std::stoi(text.substr(at, n)));
    };
    DJ(&day, &fraction, number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(14, 2),
       number(17, 2));
    return day + fraction;
}

class LocalEclipses : public testing::Test {
  protected:
    LocalEclipses() { search_.SetPrecise(true); }
    ECLIPSE at(double jd, short kind, double latitude, double longitude) {
        OBSERVER site = support::site(latitude, longitude);
        search_.InitSearchForLocation(jd - 3, jd + 3, &site);
        ECLIPSE e, local;
        EXPECT_TRUE(search_.SearchNext(&e, kind));
        visible_ = search_.CheckForLocation(&e, kind, &local);
        return local;
    }
    std::unique_ptr<CSWSolSys> model_ = support::de405_model();
    CSWEclipses search_{model_.get()};
    bool visible_ = false;
};

// Printed to 1 s; the Delta T of the rows of 2024 is 4 s too large. The publication's k for the
// outer contacts is 0.2725076: 0.1 s.
TEST_F(LocalEclipses, ContactsAgreeWithThePublishedOnes) {
    for (const CsvRow& row :
         solsys::test::read_csv(SOLSYS_TEST_DATA "/reference/local_solar_eclipses.csv")) {
        const double published = jd_of_iso(row[5]);
        const ECLIPSE e = at(published, ECLIPSE_SOLAR, std::stod(row[1]), std::stod(row[2]));
        const double times[5] = {e.begin, e.total_begin, e.greatest, e.total_end, e.end};
        const char* names[5] = {"first", "second", "greatest", "third", "fourth"};
        for (int i = 0; i < 5; ++i) {
            if (row[4] != names[i]) continue;
            const double allowed = row[0] < "2024" ? 2.0 : 6.5;
            EXPECT_NEAR((e.day + times[i] - published) * 86400, 0, allowed) << row[0] << row[4];
            EXPECT_NEAR(e.altitude[i] / kDegree, std::stod(row[6]), 0.6) << row[0] << row[4];
        }
        EXPECT_STREQ(e.type == ECLIPSE_ANNULAR ? "annular" : "partial", row[3].c_str());
        EXPECT_TRUE(visible_);
    }
}

// The contacts by polynomials against the phase straight from the model, instant by instant.
TEST_F(LocalEclipses, PolynomialsAgreeWithTheModel) {
    const ECLIPSE e = at(2451401.96, ECLIPSE_SOLAR, 48.137, 11.575);
    ASSERT_EQ(e.type, ECLIPSE_TOTAL);
    OBSERVER site = support::site(48.137, 11.575);
    const double second = 1 / 86400.0;
    for (const double t : {e.begin, e.end}) {  // magnitude changes by 1.6e-4 a second
        EXPECT_NEAR(search_.GetSolarEclipsePhase(&site, e.day + t), 0, 4e-6);
        const double inside = t == e.begin ? 30 * second : -30 * second;
        EXPECT_GT(search_.GetSolarEclipsePhase(&site, e.day + t + inside), 0.003);
    }
    double magnitude = 0, obscuration = 0, angle = 0;
    EXPECT_TRUE(search_.GetEclParams(&site, e.day + e.total_begin - second, &magnitude,
                                     &obscuration, &angle));
    EXPECT_LT(obscuration, 1);
    EXPECT_GT(obscuration, 0.999);
    EXPECT_TRUE(search_.GetEclParams(&site, e.day + e.total_begin + second, &magnitude,
                                     &obscuration, &angle));
    EXPECT_EQ(obscuration, 1);
    EXPECT_NEAR(search_.GetSunAltitude(&site, e.day + e.greatest), e.altitude[2], 5e-5);
    double sun = 0, moon = 0;
    ASSERT_TRUE(search_.GetSunMoonVisRad(&site, e.day + e.greatest, &sun, &moon));
    EXPECT_NEAR(moon / sun, e.magnitude, 9e-4);  // one k against two
    EXPECT_EQ(search_.GetSolarEclipsePhase(&site, e.day + e.greatest + 14.8), 0);  // full Moon
}

// Obscuration of two disks against counting points.
TEST_F(LocalEclipses, ObscurationIsTheCoveredArea) {
    const ECLIPSE e = at(2451401.96, ECLIPSE_SOLAR, 52.52, 13.405);
    OBSERVER site = support::site(52.52, 13.405);
    double sun = 0, moon = 0;
    ASSERT_TRUE(search_.GetSunMoonVisRad(&site, e.day + e.greatest, &sun, &moon));
    const double apart = sun + moon - 2 * sun * e.local_magnitude;
    int covered = 0, all = 0;
    for (int i = -500; i <= 500; ++i)
        for (int j = -500; j <= 500; ++j) {
            const double x = sun * i / 500, y = sun * j / 500;
            if (std::hypot(x, y) > sun) continue;
            ++all;
            covered += std::hypot(x - apart, y) < moon;
        }
    EXPECT_NEAR(e.obscuration, static_cast<double>(covered) / all, 1e-3);
}

// Sunset cuts the eclipse of 2017 in Lisbon short; in Sydney the Sun is down throughout.
TEST_F(LocalEclipses, HorizonCutsIn) {
    const ECLIPSE lisbon = at(2457987.27, ECLIPSE_SOLAR, 38.72, -9.14);
    EXPECT_TRUE(visible_);
    EXPECT_GT(lisbon.set, lisbon.begin);
    EXPECT_LT(lisbon.set, lisbon.end);
    EXPECT_LT(lisbon.altitude[4], -0.01);
    EXPECT_LE(lisbon.local_magnitude, lisbon.magnitude);
    at(2457987.27, ECLIPSE_SOLAR, -33.87, 151.21);
    EXPECT_FALSE(visible_);
    // 2018 July 27: the Moon rises eclipsed in London, and is down in New York.
    const ECLIPSE london = at(2458327.35, ECLIPSE_LUNAR, 51.5, -0.12);
    EXPECT_TRUE(visible_);
    EXPECT_GT(london.rise, london.total_begin);
    EXPECT_LT(london.rise, london.total_end);
    EXPECT_GT(london.local_magnitude, 1);
    at(2458327.35, ECLIPSE_LUNAR, 40.7, -74.0);
    EXPECT_FALSE(visible_);
}

TEST_F(LocalEclipses, SearchKeepsWhatIsVisible) {
    OBSERVER site = support::site(48.137, 11.575);
    search_.InitSearchForLocation(2451179.5, 2455197.5, &site);  // 1999 to 2009
    EXPECT_EQ(search_.SearchEclipsesForLocation(ECLIPSE_SOLAR), 5);
    EXPECT_EQ(search_.GetResults().front().type, ECLIPSE_TOTAL);
    OBSERVER pole = support::site(90, 0);
    search_.InitSearchForLocation(2451179.5, 2455197.5, &pole);
    for (int i = 0; i < search_.SearchEclipsesForLocation(ECLIPSE_SOLAR); ++i) {
        EXPECT_GT(search_.GetResults()[i].altitude[2], -0.02);
    }
    OBSERVER nowhere = support::site(NAN, 0);
    for (OBSERVER* bad : {&nowhere, static_cast<OBSERVER*>(nullptr)}) {
        search_.InitSearchForLocation(2451179.5, 2455197.5, bad);
        EXPECT_EQ(search_.SearchEclipsesForLocation(ECLIPSE_SOLAR), 0);
        EXPECT_EQ(search_.GetSolarEclipsePhase(bad, 2451401.96), 0);
    }
    EXPECT_EQ(search_.GetSunAltitude(&site, NAN), 0);
    // A search for the whole Earth forgets the site before.
    search_.InitSearchForLocation(2451179.5, 2455197.5, &site);
    search_.InitSearch(2451179.5, 2455197.5);
    EXPECT_EQ(search_.SearchEclipsesForLocation(ECLIPSE_SOLAR), 0);
}

}  // namespace
