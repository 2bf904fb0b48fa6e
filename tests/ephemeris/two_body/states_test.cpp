// The element-to-vector routines, all of them, against orbits solved in extended precision.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "core/constants.h"
#include "core/linalg.h"
#include "solsys/kepler.h"
#include "tests/ephemeris/two_body/exact_kepler.h"

namespace solsys {
namespace {

constexpr int kEpochDay = 2457000;
constexpr double kInclination = 0.4, kNode = 2.1, kPerihelion = 5.3;

struct Orbit {
    double q, e, n, M0;  // as in Elements
};

// The orbit of perihelion distance `q` that passed it `days_ago`.
Orbit orbit_of(double q, double e, double days_ago) {
    if (std::fabs(e - 1) < 1.00000001e-6) {
        const double n = std::sqrt(kGaussSquared / (2 * q * q * q));
        return {q, e, n, n * days_ago};
    }
    const double a = q / std::fabs(1 - e);
    const double n = std::sqrt(kGaussSquared / a) / a;
    return {e < 1 ? a : q, e, n, n * days_ago};
}

Vec3 direction_P() {
    return (rotate_z(kPerihelion) * rotate_x(kInclination) * rotate_z(kNode)).r0;
}
Vec3 direction_Q() {
    return (rotate_z(kPerihelion) * rotate_x(kInclination) * rotate_z(kNode)).r1;
}

// One of the routines under test: moves an orbit whose epoch is kEpochDay + 0.5.
struct Routine {
    std::string name;
    bool single;        // its record holds single-precision numbers
    double sine_error;  // of the sine that its iteration uses [rad]
    std::function<bool(const Orbit&, short, int, double, double*)> state;
};

using AngleRoutine = bool (*)(short, double, int, double, Elements, double*, double*);

Routine angle_routine(const char* name, AngleRoutine routine) {
    return {name, false, 0,
            [=](const Orbit& o, short velocity, int day, double fraction, double* out) {
                const Elements el{o.q, o.e,  kInclination, kNode,    kPerihelion,
                                  o.n, o.M0, 0.5,          kEpochDay};
                return routine(velocity, kGaussSquared, day, fraction, el, out, out + 3);
            }};
}

// The orbit in a record, in the numbers that the record holds.
template <class Record>
Record record_of(const Orbit& o) {
    Record r{};
    using Real = decltype(r.n);
    const Vec3 P = direction_P(), Q = direction_Q();
    r.P[0] = static_cast<Real>(P.x), r.Q[0] = static_cast<Real>(Q.x);
    r.P[1] = static_cast<Real>(P.y), r.Q[1] = static_cast<Real>(Q.y);
    r.P[2] = static_cast<Real>(P.z), r.Q[2] = static_cast<Real>(Q.z);
    r.e = static_cast<Real>(o.e), r.n = static_cast<Real>(o.n), r.M = static_cast<Real>(o.M0);
    if constexpr (requires { r.q; }) {
        r.q = o.q;
    } else {
        r.a = static_cast<Real>(o.q);
    }
    if constexpr (requires { r.epoch; }) {
        r.epoch = kEpochDay + 0.5, r.number = 7;
    } else {
        r.epochDay = kEpochDay;
    }
    if constexpr (requires { r.epochFraction; }) r.epochFraction = 0.5;
    return r;
}

template <class Record>
Routine record_routine(const char* name, double sine_error,
                       bool (*routine)(short, int, double, const Record*, double*)) {
    return {name, std::is_same_v<decltype(Record::n), float>, sine_error,
            [=](const Orbit& o, short velocity, int day, double fraction, double* out) {
                const auto record = record_of<Record>(o);
                return routine(velocity, day, fraction, &record, out);
            }};
}

const std::vector<Routine>& routines() {
    static const std::vector<Routine> all = {
        angle_routine("Kepler", Kepler),
        angle_routine("KeplerForIntegr", KeplerForIntegr),
        record_routine<tagAster_SPH>("KeplerPQ", 0, KeplerPQ),
        record_routine<tagComet_SPH>("KeplerPQComets", 0, KeplerPQComets),
        record_routine<tagAster_SPH_5>("KeplerPQ5Asteroid", 1.5e-8, KeplerPQ5),
        record_routine<tagComet_SPH_5>("KeplerPQ5Comet", 0, KeplerPQ5)};
    return all;
}

// What the record of a routine makes of the orbit, its mean motion fitting what became of a.
Orbit as_stored(const Routine& routine, Orbit o) {
    if (!routine.single) return o;
    o = {static_cast<float>(o.q), static_cast<float>(o.e), o.n, static_cast<float>(o.M0)};
    if (o.e > 1 + 1.1e-6) o.n = orbit_of(o.q, o.e, 0).n;
    o.n = static_cast<float>(o.n);
    return o;
}

class States : public testing::TestWithParam<std::tuple<std::size_t, double>> {};

TEST_P(States, FollowTheExactOrbit) {
    const Routine& routine = routines()[std::get<0>(GetParam())];
    const double e_wanted = std::get<1>(GetParam());
    Vec3 P = direction_P(), Q = direction_Q();
    if (routine.single) {
        const auto rounded = [](Vec3 v) {
            return Vec3{static_cast<float>(v.x), static_cast<float>(v.y),
                        static_cast<float>(v.z)};
        };
        P = rounded(P), Q = rounded(Q);
    }
    std::mt19937_64 random(17);
    std::uniform_real_distribution<double> days(-3000, 3000), distance(0.6, 3);
    for (int k = 0; k < 60; ++k) {
        const Orbit orbit =
            as_stored(routine, orbit_of(distance(random), e_wanted, 0.02 * days(random)));
        const double since = std::round(days(random)) + 0.25;
        const double e = orbit.e;
        ExactOrbit exact{orbit.q, orbit.e, orbit.n, orbit.M0};
        // Hyperbolas take the mean motion from the size, not from the record.
        if (e > 1 && !exact.parabola()) {
            const long double a = exact.q / (exact.e - 1);
            exact.n = std::sqrt(static_cast<long double>(kGaussSquared) / a) / a;
        }
        double out[6];
        ASSERT_TRUE(
            routine.state(orbit, 1, kEpochDay + static_cast<int>(since - 0.25), 0.75, out));

        const ExactPlane position = exact.position(since);
        const ExactPlane rate = exact.velocity(since);
        const auto in_space = [&](const ExactPlane& at) {
            return static_cast<double>(at.X) * P + static_cast<double>(at.Y) * Q;
        };
        // Anomalies of ellipses are good to the step rule's 1e-10, plus what the sine's error
        // is worth on a scale of r / a = 1 - e cos E.
        const double r =
            std::hypot(static_cast<double>(position.X), static_cast<double>(position.Y));
        const double speed =
            std::hypot(static_cast<double>(rate.X), static_cast<double>(rate.Y));
        double size = r;
        // Differences of numbers of the size of a, relative to q.
        const double cancelled = exact.parabola() ? 0 : 6e-15 / std::fabs(1 - e);
        double error = 1e-13 + cancelled;
        if (e < 1 && !exact.parabola()) {
            const double slope = r / orbit.q;
            size = orbit.q;
            error += 1.1e-10 + 1e-14 / slope + routine.sine_error * 4 * e / slope;
        }
        const double tolerance = size * error;
        // Moving along the orbit by that error changes the velocity by mu / r^2 per unit time.
        const double speed_tolerance =
            (1e-12 + cancelled) * speed + kGaussSquared / (r * r) * tolerance / speed * 3;
        EXPECT_NEAR(norm(load(out) - in_space(position)), 0, tolerance);
        // Hyperbolas take their position from the size and their velocity from the record's
        // n, which single precision sets apart.
        EXPECT_NEAR(norm(load(out + 3) - in_space(rate)), 0,
                    speed_tolerance + (routine.single && e > 1 ? 2e-7 * speed : 0));
    }
}

INSTANTIATE_TEST_SUITE_P(AllRoutines, States,
                         testing::Combine(testing::Range<std::size_t>(0, 6),
                                          testing::Values(0.0, 0.05, 0.3, 0.7, 0.9, 0.97,
                                                          1 - 5e-7, 1.0, 1 + 1e-6, 1 + 1.2e-6,
                                                          1.0005, 1.2, 3.36)),
                         [](const auto& test) {
                             std::string name = routines()[std::get<0>(test.param)].name + "_e";
                             for (const char c : std::to_string(1e7 * std::get<1>(test.param)))
                                 if (c != '.') name += c;
                             return name;
                         });

// Near perihelion of a near-parabolic ellipse, whatever its period.
TEST(NearParabolicStates, FollowTheExactOrbit) {
    for (const Routine& routine : routines()) {
        if (routine.name == "KeplerPQ5Asteroid") continue;  // has no such branch
        const Orbit orbit = as_stored(routine, orbit_of(0.8, 0.99996, 30));
        // KeplerPQ reckons this perihelion from the bare day of its epoch.
        const double earlier = routine.name == "KeplerPQ" ? 0.5 : 0.0;
        // The branch goes by the time since perihelion and mu, not by n.
        const long double a = orbit.q;
        const long double n = std::sqrt(static_cast<long double>(kGaussSquared) / a) / a;
        const ExactOrbit exact{orbit.q, orbit.e, n, n * (orbit.M0 / orbit.n)};
        for (const int day : {-200, -25, 0, 300, 4000}) {
            double out[6];
            ASSERT_TRUE(routine.state(orbit, 0, kEpochDay + day, 0.5, out));
            const ExactPlane at = exact.position(day + earlier);
            const double r = std::hypot(static_cast<double>(at.X), static_cast<double>(at.Y));
            // 6e-10 of the anomaly (see the equation's test), at most as much of r; P and Q in
            // single precision are unit vectors to 6e-8, and their lengths enter.
            EXPECT_NEAR(norm(load(out)), r, r * (routine.single ? 2e-7 : 2e-9))
                << routine.name << day;
        }
    }
}

TEST(NearParabolicStates, OnlyTheIntegratorsRoutineCountsPeriods) {
    // A period of 4 years in spite of the eccentricity.
    const Orbit orbit = orbit_of(1e-4, 0.99996, 0);
    const double period = kTwoPi / orbit.n;
    const Routine& reduced = routines()[0];
    const Routine& unreduced = routines()[1];
    double first[6], later[6], counted[6];
    const double since = 0.2 * period;
    const int whole = static_cast<int>(since);
    ASSERT_TRUE(reduced.state(orbit, 0, kEpochDay + whole, 0.5, first));
    const double after = whole + 3 * period;
    const int day = static_cast<int>(after);
    reduced.state(orbit, 0, kEpochDay + day, 0.5 + after - day, later);
    unreduced.state(orbit, 0, kEpochDay + day, 0.5 + after - day, counted);
    // The date is one double: 5e-10 day of it at a speed of 0.01 au/day.
    EXPECT_NEAR(norm(load(later) - load(first)), 0, 1e-9);
    EXPECT_GT(norm(load(counted) - load(first)), 1e-3);
}

TEST(Apsides, AreExactAndSucceed) {
    for (const Routine& routine : routines()) {
        double out[6];
        const double a = 2.5, e = 0.25;
        for (const double M0 : {0.0, kTwoPi, kPi}) {
            ASSERT_TRUE(routine.state({a, e, 0.004, M0}, 0, kEpochDay, 0.5, out));
            const double r = M0 == kPi ? a * (1 + e) : a * (1 - e);
            const Vec3 expected = (M0 == kPi ? -r : r) * direction_P();
            // Single precision of P and of 2 pi, 2e-7 from the apsis: solved, not taken as 0.
            EXPECT_NEAR(norm(load(out) - expected), 0, routine.single ? 2e-6 : 1e-15 * a)
                << routine.name;
        }
    }
}

TEST(VelocitySwitch, ZeroLeavesTheVelocityAlone) {
    for (const Routine& routine : routines()) {
        for (const double e : {0.3, 0.99996, 1.0, 1.3}) {
            double with[6], without[6] = {0, 0, 0, 8, 9, 10};
            routine.state(orbit_of(1.1, e, 5), -1, kEpochDay + 3, 0.1, with);
            routine.state(orbit_of(1.1, e, 5), 0, kEpochDay + 3, 0.1, without);
            // The second call may start warm, which costs digits by the
            // short-cut sine at e = 0.99996.
            for (int k = 0; k < 3; ++k) EXPECT_NEAR(with[k], without[k], 1e-6) << routine.name;
            EXPECT_EQ(norm(load(without + 3) - Vec3{8, 9, 10}), 0) << routine.name;
            EXPECT_NE(norm(load(with + 3)), 0);
        }
    }
}

TEST(NonFiniteInput, IsReportedInBoundedTime) {
    const double bad[] = {std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity(), -1e308};
    for (const Routine& routine : routines()) {
        for (const double x : bad) {
            for (const double e : {0.3, 0.99996, 1.0, 1.3}) {
                const Orbit good = orbit_of(1.1, e, 5);
                double out[6];
                Orbit orbit = good;
                orbit.M0 = x;
                EXPECT_FALSE(routine.state(orbit, 1, kEpochDay, 0, out) && !std::isfinite(x))
                    << routine.name << e << x;
                orbit = good, orbit.e = x;
                routine.state(orbit, 1, kEpochDay, 0, out);
                EXPECT_FALSE(std::isnan(x) && std::isfinite(out[0])) << routine.name;
                // The warm start must not keep what went wrong. (The asteroids' Newton
                // iteration need not settle on the near-parabolic one at all.)
                if (e == 0.99996 && routine.name == "KeplerPQ5Asteroid") continue;
                EXPECT_TRUE(routine.state(good, 1, kEpochDay, 0, out)) << routine.name << e;
            }
        }
    }
}

}  // namespace
}  // namespace solsys
