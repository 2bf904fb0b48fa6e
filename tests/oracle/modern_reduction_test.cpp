// The modern reduction of a whole model against a chain built with ERFA on the same DE405
// states: planets, the Moon, Galilean satellites and stars; the axes of the ephemeris, the true
// equator of date, the horizon of a site with UT1 and polar motion given.
#include <erfa.h>
#include <erfam.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "solsys/satellite_theory.h"
#include "tests/support/sky_models.h"

namespace {

using namespace solsys;
using namespace solsys::test;

constexpr double kMas = 1e-3 * kArcsec;
constexpr double kLightDay = 0.005775518331436995;

// 2 GM/c^2 in units of the Sun's, limiters as ERFA's documentation has them.
struct Bender {
    int body;
    double mass, limiter;
};
constexpr Bender kBenders[] = {
    {10, 1.0, 6e-6}, {5, 1 / 1047.348644, 3e-9}, {6, 1 / 3497.9018, 3e-10}};

// Barycentric states at the very instant: the file forms it in one double, the velocity carries
// the rest.
class BarycentricStates {
  public:
    State at(int body, Instant t) {
        const State sun = file(11, t);
        if (body == 10) return sun;
        if (body == 301) return sun + file(3, t) + file(10, t);
        if (body < 500) return sun + file(body, t);
        State moon{};
        double s[6];
        EXPECT_EQ(galilean_.AsTheory().GetSatVector(t.day, t.fraction, body % 100, 1, s), 0);
        moon = load_state(s);
        return sun + file(5, t) + moon;
    }

  private:
    State file(int row, Instant t) {
        double s[6];
        EXPECT_EQ(
            DE_Ephemeris::getState(file_, t.day, t.fraction, static_cast<short>(row), 1, s), 0);
        State state = load_state(s);
        state.r += ((t.day - t.jd()) + t.fraction) * state.v;
        return state;
    }
    DE_EvalState file_;
    JupiterSat galilean_;
};

struct Circumstances {
    Instant tt, tdb, ut1;
    double dut1, xp, yp;  // s, arcsec
    double longitude, latitude, height_m;
};

Circumstances circumstances(Instant tt, int i) {
    Circumstances c{};
    c.tt = tt;
    c.dut1 = 0.8 * std::sin(i), c.xp = 0.3 * std::cos(2.0 * i), c.yp = 0.4 * std::sin(3.0 * i);
    c.longitude = std::sin(5.0 * i) * 3.1, c.latitude = std::sin(7.0 * i) * 1.5;
    c.height_m = 3000 * std::fabs(std::sin(11.0 * i));
    double tai[2], utc[2], ut1[2];
    eraTttai(tt.day, tt.fraction, &tai[0], &tai[1]);
    eraTaiutc(tai[0], tai[1], &utc[0], &utc[1]);
    eraUtcut1(utc[0], utc[1], c.dut1, &ut1[0], &ut1[1]);
    // Before 1972 that takes TAI - UTC as it was at the start of the day.
    if (tt.day < 2441318) ut1[0] = utc[0], ut1[1] = utc[1] + c.dut1 / 86400;
    c.ut1 = {static_cast<int>(std::floor(ut1[0])), ut1[0] - std::floor(ut1[0]) + ut1[1]};
    const double g = eraDtdb(tt.day, tt.fraction, 0, 0, 0, 0);
    c.tdb = {tt.day, tt.fraction + g / 86400};
    return c;
}

// ERFA's chain from one observer.
class Chain {
  public:
    Chain(const Circumstances& c, bool topocentric) : t_(c.tdb), observer_(states_.at(3, t_)) {
        double m[3][3];
        eraPnm06a(c.tt.day, c.tt.fraction, m);
        tod_from_gcrs_ = load_matrix(&m[0][0]);
        eraC2t06a(c.tt.day, c.tt.fraction, c.ut1.day, c.ut1.fraction, c.xp * kArcsec,
                  c.yp * kArcsec, m);
        itrs_from_gcrs_ = load_matrix(&m[0][0]);
        if (!topocentric) return;
        double site[3];
        eraGd2gc(ERFA_WGS84, c.longitude, c.latitude, c.height_m, site);
        const Vec3 r = (1 / ERFA_DAU) * load(site);
        const double rate = 1.00273781191135448 * kTwoPi;
        observer_ =
            observer_ + transpose_times(itrs_from_gcrs_, State{r, rate * Vec3{-r.y, r.x, 0}});
    }

    Vec3 body(int number) {
        Vec3 path{};
        double tau = 0;
        for (int i = 0; i < 10; ++i) {
            path = states_.at(number, {t_.day, t_.fraction - tau}).r - observer_.r;
            tau = norm(path) * kLightDay;
        }
        return seen(unit(path), path, tau, number);
    }
    Vec3 star(const StarObject& s, double years) {
        double p[3], place[3];
        store(observer_.r, place);
        eraPmpx(s.ra, s.dec, double{s.pm_ra}, double{s.pm_dec}, s.parallax / kArcsec,
                double{s.radial_velocity}, years, place, p);
        return seen(load(p), {}, 1e9, 0);
    }
    [[nodiscard]] Vec3 of_date(Vec3 gcrs) const { return tod_from_gcrs_ * gcrs; }
    [[nodiscard]] Vec3 terrestrial(Vec3 gcrs) const { return itrs_from_gcrs_ * gcrs; }

  private:
    Vec3 seen(Vec3 direction, Vec3 path, double tau, int number) {
        double p[3];
        store(direction, p);
        Bender benders[3];
        std::copy(std::begin(kBenders), std::end(kBenders), benders);
        std::sort(benders, benders + 3, [&](const Bender& a, const Bender& b) {
            return norm(states_.at(a.body, t_).r - observer_.r) >
                   norm(states_.at(b.body, t_).r - observer_.r);
        });
        for (const Bender& bender : benders) {
            if (bender.body == number) continue;
            Vec3 b = states_.at(bender.body, t_).r;
            const double since =
                std::clamp(dot(load(p), b - observer_.r) * kLightDay, 0.0, tau);
            b = states_.at(bender.body, {t_.day, t_.fraction - since}).r;
            double e[3], q[3];
            store(unit(observer_.r - b), e);
            store(number == 0 ? load(p) : unit(observer_.r + path - b), q);
            eraLd(bender.mass, p, q, e, norm(observer_.r - b), bender.limiter, p);
            store(unit(load(p)), p);
        }
        double v[3], out[3];
        store(kLightDay * observer_.v, v);
        const double sun = norm(states_.at(10, t_).r - observer_.r);
        eraAb(p, v, sun, std::sqrt(1 - dot(load(v), load(v))), out);
        return load(out);
    }

    Instant t_;
    BarycentricStates states_;
    State observer_;
    Mat3 tod_from_gcrs_ = kIdentity, itrs_from_gcrs_ = kIdentity;
};

void place(CSWSolSys& model, const Circumstances& c, bool topocentric) {
    OBSERVER o = topocentric
                     ? site(c.longitude / kDegree, c.latitude / kDegree, c.height_m / 1e3)
                     : centre_of(3);
    EXPECT_TRUE(model.SetUT1(c.dut1));
    EXPECT_TRUE(model.SetPolarMotion(c.xp, c.yp));
    model.UpdateSys(c.tt.day, c.tt.fraction);
    model.SetObserver(&o);
}

Vec3 gcrs_of(CSWSolSys& model, int body) {
    double v[4];
    EXPECT_TRUE(model.GetSSOVisVec2K({body > 100 ? SSO_MOON : SSO_PLNT, body}, v, 0.0));
    return load(v);
}

// North, west, zenith of the site in terrestrial axes.
Vec3 horizontal(const Circumstances& c, Vec3 terrestrial) {
    const double sl = std::sin(c.longitude), cl = std::cos(c.longitude);
    const double sb = std::sin(c.latitude), cb = std::cos(c.latitude);
    return {dot(terrestrial, {-cl * sb, -sl * sb, cb}), dot(terrestrial, {sl, -cl, 0}),
            dot(terrestrial, {cl * cb, sl * cb, sb})};
}

class ModernReduction : public testing::TestWithParam<bool> {};

TEST_P(ModernReduction, AgreesWithErfaFrom1960To2059) {
    const bool topocentric = GetParam();
    const auto model = make_model(Source::kDe405);
    model->SetReduction(REDUCTION_MODERN);
    Instants instants(11);
    double gcrs = 0, of_date = 0, horizon = 0;
    for (int i = 0; i < 60; ++i) {
        const Circumstances c = circumstances(instants.next(), i);
        Chain chain(c, topocentric);
        place(*model, c, topocentric);
        for (const int body : {10, 301, 1, 2, 4, 5, 6, 7, 8, 9, 501, 502, 503, 504}) {
            const Vec3 expected = chain.body(body), seen = gcrs_of(*model, body);
            gcrs = std::max(gcrs, angle_between(expected, seen));

            double spherical[3], v[3];
            ASSERT_TRUE(
                model->GetRADecVis({body > 100 ? SSO_MOON : SSO_PLNT, body}, spherical, 0.0));
            of_date = std::max(of_date, angle_between(chain.of_date(expected),
                                                      direction(spherical[1], spherical[2])));
            if (!topocentric) continue;
            double azimuth = 0, altitude = 0;
            model->FromRAToAzm(false, &spherical[1], &spherical[2], &azimuth, &altitude);
            store(horizontal(c, chain.terrestrial(expected)), v);
            horizon = std::max(horizon, angle_between(load(v), direction(-azimuth, altitude)));
        }
    }
    EXPECT_LT(gcrs, 0.01 * kMas);
    EXPECT_LT(of_date, 0.05 * kMas);
    EXPECT_LT(horizon, 0.1 * kMas);
    RecordProperty("mas", std::to_string(gcrs / kMas) + " " + std::to_string(of_date / kMas) +
                              " " + std::to_string(horizon / kMas));
}
INSTANTIATE_TEST_SUITE_P(GeocentricAndOnTheGround, ModernReduction, testing::Bool());

TEST(ModernReductionOfStars, AgreesWithErfa) {
    const auto model = make_model(Source::kDe405);
    model->SetReduction(REDUCTION_MODERN);
    Instants instants(12);
    std::mt19937_64 random(3);
    const auto uniform = [&](double a, double b) {
        return std::uniform_real_distribution(a, b)(random);
    };
    double most = 0;
    for (int i = 0; i < 40; ++i) {
        const Circumstances c = circumstances(instants.next(), i);
        Chain chain(c, true);
        place(*model, c, true);
        for (int k = 0; k < 10; ++k) {
            StarObject s;
            s.ra = uniform(0, kTwoPi), s.dec = std::asin(uniform(-0.999, 0.999));
            s.pm_ra = static_cast<float>(uniform(-2, 2) * kArcsec / std::cos(s.dec));
            s.pm_dec = static_cast<float>(uniform(-2, 2) * kArcsec);
            s.parallax = static_cast<float>(uniform(0.001, 0.7) * kArcsec);
            s.radial_velocity = static_cast<float>(uniform(-100, 100));
            const double years = days_since_j2000(c.tdb) / 365.25;
            double v[3];
            ASSERT_TRUE(model->GetRADecVisStar(&s, nullptr, v, false));
            most = std::max(most, angle_between(chain.star(s, years), load(v)));
        }
    }
    EXPECT_LT(most, 0.1 * kMas);
    RecordProperty("mas", std::to_string(most / kMas));
}

}  // namespace
