#include "frames/frame_set.h"

#include <gtest/gtest.h>

#include "tests/support/geometry.h"

namespace {

using solsys::FrameSet;
using solsys::test::distance;

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
