// The modern models of the Earth's orientation against values computed with ERFA.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "frames/cio_locator.h"
#include "frames/earth_rotation.h"
#include "frames/iau2000a_nutation.h"
#include "frames/iau2006_precession.h"
#include "frames/leap_seconds.h"
#include "frames/pole_nodes.h"
#include "frames/tdb.h"
#include "tests/support/named_csv.h"

namespace solsys {
namespace {

const std::string kReference = SOLSYS_TEST_DATA "/reference/";

double largest_difference(const Mat3& a, const Mat3& b) {
    double most = 0;
    for (const Vec3 d : {a.r0 - b.r0, a.r1 - b.r1, a.r2 - b.r2})
        most = std::max({most, std::fabs(d.x), std::fabs(d.y), std::fabs(d.z)});
    return most;
}

// Rounding of the sums is 1e-19 rad, of the matrices 2e-16; sidereal times take whole turns off
// 400 of them.
TEST(ModernOrientation, AgreesWithErfaToRounding) {
    for (const auto& row : test::read_named_csv(kReference + "modern_orientation.csv")) {
        SCOPED_TRACE(row.text("tt_day"));
        const Instant tt = row.instant("tt"), ut1 = row.instant("ut1");

        EXPECT_NEAR(tdb_minus_tt(tt), row["tdb_minus_tt_s"], 9e-6);  // 7 of 787 terms
        const NutationOffsets published = nutation_iau2000a(tt);
        EXPECT_NEAR(published.d_psi, row["dpsi_2000a"], 1e-18);
        EXPECT_NEAR(published.d_epsilon, row["deps_2000a"], 1e-18);
        const PoleSeries pole = pole_series(tt);
        EXPECT_NEAR(pole.d_psi, row["dpsi"], 1e-18);
        EXPECT_NEAR(pole.d_epsilon, row["deps"], 1e-18);
        const FukushimaWilliams angles = fukushima_williams(tt);
        EXPECT_NEAR(angles.epsilon, row["eps_A"], 2e-16);
        EXPECT_NEAR(angles.gamma, row["gamma_bar"], 1e-16);
        EXPECT_NEAR(angles.phi, row["phi_bar"], 2e-16);
        EXPECT_NEAR(angles.psi, row["psi_bar"], 1e-16);

        const Mat3 m = equator_from_gcrs(angles, pole.d_psi, pole.d_epsilon);
        EXPECT_LT(largest_difference(m, row.matrix("m")), 4e-16);
        EXPECT_NEAR(pole.locator - m.r2.x * m.r2.y / 2, row["cio_s"], 1e-17);
        const double eo = equation_of_origins(m, pole.locator);
        EXPECT_NEAR(eo, row["eo"], 4e-16);
        EXPECT_NEAR(earth_rotation_angle(ut1), row["era"], 1e-12);
        EXPECT_NEAR(mean_sidereal_time_2006(ut1, tt), row["gmst"], 1e-12);
        EXPECT_NEAR(greenwich_sidereal_time(ut1, eo), row["gst"], 1e-12);
    }
}

TEST(ModernOrientation, PolarMotionAndTerrestrialAxesAgreeWithErfa) {
    for (const auto& row : test::read_named_csv(kReference + "modern_terrestrial.csv")) {
        SCOPED_TRACE(row.text("utc"));
        const Instant tt = row.instant("tt");
        const Mat3 w =
            polar_motion_matrix({row["xp_arcsec"] * kArcsec, row["yp_arcsec"] * kArcsec}, tt);
        EXPECT_LT(largest_difference(w, row.matrix("w")), 3e-16);
        const PoleSeries pole = pole_series(tt);
        const Mat3 m = equator_from_gcrs(fukushima_williams(tt), pole.d_psi, pole.d_epsilon);
        const double gst =
            greenwich_sidereal_time(row.instant("ut1"), equation_of_origins(m, pole.locator));
        EXPECT_LT(largest_difference(w * rotate_z(gst) * m, row.matrix("t")), 1e-12);

        const LeapSeconds leap;
        const Instant utc = leap.utc_from_tt(tt);
        EXPECT_NEAR(days_between(row.instant("ut1"), utc) * kSecondsPerDay, -row["dut1_s"],
                    1e-8);
    }
}

// Where instants follow each other the series are interpolated; wherever they jump, summed.
TEST(ModernOrientation, NodesGiveTheSeries) {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> day(-150000, 80000), step(-0.3, 0.4);
    PoleNodes nodes;
    double most = 0;
    for (int start = 0; start < 20; ++start) {
        double t = day(random);
        for (int i = 0; i < 40; ++i, t += step(random)) {
            const Instant tt{kJ2000Day + static_cast<int>(t), t - static_cast<int>(t)};
            const PoleSeries sum = pole_series(tt), quick = nodes.at(tt);
            most = std::max({most, std::fabs(quick.d_psi - sum.d_psi),
                             std::fabs(quick.d_epsilon - sum.d_epsilon),
                             std::fabs(quick.locator - sum.locator)});
        }
    }
    EXPECT_LT(most, 5e-15);  // 1e-6 mas
    EXPECT_GT(most, 0);      // nodes were used at all
    EXPECT_TRUE(std::isnan(nodes.at({0, std::nan("")}).d_psi));
}

TEST(LeapSeconds, StepsRatesAndNewerRows) {
    LeapSeconds leap;
    EXPECT_EQ(leap.tai_minus_utc(41316.999), 9.892242 + (41316.999 - 41317) * 0.002592);
    EXPECT_EQ(leap.tai_minus_utc(41317), 10);
    EXPECT_EQ(leap.tai_minus_utc(57753.99), 36);
    EXPECT_EQ(leap.tai_minus_utc(90000), 37);
    EXPECT_NEAR(leap.tai_minus_utc(36933), 1.417818 - 366 * 0.001296, 1e-12);
    EXPECT_TRUE(std::isnan(leap.tai_minus_utc(std::nan(""))));

    const LeapSecondRow newer[] = {{57754, 37}, {62000, 38}};
    ASSERT_TRUE(leap.replace(newer, 62200));
    EXPECT_EQ(leap.tai_minus_utc(61999.9), 37);
    EXPECT_EQ(leap.tai_minus_utc(62000), 38);
    EXPECT_EQ(leap.tai_minus_utc(50000), 29);
    const LeapSecondRow disorder[] = {{62000, 38}, {57754, 37}};
    const LeapSecondRow odd[] = {{62000, std::numeric_limits<double>::infinity()}};
    EXPECT_FALSE(leap.replace(disorder, 62200));
    EXPECT_FALSE(leap.replace(odd, 62200));
    EXPECT_EQ(leap.tai_minus_utc(62000), 38);
}

}  // namespace
}  // namespace solsys
