// Curves on the globe against published elements and against what their own points see.
#include <gtest/gtest.h>

#include <cmath>

#include "core/constants.h"
#include "solsys/eclipses.h"
#include "tests/events/sites.h"
#include "tests/support/csv.h"
#include "tests/support/models.h"

namespace {

using solsys::kDegree;
using solsys::test::CsvRow;
using solsys::test::read_csv;

constexpr double kTurn = 0.00417807;  // degrees in a second of Delta T

class EclipseMaps : public testing::Test {
  protected:
    EclipseMaps() { search_.SetPrecise(true); }
    ECLIPSE solar(double jd) {
        ECLIPSE e;
        search_.InitSearch(jd - 3, jd + 3);
        EXPECT_TRUE(search_.SearchNext(&e, ECLIPSE_SOLAR)) << jd;
        return e;
    }
    ECLIPSE local(const ECLIPSE& e, double latitude, double longitude) {
        ECLIPSE out;
        OBSERVER site = support::site(latitude / kDegree, longitude / kDegree);
        search_.EclipseParamsForLocation(&e, e.kind, &out, &site);
        return out;
    }
    std::unique_ptr<CSWSolSys> model_ = support::built_in_model();
    CSWEclipses search_{model_.get()};
};

double km_apart(double lat1, double lon1, double lat2, double lon2) {
    const double s = std::sin((lat1 - lat2) / 2), c = std::sin((lon1 - lon2) / 2);
    return 2 * 6371 * std::asin(std::sqrt(s * s + std::cos(lat1) * std::cos(lat2) * c * c));
}

// Across the line within a kilometre; along it a point moves by a kilometre or more a second,
// and the canon's own times are good to half a second.
TEST_F(EclipseMaps, CentralLinesAgreeWithPublishedElements) {
    for (const CsvRow& row : read_csv(SOLSYS_TEST_DATA "/reference/central_lines.csv")) {
        const double jd_tt = std::stod(row[1]);
        const ECLIPSE e = solar(jd_tt);
        const double latitude = std::stod(row[2]) * kDegree;
        const double longitude = (std::stod(row[3]) + kTurn * e.delta_t) * kDegree;
        double nearest = 1e9;
        EclipsePathPoint p;
        for (double s = -1.5; s <= 1.5; s += 0.05) {
            const double ut = jd_tt + (s - e.delta_t) / 86400;
            if (search_.GetPathPoint(&e, ut, &p))
                nearest =
                    std::min(nearest, km_apart(latitude, longitude, p.latitude, p.longitude));
        }
        // At a low Sun the ground stretches what the elements leave open.
        const double slant = std::max(std::sin(p.sun_altitude), 0.05);
        EXPECT_LT(nearest, std::max(1.0, 0.35 / slant))
            << row[0] << ' ' << p.sun_altitude / kDegree;
        EXPECT_NEAR(p.duration, std::stod(row[4]), 1.0) << row[0];
    }
}

TEST_F(EclipseMaps, LocalContactsAgreeWithPublishedElements) {
    for (const CsvRow& row : read_csv(SOLSYS_TEST_DATA "/reference/local_contacts.csv")) {
        const ECLIPSE e = solar(std::stod(row[5]));
        const double longitude = std::stod(row[4]) + kTurn * (e.delta_t - std::stod(row[1]));
        const ECLIPSE here = local(e, std::stod(row[3]) * kDegree, longitude * kDegree);
        const double times[4] = {here.begin, here.total_begin, here.total_end, here.end};
        for (int i = 0; i < 4; ++i) {
            if (row[5 + i].empty()) {
                EXPECT_EQ(times[i], -1.0) << row[2];
                continue;
            }
            const double tt = here.day + times[i] + here.delta_t / 86400;
            EXPECT_NEAR((tt - std::stod(row[5 + i])) * 86400, 0, 1.0) << row[2] << i;
        }
    }
}

// Printed to 1 s and 1 km.
TEST_F(EclipseMaps, WidthsAndDurationsAgreeWithTheCanon) {
    int compared = 0;
    for (const CsvRow& row : read_csv(SOLSYS_TEST_DATA "/reference/solar_eclipses.csv")) {
        if (row[17].empty() || row[18].empty()) continue;
        const ECLIPSE e = solar(std::stod(row[3]));
        EclipsePathPoint p;
        if (e.centrality != ECLIPSE_CENTRAL) continue;
        ASSERT_TRUE(search_.GetPathPoint(&e, e.day + e.greatest, &p));
        EXPECT_NEAR(p.duration, std::stod(row[18]), 1.0) << row[1];
        const double width = std::stod(row[17]);
        EXPECT_NEAR(p.width, width, std::max(0.8, 0.01 * width)) << row[1];
        ++compared;
    }
    EXPECT_GT(compared, 150);
}

// Total with all four limits, over a pole, hybrid, with one limit, non-central, partial.
class MapOf : public EclipseMaps, public testing::WithParamInterface<double> {
  protected:
    // Every few points of every curve, as the local circumstances see it.
    template <class Check>
    void sample(const std::vector<EclipseCurve>& curves, Check&& check) {
        for (const EclipseCurve& curve : curves) {
            for (std::size_t i = 1; i < curve.size(); ++i)
                EXPECT_LT(km_apart(curve[i - 1].latitude, curve[i - 1].longitude,
                                   curve[i].latitude, curve[i].longitude),
                          1900);
            for (std::size_t i = 2; i + 2 < curve.size(); i += 7) check(curve[i]);
        }
    }
};

TEST_P(MapOf, PointsSeeWhatTheirCurveSays) {
    const ECLIPSE e = solar(GetParam());
    std::vector<EclipseCurve> curves;
    const auto sees = [&](double magnitude) {
        return [this, &e, magnitude](const EclipsePoint& p) {
            const ECLIPSE here = local(e, p.latitude, p.longitude);
            // Both the greatest magnitude and its time are the point's own.
            EXPECT_NEAR(here.magnitude, magnitude, 6e-4) << p.latitude / kDegree;
            EXPECT_NEAR(here.day + here.greatest, p.time, 20 / 86400.0);
        };
    };
    for (const double magnitude : {0.3, 0.7}) {
        ASSERT_TRUE(search_.GetMagnitudeCurve(&e, magnitude, &curves));
        sample(curves, sees(magnitude));
    }
    ASSERT_TRUE(search_.GetPenumbralLimits(&e, &curves));
    EXPECT_FALSE(curves.empty());
    sample(curves, [&](const EclipsePoint& p) {
        EXPECT_NEAR(search_.GetSolarEclipsePhase(p.latitude, p.longitude, p.time), 0, 2e-4);
    });
    ASSERT_TRUE(search_.GetRiseSetCurves(&e, &curves));
    EXPECT_FALSE(curves.empty());
    sample(curves, [&](const EclipsePoint& p) {
        OBSERVER site = support::site(p.latitude / kDegree, p.longitude / kDegree);
        EXPECT_NEAR(search_.GetSunAltitude(&site, p.time) / kDegree, 0, 0.01);
        EXPECT_NEAR(search_.GetSolarEclipsePhase(&site, p.time), 0, 2e-4);
    });
    ASSERT_TRUE(search_.GetIsochrones(&e, 30, &curves));
    sample(curves, [&](const EclipsePoint& p) {
        const ECLIPSE here = local(e, p.latitude, p.longitude);
        if (here.contact[ECLIPSE_P1] != -1.0) return;  // on the very edge
        EXPECT_NEAR(here.day + here.greatest, p.time, 20 / 86400.0);
    });
    ASSERT_TRUE(search_.GetUmbralLimits(&e, &curves));
    EXPECT_EQ(curves.empty(), e.type == ECLIPSE_PARTIAL);
    sample(curves, [&](const EclipsePoint& p) {
        const ECLIPSE here = local(e, p.latitude, p.longitude);
        const double edge = e.type == ECLIPSE_ANNULAR ? e.magnitude : 1;
        if (here.total_begin == -1.0) {
            EXPECT_NEAR(here.magnitude, edge, e.type == ECLIPSE_ANNULAR ? 0.02 : 1e-3);
        }
        EXPECT_LT(here.total_end - here.total_begin, 30 / 86400.0);
    });
}

INSTANTIATE_TEST_SUITE_P(Kinds, MapOf,
                         testing::Values(2451401.96,    // 1999 August 11, total
                                         2452967.46,    // 2003 November 23, total, Antarctica
                                         2452790.67,    // 2003 May 31, annular, one limit
                                         2456600.03,    // 2013 November 3, hybrid
                                         2456776.75,    // 2014 April 29, annular, non-central
                                         2455567.87,    // 2011 January 4, partial
                                         2459376.94));  // 2021 June 10, annular, over the pole

TEST_F(EclipseMaps, LimitsOfTimeHoldTheContacts) {
    const ECLIPSE e = solar(2451401.96);
    double t[4], phase[2];
    ASSERT_TRUE(search_.FindTimeLimits(&e, t));
    for (const double time : t) {
        EXPECT_GT(time, e.day + e.contact[ECLIPSE_U1] - 1e-6);
        EXPECT_LT(time, e.day + e.contact[ECLIPSE_U4] + 1e-6);
    }
    ASSERT_TRUE(search_.FindPhaseTimeLimits(&e, 0, phase));
    EXPECT_NEAR(phase[0], e.day + e.begin, 1e-8);
    ASSERT_TRUE(search_.FindPhaseTimeLimits(&e, 0.5, phase));
    EXPECT_GT(phase[0], e.day + e.begin);
    EXPECT_LT(phase[1], e.day + e.end);
    EXPECT_FALSE(search_.FindPhaseTimeLimits(&e, 1.5, phase));
    std::vector<EclipseCurve> curves;
    EXPECT_FALSE(search_.GetCentralLine(nullptr, &curves));
    EXPECT_FALSE(search_.GetIsochrones(&e, 0, &curves));
    EXPECT_FALSE(search_.GetVisibilityRegion(&e, &curves));
}

// On the circle the Moon's centre stands on the refracted horizon.
TEST_F(EclipseMaps, LunarHorizonsHoldTheMoonAtTheHorizon) {
    ECLIPSE e;
    search_.InitSearch(2458325, 2458330);  // 2018 July 27, total
    ASSERT_TRUE(search_.SearchNext(&e, ECLIPSE_LUNAR));
    std::vector<EclipseCurve> circles;
    ASSERT_TRUE(search_.GetVisibilityRegion(&e, &circles));
    ASSERT_EQ(circles.size(), 7U);
    for (std::size_t i = 0; i < circles.size(); ++i)
        for (std::size_t k = 0; k < circles[i].size(); k += 12) {
            const ECLIPSE here = local(e, circles[i][k].latitude, circles[i][k].longitude);
            EXPECT_NEAR(here.altitude[i] / kDegree, -34 / 60.0, 0.02);
        }
}

}  // namespace
