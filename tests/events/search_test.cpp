// The room of searches: walks, refinements and zeros that are not missed.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include "events/search/crossings.h"
#include "events/search/keep_model.h"
#include "events/search/results.h"
#include "events/search/sky_at.h"
#include "tests/events/sites.h"

namespace {

using namespace solsys::search;
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kDay0 = 2453371.5;

// A function with a bound on its second derivative.
struct Nasty {
    const char* name;
    std::function<double(double)> f;
    double bound;
};
double x_of(double t) { return t - kDay0; }

const Nasty kNasty[] = {
    {"waves of three lengths",
     [](double t) {
         const double x = x_of(t);
         return std::sin(6.3 * x) + 0.3 * std::sin(37 * x) + 0.02 * std::sin(400 * x) + 0.4;
     },
     39.7 + 410.7 + 3200},
    // Two zeros 12 s apart, 7 from a multiple of every step tried.
    {"two close zeros",
     [](double t) {
         const double a = x_of(t) - 7.123456, w = 6.9e-5;
         return a * a - w * w;
     },
     2},
    {"no zero, nearly", [](double t) { return std::pow(x_of(t) - 3.3, 2) + 1e-9; }, 2},
    {"three at once", [](double t) { return std::pow(x_of(t) - 5.55, 3) / 100; }, 1.2},
    {"undefined in the middle",
     [](double t) {
         const double x = x_of(t);
         return x > 3.21 && x < 4.56 ? kNan : std::sin(20 * x);
     },
     400},
    {"undefined before and after",
     [](double t) { return x_of(t) < 2.2 || x_of(t) > 8.8 ? kNan : std::cos(9 * x_of(t)); },
     81},
    {"nowhere defined", [](double) { return kNan; }, 1},
};

class Crossings : public testing::TestWithParam<std::tuple<Nasty, double>> {};

// Every change of sign that samples 3 s apart show is found, in order, and nothing else, in a
// bracket that holds it.
TEST_P(Crossings, AreThoseOfDenseSampling) {
    const auto& [nasty, step] = GetParam();
    const auto& f = nasty.f;
    std::vector<double> expected;
    constexpr double dense = 3 * kSecond;
    double before = f(kDay0);
    for (double t = kDay0 + dense; t <= kDay0 + 10; t += dense) {
        const double now = f(t);
        if (before * now < 0) expected.push_back(t - dense / 2);
        before = now;
    }

    Span span{kDay0, kDay0 + 10, kDay0};
    Control control;
    std::vector<double> found;
    EXPECT_TRUE(crossings(span, control, f, nasty.bound, step, [&](const Bracket& x) {
        found.push_back(root(f, x, 1e-9).t);
        return true;
    }));
    ASSERT_EQ(found.size(), expected.size()) << nasty.name;
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_NEAR(found[i], expected[i], dense) << nasty.name;
}

INSTANTIATE_TEST_SUITE_P(OfNastyFunctions, Crossings,
                         testing::Combine(testing::ValuesIn(kNasty),
                                          testing::Values(0.25, 1.0, 3.7)));

TEST(PlainCrossings, CostFewSamplesWhereTheFunctionIsPlain) {
    int samples = 0;
    const auto f = [&](double t) { return ++samples, std::sin(6.3 * x_of(t)) - 0.2; };
    Span span{kDay0, kDay0 + 100, kDay0};
    int found = 0;
    crossings(span, Control{}, f, 39.7, 0.25, [&](const Bracket&) { return ++found > 0; });
    EXPECT_EQ(found, 200 + 1);  // 100.27 waves
    EXPECT_LT(samples, 1000);
}

TEST(Scan, HandsOverChangesOfSignAndStopsWhenTold) {
    const auto f = [](double t) { return std::sin(x_of(t)); };
    const auto step = [](const Sample&) { return 0.5; };
    Span span{kDay0 + 1, kDay0 + 30, kDay0 + 1};
    Control control;
    std::vector<double> roots;
    EXPECT_TRUE(scan(span, control, f, step, [&](const Bracket& x) {
        roots.push_back(root(f, x, 1e-9).t - kDay0);
        return true;
    }));
    ASSERT_EQ(roots.size(), 9u);
    for (std::size_t i = 0; i < 9; ++i)
        EXPECT_NEAR(roots[i], static_cast<double>(i + 1) * solsys::kPi, 1e-8);
    EXPECT_TRUE(span.over());

    // The second peak of the sine, from which the walk goes on, and no further.
    span.cursor = span.start;
    double peak = 0;
    int seen = 0;
    EXPECT_FALSE(scan_maxima(span, control, f, step, [&](const Bracket& x) {
        peak = maximum(f, x.a.t, x.b.t, 1e-5).t - kDay0;
        return ++seen < 2;
    }));
    EXPECT_NEAR(peak, 2.5 * solsys::kPi, 1e-5);
    EXPECT_LT(span.cursor - kDay0, 9);

    // Stopped by the host from its progress handler: fractions rise from 0.
    struct Watch {
        Control& control;
        std::vector<double> fractions;
    } watch{control, {}};
    control.on_progress(
        [](double fraction, void* context) {
            auto& w = *static_cast<Watch*>(context);
            w.fractions.push_back(fraction);
            if (fraction > 0.5) w.control.stop();
        },
        &watch);
    span.cursor = span.start;
    EXPECT_FALSE(scan(span, control, f, step, [](const Bracket&) { return true; }));
    EXPECT_EQ(watch.fractions.front(), 0);
    EXPECT_TRUE(std::is_sorted(watch.fractions.begin(), watch.fractions.end()));
    EXPECT_NEAR(span.done(), 0.53, 0.03);
}

TEST(Scan, EndsOnWhatIsNotComputable) {
    Span span{kDay0, kDay0 + 10, kDay0};
    const auto none = [](double) { return kNan; };
    const auto odd_step = [](const Sample&) { return kNan; };
    int found = 0;
    Span short_span{kDay0, kDay0 + 0.01, kDay0};
    EXPECT_TRUE(scan(short_span, Control{}, none, odd_step,
                     [&](const Bracket&) { return ++found > 0; }));
    EXPECT_TRUE(scan_maxima(
        span, Control{}, none, [](const Sample&) { return 1.0; },
        [&](const Bracket&) { return ++found > 0; }));
    EXPECT_EQ(found, 0);
    EXPECT_TRUE(span_of_ut(kNan, kDay0).over());
    EXPECT_TRUE(span_of_ut(kDay0, 1e300).over());
}

TEST(FalsePosition, StopsAtEitherToleranceAndRefusesEqualSigns) {
    const auto f = [](double t) { return std::pow(x_of(t), 3) - 2; };
    const auto between = [&](double a, double b) {
        return Bracket{{kDay0 + a, f(kDay0 + a)}, {kDay0 + b, f(kDay0 + b)}};
    };
    const Sample found = false_position(f, between(0, 2), 1e-6, 0);
    EXPECT_LT(std::fabs(found.f), 1e-6);
    EXPECT_NEAR(x_of(found.t), std::cbrt(2.0), 1e-6);
    EXPECT_GT(std::fabs(false_position(f, between(0, 2), 0, 2).f), 0.1);
    EXPECT_EQ(false_position(f, between(2, 3), 1e-6, 0).t, -1);
    int calls = 0;
    const auto nowhere = [&](double) { return ++calls, kNan; };
    EXPECT_TRUE(std::isnan(false_position(nowhere, between(0, 2), 1e-6, 0).f) && calls == 1);
}

TEST(Settle, ComesToRestOrSaysNo) {
    const Rest rest{1e-4, 1e-6, 0.1, 40};
    double t = 3;
    EXPECT_TRUE(settle([](double x) { return 0.8 * (5 - x); }, t, rest));
    EXPECT_NEAR(t, 5, 1e-6);
    EXPECT_FALSE(settle([](double) { return 1e-3; }, t, rest));
    EXPECT_FALSE(settle([](double) { return kNan; }, t, rest));
}

struct Host {
    int most = 0;
    std::vector<std::unique_ptr<int>> taken;
    virtual ~Host() = default;
    virtual bool on_record(int* record) {
        taken.emplace_back(record);
        return static_cast<int>(taken.size()) < most;
    }
};

TEST(Results, KeepEveryRecordAndStopWhenTheCallbackSaysNo) {
    Host host;
    host.most = 2;
    Results<int, Host, &Host::on_record> results;
    Control control;
    EXPECT_TRUE(results.add(7, control));
    results.set_callback(&host);
    EXPECT_TRUE(results.add(8, control));
    EXPECT_FALSE(results.add(9, control));
    EXPECT_TRUE(control.stopped());
    EXPECT_EQ(results.list(), (std::vector<int>{7, 8, 9}));
    ASSERT_EQ(host.taken.size(), 2u);
    EXPECT_EQ(*host.taken[1], 9);
}

// The same place whatever was asked before it, and the model left as it was.
TEST(SkyAt, AnswersForItsInstantAloneAndLeavesNoTrace) {
    const auto model = support::de405_model();
    support::add_objects(*model);
    OBSERVER site = support::for_model(support::site(51.5, -0.1));
    model->SetObserver(&site);
    model->UpdateSys(2455197, 0.25);
    double before[3];
    ASSERT_TRUE(model->GetRADecVis(SSO_ID(SSO_PLNT, 4), before, 0));
    const SSO_ID ids[] = {{SSO_PLNT, 5},
                          {SSO_MOON, 301},
                          {SSO_ASTR, support::kCeres},
                          {SSO_STAR, support::kVega}};
    {
        KeepModel keep(*model);
        OBSERVER centre;
        centre.body_type = SSO_PLNT, centre.body_number = 3;
        model->SetObserver(&centre);
        model->SetObserver(&site);
        SkyAt walking(*model);
        for (double t = kDay0; t < kDay0 + 2; t += 0.3) {
            for (const SSO_ID& id : ids) {
                ASSERT_TRUE(walking.at(t));
                const auto a = walking.apparent(id);
                SkyAt fresh(*model);
                ASSERT_TRUE(fresh.at(t));
                const auto b = fresh.horizontal(id);
                ASSERT_TRUE(a && b);
                // Light time is taken to 2e-6 day: 3e-8 of a day's motion of the Moon.
                EXPECT_NEAR(walking.horizontal(*a).altitude, b->altitude, 5e-7);
                EXPECT_NEAR(std::asin(fresh.sine_of_altitude(id)), b->altitude, 5e-7);
            }
        }
        EXPECT_FALSE(walking.at(kNan));
        EXPECT_FALSE(walking.apparent(SSO_ID(SSO_PLNT, 99)));
        EXPECT_TRUE(std::isnan(walking.sine_of_altitude(SSO_ID(SSO_STAR, 1))));
    }
    double after[3];
    ASSERT_TRUE(model->GetRADecVis(SSO_ID(SSO_PLNT, 4), after, 0));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(before[i], after[i]);
}

}  // namespace
