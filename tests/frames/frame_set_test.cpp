#include "frames/frame_set.h"

#include <gtest/gtest.h>

#include "tests/support/geometry.h"

namespace {

using solsys::FrameSet;
using solsys::Mat3;
using solsys::Vec3;

using solsys::test::distance;

class FramesAt : public testing::TestWithParam<solsys::Instant> {};

TEST_P(FramesAt, ChainToOneAnother) {
    const FrameSet on = solsys::frames_at(GetParam(), true, nullptr, nullptr);
    const FrameSet off = solsys::frames_at(GetParam(), false, nullptr, nullptr);
    EXPECT_EQ(distance(on.cur_from_j2000, on.tod_from_mod * on.mod_from_j2000), 0.0);
    EXPECT_EQ(distance(off.cur_from_j2000, off.mod_from_j2000), 0.0);
    EXPECT_EQ(distance(off.ecl_from_j2000, on.ecl_from_j2000), 0.0);
    for (const FrameSet* f : {&on, &off})
        EXPECT_LT(distance(f->gal_from_cur * f->cur_from_j2000, f->gal_from_j2000), 3e-15);
    EXPECT_LT(distance(on.gal_from_j2000 * transpose(on.gal_from_j2000), solsys::kIdentity),
              3e-15);
}

TEST_P(FramesAt, TheEclipticPoleIsTheTrueObliquityFromThePole) {
    const FrameSet f = solsys::frames_at(GetParam(), true, nullptr, nullptr);
    const Vec3 pole = transpose_times(f.ecl_from_tod, Vec3{0, 0, 1});
    EXPECT_NEAR(std::acos(pole.z), f.obliquity + f.d_epsilon, 1e-15);
    EXPECT_LT(pole.y, 0);  // at right ascension 18 h
    // 23.44 degrees in 2000, some 47 arcsec less a century later.
    const double centuries = centuries_since_j2000(GetParam());
    EXPECT_NEAR(f.obliquity, (84381.4 - 46.8 * centuries) * solsys::kArcsec,
                0.1 * solsys::kArcsec * (1 + centuries * centuries));
    EXPECT_LT(std::fabs(f.d_psi), 19 * solsys::kArcsec);
    EXPECT_LT(std::fabs(f.d_epsilon), 10.5 * solsys::kArcsec);
}
INSTANTIATE_TEST_SUITE_P(Instants, FramesAt,
                         testing::Values(solsys::Instant{2451545, 0.0},
                                         solsys::Instant{2459123, 0.777},
                                         solsys::Instant{2415020, 0.5},
                                         solsys::Instant{2305448, 0.25}));

TEST(HostModels, AreAskedFirstAndMayDecline) {
    const auto nutation = [](int, double, double* m, double* obliquity, double* d_epsilon,
                             double* d_psi) {
        store(solsys::rotate_x(0.25), m);
        *obliquity = 0.4, *d_epsilon = 0.01, *d_psi = 0.02;
        return true;
    };
    const auto declining = [](int, double, double*) { return false; };
    const FrameSet own = solsys::frames_at({2459123, 0.5}, true, nullptr, nullptr);
    const FrameSet f = solsys::frames_at({2459123, 0.5}, true, declining, nutation);
    EXPECT_EQ(distance(f.mod_from_j2000, own.mod_from_j2000), 0.0);
    EXPECT_EQ(distance(f.tod_from_mod, solsys::rotate_x(0.25)), 0.0);
    EXPECT_EQ(f.d_psi, 0.02);
    EXPECT_LT(distance(f.ecl_from_tod, solsys::rotate_x(0.41)), 1e-15);
}

}  // namespace
