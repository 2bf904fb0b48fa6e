// The Earth's orientation, the calendar and the ellipsoid against ERFA.
#include "solsys/earth_orientation.h"

#include <erfa.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "solsys/calendar.h"
#include "solsys/time_scales.h"
#include "solsys/toolkit.h"

namespace {

constexpr double kTwoPi = 6.283185307179586476925;

class Instants {
  public:
    Instants(int first, int last) : day_(first, last) {}
    int day() { return day_(engine_); }
    double fraction() { return fraction_(engine_); }

  private:
    std::mt19937_64 engine_{2026};
    std::uniform_int_distribution<int> day_;
    std::uniform_real_distribution<double> fraction_{0, 1};
};

struct Span {
    int first, last;
    double nutation;  // tolerance [rad]
};
class NutationSpan : public testing::TestWithParam<Span> {};

TEST_P(NutationSpan, SeriesAndObliquityAreThoseOfErfa) {
    const auto& span = GetParam();
    Instants instants(span.first, span.last);
    double worst = 0;
    double worst_obliquity = 0;
    for (int i = 0; i < 5000; ++i) {
        const int day = instants.day();
        const double fraction = instants.fraction();
        double psi = 0, eps = 0;
        eraNut80(day, fraction, &psi, &eps);
        for (auto* nutation : {&NutationSeidelman, &NutationSeidelmanBest}) {
            double obliquity = 0, d_psi = 0, d_epsilon = 0;
            nutation(day, fraction, obliquity, d_psi, d_epsilon);
            worst = std::max({worst, std::fabs(d_psi - psi), std::fabs(d_epsilon - eps)});
            worst_obliquity =
                std::max(worst_obliquity, std::fabs(obliquity - eraObl80(day, fraction)));
        }
    }
    EXPECT_LT(worst, span.nutation);
    EXPECT_LT(worst_obliquity, 4e-16);
}

// ERFA takes whole turns out of the rates, here they stay in: the arguments, up to 4e5 rad over
// 50 centuries, are rounded differently by 6e-11 rad of 17.2".
INSTANTIATE_TEST_SUITE_P(Spans, NutationSpan,
                         testing::Values(Span{2378497, 2524593, 2e-16},
                                         Span{625673, 2816788, 4e-15}));

TEST(Oracle, PrecessionIsThatOfErfa) {
    Instants instants(2378497, 2524593);
    double worst_angle = 0;
    double worst_century = 0;
    double worst_day = 0;
    for (int i = 0; i < 5000; ++i) {
        const int day0 = instants.day();
        const int day1 = i % 5 == 0 ? day0 + 1 : instants.day();
        const double f0 = instants.fraction();
        const double f1 = instants.fraction();
        double m[9], zeta = 0, z = 0, theta = 0;
        Precession(day0, f0, day1, f1, m, &zeta, &z, &theta);
        double e_zeta = 0, e_z = 0, e_theta = 0;
        eraPrec76(day0, f0, day1, f1, &e_zeta, &e_z, &e_theta);
        worst_angle = std::max({worst_angle, std::fabs(zeta - e_zeta), std::fabs(z - e_z),
                                std::fabs(theta - e_theta)});
        double e[3][3];
        eraIr(e);
        eraRz(-e_zeta, e);
        eraRy(e_theta, e);
        eraRz(-e_z, e);
        double& worst = std::abs(day1 - day0) > 3652 ? worst_century : worst_day;
        for (int k = 0; k < 9; ++k) worst = std::max(worst, std::fabs(m[k] - e[k / 3][k % 3]));
    }
    EXPECT_LT(worst_angle, 2e-16);
    // The sines come from the cosines: 1.1e-16 over the angle, which is 2e-3 in ten years.
    // Below 1.5e-8 rad the cosine is 1 and the sine is lost, in two angles at once. day.
    EXPECT_LT(worst_century, 4e-13);
    EXPECT_LT(worst_day, 3e-8);
}

// At 0h UT the expressions are the same. Within the day the rate used here is 3.0e-8 turns a
// day below that of the expression from midnight to midnight; that part is taken out.
TEST(Oracle, MeanSiderealTimeIsThatOfErfa) {
    constexpr double kRate = 1.0027379093507951;  // turns a day, at J2000.0
    constexpr double kRatePerCentury = 5.9006e-11;
    Instants instants(2415021, 2488069);
    double worst = 0;
    for (int i = 0; i < 5000; ++i) {
        const int day = instants.day();
        const double fraction = instants.fraction();
        const double ut = fraction - ET_UT::Get(day, fraction) / 86400;
        const double from_midnight = ut - 0.5 - std::trunc(ut - 0.5);
        const double rate_difference =
            kRate + kRatePerCentury * (day - 2451545) / 36525 - 1.002737879753;
        const double difference = SiderialTime(false, day, fraction) +
                                  kTwoPi * rate_difference * from_midnight - eraGmst82(day, ut);
        worst = std::max(worst, std::fabs(std::remainder(difference, kTwoPi)));
    }
    EXPECT_LT(worst, 1e-11);
}

TEST(Oracle, GregorianDatesAreThoseOfErfa) {
    std::mt19937_64 engine(1582);
    std::uniform_int_distribution<int> year(1583, 9999);
    for (int i = 0; i < 20000; ++i) {
        const auto y = static_cast<short>(year(engine));
        const auto m = static_cast<short>(1 + engine() % 12);
        const auto d = static_cast<short>(1 + engine() % 28);
        double zero = 0, mjd = 0;
        ASSERT_EQ(eraCal2jd(y, m, d, &zero, &mjd), 0);
        int day = 0;
        double fraction = 0;
        DJ(&day, &fraction, y, m, d, 0, 0, 0);
        ASSERT_EQ(day + fraction, zero + mjd);
        short by = 0, bm = 0, bd = 0, hour = 0, minute = 0;
        double day_fraction = 0, second = 0;
        JD(day, fraction, &by, &bm, &bd, &day_fraction, &hour, &minute, &second);
        ASSERT_TRUE(by == y && bm == m && bd == d && hour == 0 && second == 0);
    }
}

TEST(Oracle, EpochsAreThoseOfErfa) {
    for (short year = 1600; year < 2400; ++year) {
        for (const char kind : {'J', 'B'}) {
            int day = 0;
            double fraction = 0;
            BJ(kind, year, &day, &fraction);
            double zero = 0, mjd = 0;
            (kind == 'J' ? eraEpj2jd : eraEpb2jd)(year, &zero, &mjd);
            EXPECT_NEAR((day - zero) + (fraction - mjd), 0, 1e-9);
        }
    }
}

TEST(Oracle, EllipsoidIsThatOfErfa) {
    Instants random(0, 1);
    const double a = 6378137.0;
    const double f = 1 / 298.257223563;
    double worst_xyz = 0, worst_lat = 0;
    for (int i = 0; i < 5000; ++i) {
        const double geo[3] = {3e5 * random.fraction(), 6.28 * random.fraction() - 3.14,
                               3.0 * random.fraction() - 1.5};
        double xyz[3], e_xyz[3];
        Plg2Plc(a, f, geo, xyz);
        ASSERT_EQ(eraGd2gce(a, f, geo[1], geo[2], geo[0], e_xyz), 0);
        // The sines from the cosines lose digits near the axes.
        const double lost =
            1 / std::min(std::fabs(std::sin(geo[1])), std::fabs(std::sin(geo[2])));
        for (int k = 0; k < 3; ++k)
            worst_xyz = std::max(worst_xyz, std::fabs(xyz[k] - e_xyz[k]) / a / lost);
        double back[3], lon = 0, lat = 0, height = 0;
        Plc2Plg(a, f, e_xyz, back);
        ASSERT_EQ(eraGc2gde(a, f, e_xyz, &lon, &lat, &height), 0);
        worst_lat = std::max({worst_lat, std::fabs(back[2] - lat), std::fabs(back[1] - lon),
                              std::fabs(back[0] - height) / a * std::cos(lat)});
    }
    EXPECT_LT(worst_xyz, 5e-16);
    // The latitude may stop a step of 1e-14 short, which is that times tan in the height.
    EXPECT_LT(worst_lat, 6e-14);
}

}  // namespace
