// Values: series against their trigonometric form, DE405 against an evaluation in extended
// precision by other hands, and what the caches may and may not remember.
#include "ephemeris/de/state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <initializer_list>
#include <limits>
#include <numbers>
#include <string>
#include <tuple>
#include <vector>

#include "tests/support/csv.h"
#include "tests/support/de_file_writer.h"
#include "tests/support/geometry.h"
#include "tests/support/shared_de_file.h"

namespace {

using de_file::Layout;
using Values = std::array<double, 6>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kEps = std::numeric_limits<double>::epsilon();
constexpr short kMars = 4, kMoon = 10, kSun = 11, kBodies[] = {1, 3, kMars, kMoon, kSun};

// Coefficients without pattern, in km.
double coefficient(int body, int record, int sub, int axis, int degree) {
    const double seed =
        body * 7919 + record * 104729 + sub * 1299709 + axis * 15485863 + degree;
    return 1e8 * std::sin(seed) / (1 + degree * degree);
}

// Position [km] and velocity [km/day] of a row of the file, `since` days from its start, by
// T_j = cos(j theta), T_j' = j sin(j theta)/sin(theta).
std::array<long double, 6> by_cosines(const Layout& layout, int body, long double since) {
    const auto [terms, subs] = layout.series[body - 1];
    const long double records = since / layout.span;
    const int record = std::min(static_cast<int>(records), layout.records() - 1);
    const long double scaled = (records - record) * subs;
    const int sub = std::min(static_cast<int>(scaled), subs - 1);
    const long double tau = 2 * (scaled - sub) - 1, theta = std::acos(tau);
    std::array<long double, 6> out{};
    for (int axis = 0; axis < 3; ++axis) {
        for (int j = 0; j < terms; ++j) {
            const long double c = layout.coefficient(body, record, sub, axis, j);
            const long double slope = std::fabs(tau) < 1
                                          ? j * std::sin(j * theta) / std::sin(theta)
                                          : j * j * (tau > 0 || j % 2 == 1 ? 1 : -1);
            out[axis] += c * std::cos(j * theta);
            out[axis + 3] += c * slope * 2 * subs / layout.span;
        }
    }
    return out;
}

// What getState answers [au, au/day], from the rows.
Values expected_state(const Layout& layout, int body, long double since) {
    auto sum = by_cosines(layout, body, since);
    if (body < kMoon) {
        const auto sun = by_cosines(layout, kSun, since);
        for (int i = 0; i < 6; ++i) sum[i] -= sun[i];
    }
    if (body == 3) {
        const auto moon = by_cosines(layout, kMoon, since);
        for (int i = 0; i < 6; ++i) sum[i] -= moon[i] / (1 + layout.emrat);
    }
    Values out{};
    for (int i = 0; i < 6; ++i) out[i] = static_cast<double>(sum[i] / layout.au_km);
    return out;
}

class DeState : public SharedDeFile {
  protected:
    void open(const Layout& layout) {
        DE_Ephemeris::clear();
        ASSERT_TRUE(DE_Ephemeris::open(folder_.write("file", de_file::bytes(layout)).c_str()));
    }
};

TEST_F(DeState, SeriesFollowTheirTrigonometricForm) {
    for (const int terms : {2, 3, 11, 14, 20}) {
        for (const int subs : {1, 2, 3, 4, 8}) {
            SCOPED_TRACE(std::to_string(terms) + " x " + std::to_string(subs));
            Layout layout;
            layout.coefficient = coefficient;
            layout.series.fill({terms, subs});
            // The others keep other numbers of terms and sub-intervals, so that no polynomial
            // of one body can pass for another's.
            layout.series[kSun - 1] = {9, 2};
            layout.series[kMoon - 1] = {13, 8};
            layout.series[11] = {0, 0};
            open(layout);
            DE_EvalState state;
            for (const double since :
                 {0.0, 1e-6, 4.0, 31.999999, 32.0, 8.5, 64.25, 96 - 1e-6, 96.0}) {
                const double t = layout.start + since;
                for (const short body : kBodies) {
                    const Values expected = expected_state(layout, body, t - layout.start);
                    Values out{};
                    const int day = static_cast<int>(t);
                    ASSERT_EQ(DE_Ephemeris::getState(state, day, t - day, body, 1, out.data()),
                              0);
                    // Coefficients of degree j are 0.7 au/(1 + j^2), so that values and, per
                    // unit of normalised time, derivatives are of the order of 1 au: a few
                    // roundings of that. Measured: 2.3e-16, and 8.1e-16 times the rate.
                    const double rate = 2.0 * std::max(subs, 8) / layout.span;
                    for (int i = 0; i < 6; ++i)
                        EXPECT_NEAR(out[i], expected[i], i < 3 ? 1e-15 : 3e-15 * rate)
                            << "body " << body << " value " << i << " after " << since;
                    if (since == 96.0) continue;

                    // 26 microseconds on, which the sum of day and fraction does not resolve.
                    // The place in the record rounds to 3.5e-15 day besides.
                    const solsys::Instant split{day, t - day + 3e-10};
                    const Values later = expected_state(
                        layout, body,
                        (day - layout.start) + static_cast<long double>(split.fraction));
                    ASSERT_EQ(solsys::de_state(state, split, body, true, out.data()), 0);
                    for (int i = 0; i < 3; ++i)
                        EXPECT_NEAR(out[i], later[i], 2e-15)
                            << "body " << body << " value " << i << " after " << since;
                }
            }
        }
    }
}

TEST_F(DeState, RangeIsClosedAndForeignInputRefused) {
    Layout layout;
    layout.coefficient = coefficient;
    open(layout);
    const Values untouched{1, 2, 3, 4, 5, 6};
    DE_EvalState state, control;
    Values out{}, control_out{};
    ASSERT_EQ(DE_Ephemeris::getState(state, 2451545, 0.25, 3, 1, out.data()), 0);
    const auto refused = [&](int day, double fraction, short body) {
        Values target = untouched;
        return DE_Ephemeris::getState(state, day, fraction, body, 1, target.data()) == -1 &&
               target == untouched;
    };
    EXPECT_TRUE(refused(2451536, 0.499999, 1));
    EXPECT_TRUE(refused(2451632, 0.500001, 1));
    EXPECT_TRUE(refused(2451545, kNan, 1));
    EXPECT_TRUE(refused(2451545, kInf, 1));
    EXPECT_TRUE(refused(2451545, -kInf, 1));
    EXPECT_TRUE(refused(std::numeric_limits<int>::max(), 1e300, 1));
    EXPECT_TRUE(refused(std::numeric_limits<int>::min(), 0, 1));
    for (const short body : std::initializer_list<short>{0, -1, 12, 13, 301, 32767})
        EXPECT_TRUE(refused(2451545, 0.0, body));
    // Nothing of that stays in the caches.
    for (const short body : kBodies) {
        EXPECT_EQ(DE_Ephemeris::getState(state, 2451545, 0.25, body, 1, out.data()), 0);
        EXPECT_EQ(DE_Ephemeris::getState(control, 2451545, 0.25, body, 1, control_out.data()),
                  0);
        EXPECT_EQ(out, control_out);
    }
}

// Dates that go a part of a record beyond the last one: the records that are there serve.
TEST_F(DeState, RangeMayEndWithinARecord) {
    Layout layout;
    layout.coefficient = coefficient;
    const double last = layout.end;
    layout.end += 5;
    open(layout);
    EXPECT_EQ(DE_Ephemeris::getTimeRange()[1], last + 5);
    DE_EvalState state;
    Values out{};
    ASSERT_EQ(DE_Ephemeris::getState(state, static_cast<int>(last), 0.5, kMars, 1, out.data()),
              0);
    const Values expected = expected_state(layout, kMars, last - layout.start);
    for (int i = 0; i < 6; ++i)
        EXPECT_NEAR(out[i], expected[i], 1e-12 * std::fabs(expected[i]));
    const Values before = out;
    EXPECT_EQ(DE_Ephemeris::getState(state, static_cast<int>(last), 0.6, kMars, 1, out.data()),
              -1);
    EXPECT_EQ(out, before);
}

// Whatever was asked before, an answer is that of a fresh state, bit for bit.
TEST_F(DeState, HistoryDoesNotShow) {
    Layout layout;
    layout.coefficient = coefficient;
    open(layout);
    DE_EvalState state;
    unsigned random = 1;
    const auto next = [&random](unsigned n) {
        random = random * 1664525u + 1013904223u;
        return (random >> 16) % n;
    };
    for (int round = 0; round < 20000; ++round) {
        const auto body = static_cast<short>(1 + next(11));
        const auto velocity = static_cast<short>(next(2));
        // Few instants, so that caches hit: among them sub-interval middles and borders.
        const double t = layout.start + 4.0 * next(25) + (next(2) ? 0.0 : 0.3);
        const int day = static_cast<int>(t);
        Values out{}, fresh_out{};
        DE_EvalState fresh;
        const int result =
            DE_Ephemeris::getState(state, day, t - day, body, velocity, out.data());
        ASSERT_EQ(DE_Ephemeris::getState(fresh, day, t - day, body, velocity, fresh_out.data()),
                  result);
        ASSERT_EQ(out, fresh_out) << "body " << body << " at " << t - layout.start;
    }
}

// Misuse of the bare series writes nothing.
TEST_F(DeState, InterpolationRefusesShapesWithoutRoom) {
    open(Layout{});
    const std::vector<double> block(20, 1.0);
    for (const auto& [terms, subs, record_time] : {std::tuple{1, 1, 0.5},
                                                   {21, 1, 0.5},
                                                   {5, 0, 0.5},
                                                   {5, 1, -0.5},
                                                   {5, 1, 3.5},
                                                   {5, 1, kNan}}) {
        DE_EvalState state;
        state.record_time = record_time;
        Values out{7, 7, 7, 7, 7, 7};
        DE_Ephemeris::interpolate(state, block.data(), terms, subs, 1, out.data());
        EXPECT_EQ(out, (Values{7, 7, 7, 7, 7, 7}));
    }
}

// DE405 itself. The file and the states beside it come from tools/make_de405.py.
TEST_F(DeState, De405AgreesWithExtendedPrecision) {
    ASSERT_TRUE(DE_Ephemeris::open(SOLSYS_DE405)) << "run tools/make_de405.py first";
    std::string name = SOLSYS_DE405;
    name.replace(name.rfind('.'), std::string::npos, "_check.csv");
    DE_EvalState state;
    const auto rows = solsys::test::read_csv(name);
    double worst_position = 0, worst_velocity = 0;
    for (const auto& row : rows) {
        double out[6];
        const auto body = static_cast<short>(std::stoi(row[0]));
        ASSERT_EQ(
            DE_Ephemeris::getState(state, std::stoi(row[1]), std::stod(row[2]), body, 1, out),
            0);
        const solsys::State s = solsys::load_state(out),
                            expected = solsys::test::state_of(row, 3);
        worst_position = std::max(worst_position, norm(s.r - expected.r) / norm(expected.r));
        worst_velocity = std::max(worst_velocity, norm(s.v - expected.v) / norm(expected.v));
    }
    // Measured: 1.2 and 1.3 eps of the vector's length.
    EXPECT_GT(rows.size(), 1000u);
    EXPECT_LE(worst_position, 4.5 * kEps);
    EXPECT_LE(worst_velocity, 4.5 * kEps);
}

}  // namespace
