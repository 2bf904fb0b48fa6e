// Batches against the single calls, and what they answer to arrays that do not fit.
#include "solsys/sky/batch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "ephemeris/de/batch_kernel.h"
#include "ephemeris/de/state.h"
#include "platform/cpu_features.h"
#include "solsys/place_kernel.h"
#include "solsys/sky/appearance.h"
#include "tests/support/named_csv.h"
#include "tests/support/sky_models.h"

namespace solsys::sky {
namespace {

std::vector<Body> bodies_called(std::initializer_list<const char*> names) {
    std::vector<Body> bodies;
    for (const char* name : names) bodies.push_back(*find_body(name));
    return bodies;
}

// Runs of neighbours (ten minutes, then five days apart), then a century at random, in which
// some leave the file.
std::vector<Instant> instants_in_runs() {
    std::vector<Instant> all;
    for (int i = 0; i < 150; ++i)
        all.push_back(Instant::from_utc({2458000, 0.3}).plus_days(i / 144.0));
    for (int i = 0; i < 150; ++i)
        all.push_back(Instant::from_utc({2459000, 0.1}).plus_days(5.3 * i));
    std::mt19937_64 random(16);
    std::uniform_real_distribution<double> jd(2436000, 2474400);
    for (int i = 0; i < 150; ++i) all.push_back(Instant::from_utc(jd(random)));
    return all;
}

struct Case {
    const char* name;
    test::Source source;
    SolsysReduction reduction;
    bool at_site;
};
class Batch : public testing::TestWithParam<Case> {};

// Angles within 1e-10 degrees of the single ones, as seen on the sphere (and the rounding of
// places about the Sun, 5e-16 au, for what is near); distances within
// 1e-12 au: orbits by elements take the instant at which the light left as one double.
void expect_same(const std::optional<Place>& single, const Place& place) {
    ASSERT_EQ(single.has_value(), std::isfinite(place.ra_deg));
    if (!single) return;
    const double turn = std::remainder(single->ra_deg - place.ra_deg, 360.0);
    const double bound = single->distance_au < 1 ? 1e-10 + 3e-14 / single->distance_au : 1e-10;
    EXPECT_NEAR(turn * std::cos(single->dec_deg * kDegree), 0, bound);
    EXPECT_NEAR(single->dec_deg, place.dec_deg, bound);
    if (std::isfinite(single->distance_au) || std::isfinite(place.distance_au)) {
        EXPECT_NEAR(single->distance_au, place.distance_au, 1e-12);
        EXPECT_NEAR(single->light_time_days, place.light_time_days, 1e-14);
    }
}

TEST_P(Batch, IsTheSingleCallManyTimes) {
    const Case& c = GetParam();
    const auto classic = test::make_model(c.source);
    classic->SetReduction(c.reduction);
    Model model(*classic);
    Site site;
    site.latitude_deg = -33.4, site.longitude_deg = 151.2, site.height_m = 900;
    if (c.at_site) model.observe_from(site);
    const Instant before = Instant::from_utc({2451234, 0.25});
    model.move_to(before);
    const auto bodies = bodies_called({"sun", "moon", "mercury", "earth", "jupiter", "saturn",
                                       "pluto", "io", "vesta", "halley", "sirius"});
    const auto instants = instants_in_runs();
    const std::size_t n = instants.size(), all = n * bodies.size();

    std::vector<Place> apparent(all), astrometric(all);
    std::vector<StateVector> states(all);
    std::vector<Horizontal> horizontal(2 * all);
    std::vector<double> magnitude(all);
    std::vector<std::int8_t> constellation(all);
    const auto done = apparent_places(model, bodies, instants, apparent);
    ASSERT_TRUE(done) << done.message();
    Site other;
    other.latitude_deg = 71, other.longitude_deg = -40;
    const Site sites[] = {other, site};
    EXPECT_TRUE(astrometric_places(model, bodies, instants, astrometric));
    EXPECT_TRUE(heliocentric_states(model, bodies, instants, states));
    EXPECT_TRUE(horizontals(model, sites, bodies, instants, horizontal));
    EXPECT_TRUE(magnitudes(model, bodies, instants, magnitude));
    EXPECT_TRUE(constellations(model, instants, apparent, constellation));
    EXPECT_EQ(model.instant(), before);
    EXPECT_NEAR(test::time_of(*classic).jd(), before.jd_tt(), 1e-9);

    std::size_t known = 0;
    for (std::size_t i = 0; i < n; i += 7) {
        SCOPED_TRACE(instants[i].iso());
        for (std::size_t b = 0; b < bodies.size(); ++b) {
            SCOPED_TRACE(bodies[b].name);
            const std::size_t at = b * n + i;
            ASSERT_TRUE(model.move_to(instants[i]));
            const auto place = apparent_place(model, bodies[b]);
            known += place.has_value();
            expect_same(place, apparent[at]);
            ASSERT_TRUE(model.move_to(instants[i]));
            expect_same(astrometric_place(model, bodies[b]), astrometric[at]);
            const auto state = heliocentric_state(model, bodies[b]);
            ASSERT_EQ(state.has_value(), std::isfinite(states[at][0]));
            for (std::size_t k = 0; state && k < 6; ++k)
                EXPECT_NEAR((*state)[k], states[at][k], 1e-14 * (std::fabs((*state)[k]) + 1));
            EXPECT_EQ(magnitude_of(model, bodies[b]).value_or(-99),
                      std::isnan(magnitude[at]) ? -99 : magnitude[at]);
            if (!place) continue;
            EXPECT_EQ(constellation_at(model, place->ra_deg, place->dec_deg).index,
                      constellation[at]);
            if (!c.at_site) continue;
            const Horizontal h = horizontal_of(model, *place);
            EXPECT_NEAR(h.altitude_deg, horizontal[all + at].altitude_deg, 1e-9);
            const double turn =
                std::remainder(h.azimuth_deg - horizontal[all + at].azimuth_deg, 360.0);
            EXPECT_NEAR(turn * std::cos(h.altitude_deg * kDegree), 0, 1e-9);
        }
    }
    EXPECT_GT(known, n);
    EXPECT_EQ(*done, static_cast<std::size_t>(std::count_if(
                         apparent.begin(), apparent.end(),
                         [](const Place& p) { return std::isfinite(p.ra_deg); })));
}

INSTANTIATE_TEST_SUITE_P(
    OfEverySource, Batch,
    testing::Values(Case{"ClassicFile", test::Source::kDe405, REDUCTION_CLASSIC, true},
                    Case{"ModernFile", test::Source::kDe405, REDUCTION_MODERN, true},
                    Case{"ModernFileGeocentric", test::Source::kDe405, REDUCTION_MODERN, false},
                    Case{"ModernTheory", test::Source::kBuiltIn, REDUCTION_MODERN, true}),
    [](const auto& c) { return c.param.name; });

// The cases that Mallama & Hilton 2018 took from the sky: those at the distance of their dates.
TEST(BatchOfMagnitudes, AreThoseOfTheAuthors) {
    const auto classic = test::make_model(test::Source::kDe405);
    classic->SetReduction(REDUCTION_MODERN);
    Model model(*classic);
    model.observe_from_earth_centre();
    int compared = 0;
    for (const auto& row :
         test::read_named_csv(SOLSYS_TEST_DATA "/reference/planet_magnitudes_2018.csv")) {
        const std::string source = row.text("source"), published = row.text("published");
        if (source.rfind("authors ", 0) != 0 || published == "none") continue;
        const Body body = *find_body(row.text("planet"));
        const Instant t[] = {*Instant::from_iso(source.substr(8) + "T00:00Z")};
        ASSERT_TRUE(model.move_to(t[0]));
        const auto place = apparent_place(model, body);
        if (!place || std::fabs(place->distance_au - row["delta_au"]) > 1e-3) continue;
        if (row.text("rings") == "no") continue;
        double magnitude[1];
        ASSERT_TRUE(magnitudes(model, {&body, 1}, t, magnitude));
        EXPECT_NEAR(magnitude[0], std::stod(published), 0.004) << body.name << " " << source;
        ++compared;
    }
    EXPECT_EQ(compared, 16);
}

TEST(BatchOfFileStates, IsTheFileOneByOne) {
    const auto model = test::make_model(test::Source::kDe405);
    const auto instants = instants_in_runs();
    std::vector<StateVector> out(instants.size());
    DE_EvalState state;
    for (short body = 1; body <= 11; ++body) {
        const auto done = file_states(body, instants, out);
        ASSERT_TRUE(done);
        EXPECT_LT(*done, instants.size());
        for (std::size_t i = 0; i < instants.size(); ++i) {
            const JulianDate t = instants[i].tdb();
            StateVector single{};
            const bool known =
                de_state(state, {t.day, t.fraction}, body, true, single.data()) == 0;
            ASSERT_EQ(known, std::isfinite(out[i][0])) << instants[i].iso();
            if (known) {
                EXPECT_EQ(single, out[i]) << instants[i].iso();
            }
        }
    }
}

// Every build of the kernel gives the same bits.
TEST(BatchOfFileStates, DoesNotDependOnTheProcessor) {
    std::mt19937_64 random(8);
    std::uniform_real_distribution<double> number(-1, 1);
    std::array<double, 9 * 3 * kMostSeriesTerms> coefficients;
    for (double& c : coefficients) c = number(random);
    for (int terms = 2; terms <= kMostSeriesTerms; ++terms) {
        SeriesBatch batch{};
        batch.coefficients = coefficients.data();
        for (int i = 0; i < kSeriesBatch; ++i) {
            batch.within[i] = 0.5 + 0.5 * number(random);
            batch.record[i] = (terms % 2) * 3 * terms * i;
        }
        const SeriesRow rows[] = {{0, terms, 1, 0.3, 0.7, 1}, {0, 2, 2, 1.1, 0.2, 0.9}};
        SeriesSums baseline, other;
        sum_batch_baseline(batch, rows, 2, baseline);
        if (cpu_has_avx2()) {
            sum_batch_avx2(batch, rows, 2, other);
            EXPECT_EQ(std::memcmp(&baseline, &other, sizeof other), 0) << terms;
        }
        if (cpu_has_avx512()) {
            sum_batch_avx512(batch, rows, 2, other);
            EXPECT_EQ(std::memcmp(&baseline, &other, sizeof other), 0) << terms;
        }
    }
}

TEST(BatchOfPlaces, DoesNotDependOnTheProcessor) {
    std::mt19937_64 random(9);
    std::uniform_real_distribution<double> number(-1, 1);
    // Observers and bodies anywhere, in any frame, and light much bent.
    const auto anything = [&]<class T>(T& lanes) {
        std::array<double, sizeof(T) / sizeof(double)> numbers;
        std::generate(numbers.begin(), numbers.end(), [&] { return number(random); });
        std::memcpy(&lanes, numbers.data(), sizeof lanes);
    };
    ObserverLanes observers;
    LightLanes light;
    anything(observers);
    anything(light);
    SeenLanes baseline, other;
    see_baseline(observers, light, 1, 0.006, baseline);
    if (cpu_has_avx2()) {
        see_avx2(observers, light, 1, 0.006, other);
        EXPECT_EQ(std::memcmp(&baseline, &other, sizeof other), 0);
    }
    if (cpu_has_avx512()) {
        see_avx512(observers, light, 1, 0.006, other);
        EXPECT_EQ(std::memcmp(&baseline, &other, sizeof other), 0);
    }
}

TEST(BatchOfWrongSizes, IsAFailureThatSaysSo) {
    auto model = Model::open();
    const auto bodies = bodies_called({"sun", "moon"});
    const std::vector<Instant> instants(3);
    std::vector<Place> five(5), six(6);
    EXPECT_NE(apparent_places(*model, bodies, instants, five).message().find("2 times 3"),
              std::string::npos);
    EXPECT_EQ(*apparent_places(*model, {}, instants, {}), 0U);
    EXPECT_EQ(*apparent_places(*model, bodies, {}, {}), 0U);
    std::vector<std::int8_t> names(5);
    EXPECT_FALSE(constellations(*model, instants, five, names));
    std::vector<double> angles(6);
    EXPECT_FALSE(separations(five, six, angles));
    const Body unknown(SSO_ID(SSO_PLNT, 77), "Vulcan");
    EXPECT_FALSE(
        apparent_places(*model, std::span(&unknown, 1), instants, std::span(six).first(3)));

    SearchControl control;
    control.stop();
    EXPECT_EQ(*apparent_places(*model, bodies, instants, six, &control), 0U);
    EXPECT_TRUE(std::isnan(six[0].ra_deg));
}

// What the file holds comes first, then the rest site by site; long enough to be told of often.
TEST(BatchInParts, NeverGoesBackInItsProgress) {
    const auto classic = test::make_model(test::Source::kDe405);
    Model model(*classic);
    const auto bodies = bodies_called({"mars", "io"});
    std::vector<Instant> instants;
    for (int i = 0; i < 20000; ++i)
        instants.push_back(Instant::from_utc({2451545, 0}).plus_days(0.1 * i));
    const Site sites[2];
    std::vector<Horizontal> out(4 * instants.size());
    std::vector<double> told;
    SearchControl control([&](double fraction) { told.push_back(fraction); });
    EXPECT_EQ(*horizontals(model, sites, bodies, instants, out, &control), out.size());
    ASSERT_FALSE(told.empty());
    EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
    EXPECT_LE(told.back(), 1);
}

TEST(Separations, OfOneAndOfMany) {
    const std::vector<Place> places{{0, 0}, {90, 0}, {10, 90}, {180, 1e-6}};
    std::vector<double> angles(4);
    ASSERT_EQ(*separations(places, std::span(places).first(1), angles), 4U);
    const double expected[] = {0, 90, 90, 180 - 1e-6};
    for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(angles[i], expected[i], 1e-12);
}

}  // namespace
}  // namespace solsys::sky
