// The process-wide warm start: it may change how long an answer takes, never the answer.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/kepler.h"

namespace solsys {
namespace {

tagAster_SPH_5 asteroid(double e, std::uint32_t number) {
    tagAster_SPH_5 record{};
    record.epoch = 2457000.5;
    record.P[0] = 1, record.Q[1] = 1;
    record.a = 2.5F, record.e = static_cast<float>(e), record.M = 1.0F, record.n = 0.00435F;
    record.number = number;
    return record;
}

tagComet_SPH_5 hyperbolic_comet(double e, std::int32_t number) {
    tagComet_SPH_5 record{};
    record.epoch = 2457000.5;
    record.P[0] = 1, record.Q[1] = 1;
    record.q = 0.9, record.e = e, record.number = number;
    const double a = record.q / (e - 1);
    record.n = std::sqrt(kGaussSquared / a) / a;
    record.M = -record.n * 40;
    return record;
}

// The position with nothing to start from: another number was solved last.
template <class Record>
Vec3 cold(Record record, int day, bool* converged) {
    double out[6];
    const auto other = asteroid(0.1, 4000000000U);
    KeplerPQ5(0, 2457100, 0, &other, out);
    *converged = KeplerPQ5(0, day, 0.3, &record, out);
    return load(out);
}

class WarmStart : public testing::TestWithParam<double> {};

TEST_P(WarmStart, NeverChangesTheAnswer) {
    const double e = GetParam();
    std::mt19937 random(3);
    std::uniform_int_distribution<int> day(2451000, 2463000);
    for (int k = 0; k < 3000; ++k) {
        // Small and large steps, across perihelion too, and a comet with the same number whose
        // hyperbolic anomaly is no eccentric one.
        const int first = day(random);
        const int second = k % 2 == 0 ? first + 1 : day(random);
        const auto record = asteroid(e, 12);
        const auto comet = hyperbolic_comet(1 + e, 12);
        bool expected_converged = false;
        const Vec3 expected = cold(record, second, &expected_converged);
        double out[6];
        KeplerPQ5(0, first, 0.3, &record, out);
        if (k % 3 == 0) KeplerPQ5(0, second, 0.3, &comet, out);
        EXPECT_EQ(KeplerPQ5(0, second, 0.3, &record, out), expected_converged);
        // Two anomalies within 1e-10 rad of a root that the sine's error makes a short
        // staircase: 1.5e-8 e / (1 - e cos E) at worst, on 2.5 au.
        const double slope = norm(expected) / 2.5;
        EXPECT_NEAR(norm(load(out) - expected), 0, 2.5 * (4e-10 + 1.5e-8 * e) / slope)
            << first << " " << second;

        const Vec3 comet_expected = cold(comet, second, &expected_converged);
        KeplerPQ5(0, first, 0.3, &comet, out);
        EXPECT_TRUE(KeplerPQ5(0, second, 0.3, &comet, out));
        EXPECT_NEAR(norm(load(out) - comet_expected), 0, 1e-9 * norm(comet_expected));
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, WarmStart, testing::Values(0.05, 0.4, 0.79, 0.85, 0.95, 0.99));

}  // namespace
}  // namespace solsys
