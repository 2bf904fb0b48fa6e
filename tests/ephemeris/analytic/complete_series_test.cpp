// The tables of data/planets against states that others computed from the publications. What
// the library leaves out of the tables, or makes of them, is tested in analytic_theory_test.cpp
// against the same evaluation.
#include "complete_series.h"

#include <gtest/gtest.h>

namespace {

using namespace complete_series;

State evaluate(const std::string& body, double jd) {
    static const std::vector<Term> sun = read_rectangular("planets/sun_barycentric_series.csv");
    if (body == "sun_barycentric") return rectangular(sun, jd);
    if (body == "uranus" || body == "neptune" || body == "pluto")
        return chebyshev(body, jd) - rectangular(sun, jd);
    if (body == "moon") {
        static const std::vector<Term> terms = read_moon();
        return moon(terms, jd);
    }
    return rectangular(read_rectangular("planets/vsop87a_" + body + ".csv"), jd);
}

class CompleteSeries : public testing::TestWithParam<const char*> {};

TEST_P(CompleteSeries, ReproducesTheCheckValues) {
    int states = 0;
    for (const CheckValue& check : read_check_values()) {
        if (check.body != GetParam()) continue;
        ++states;
        const State s = evaluate(check.body, check.jd);
        // One unit of the last printed digit; two printed numbers meet in some rows.
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(static_cast<double>(s.r[i] - check.state.r[i]), 0, 1e-14) << check.jd;
            EXPECT_NEAR(static_cast<double>(s.v[i] - check.state.v[i]), 0, 1e-16) << check.jd;
        }
    }
    EXPECT_EQ(states, 10);
}

INSTANTIATE_TEST_SUITE_P(Bodies, CompleteSeries,
                         testing::Values("mercury", "venus", "earth", "mars", "jupiter",
                                         "saturn", "uranus", "neptune", "pluto", "moon",
                                         "sun_barycentric"),
                         [](const auto& param) { return std::string(param.param); });

}  // namespace
