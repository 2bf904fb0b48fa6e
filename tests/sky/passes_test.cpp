// Passes against an independent chain, and against a plain scan.
#include "solsys/sky/passes.h"

#include <gmock/gmock.h>

#include <cmath>

#include "solsys/sky/places.h"
#include "tests/support/published_sets.h"

namespace {

using namespace solsys::sky;
using solsys::test::kElementSets;
using solsys::test::NamedRow;
using solsys::test::published_sets;
using solsys::test::read_named_csv;

Satellite satellite(const std::string& name) {
    return {name, published_sets().at(name), std::nullopt};
}

Site site_of(const NamedRow& row) {
    Site site;
    site.latitude_deg = row["latitude"], site.longitude_deg = row["longitude"];
    site.height_m = row["height_m"];
    return site;
}

constexpr double kDegree = M_PI / 180;

class Passes : public testing::Test {
  protected:
    Model model_ = std::move(*Model::open());
};

double seconds_between(const Instant& a, const Instant& b) {
    return std::fabs(days_between(a, b)) * 86400;
}

// The recorded instants are rounded to 1 ms, culminations good to 0.01 s near the flat top (of
// the highest of two, whose altitude counts). The recorded shadow is that of the Sun's centre:
// half way between the penumbra's edges, whose middle is 0.15 s off where the path grazes.
TEST_F(Passes, AgreeWithAnIndependentChain) {
    int found = 0, shadows = 0;
    for (const NamedRow& row : read_named_csv(kElementSets + "pass_cases.csv")) {
        const auto time = [&row](const std::string& name) {
            return *Instant::from_iso(row.text(name + "_utc"));
        };
        const Span span{time("rise").plus_days(-0.3), time("set").plus_days(0.3)};
        const auto all = passes(model_, site_of(row), satellite(row.text("case")), span,
                                {row["threshold"], 0});
        const auto mine = std::find_if(all.begin(), all.end(), [&](const Pass& pass) {
            return pass.rise && seconds_between(pass.rise->at, time("rise")) < 5;
        });
        ASSERT_NE(mine, all.end()) << row.text("case") << " " << row.text("rise_utc");
        ASSERT_TRUE(mine->set);
        const std::string label = row.text("case") + " " + row.text("rise_utc");
        EXPECT_LT(seconds_between(mine->rise->at, time("rise")), 0.004) << label;
        EXPECT_LT(seconds_between(mine->set->at, time("set")), 0.004) << label;
        EXPECT_NEAR(mine->rise->azimuth_deg, row["rise_azimuth"], 2e-4) << label;
        EXPECT_NEAR(mine->set->azimuth_deg, row["set_azimuth"], 2e-4) << label;
        EXPECT_NEAR(mine->culmination.altitude_deg, row["culmination_altitude"], 2e-4) << label;
        EXPECT_NEAR(mine->culmination.range_km, row["culmination_range_km"], 0.5) << label;
        EXPECT_LT(seconds_between(mine->culmination.at, time("culmination")), 0.2) << label;
        EXPECT_EQ(mine->rise->light == Light::umbra, row["sunlit_rise"] == 0) << label;
        EXPECT_EQ(mine->set->light == Light::umbra, row["sunlit_set"] == 0) << label;
        std::istringstream recorded(row.text("shadow_utc"));
        std::size_t k = 0;
        for (std::string text; recorded >> text; k += 2, ++shadows) {
            ASSERT_LT(k + 1, mine->light_changes.size()) << label;
            const Instant first = mine->light_changes[k].place.at;
            const Instant middle =
                first.plus_days(days_between(first, mine->light_changes[k + 1].place.at) / 2);
            EXPECT_LT(seconds_between(middle, *Instant::from_iso(text)), 0.2) << label;
        }
        ++found;
    }
    EXPECT_EQ(found, 20);
    EXPECT_GT(shadows, 3);
}

// Against looks every half minute: no stretch above the horizon is missed, and what the looks
// do not see is shorter than their step.
TEST_F(Passes, MissNothingThatAScanSees) {
    constexpr double kStep = 30.0 / 86400;
    Site site;
    site.latitude_deg = 48.2, site.longitude_deg = 16.4;
    for (const auto& [name, horizon] :
         {std::pair{"06251", 0.0}, {"06251", 30.0}, {"08195", 5.0}, {"28350", 0.0}}) {
        const Satellite craft = satellite(name);
        const double days = 1.2;
        const Span span{craft.epoch(), craft.epoch().plus_days(days)};
        int rises = 0, found_rises = 0, unseen = 0;
        bool was_up = true;
        for (const SatellitePlace& place : path_of(model_, site, craft, span, 30)) {
            const bool up = place.altitude_deg >= horizon;
            rises += up && !was_up;
            was_up = up;
        }
        for (const Pass& pass : passes(model_, site, craft, span, {horizon, -90})) {
            if (!pass.rise) continue;
            ++found_rises;
            unseen += pass.set && days_between(pass.rise->at, pass.set->at) < kStep;
        }
        EXPECT_GE(found_rises, rises) << name << " above " << horizon;
        EXPECT_LE(found_rises, rises + unseen) << name << " above " << horizon;
    }
}

// Straight overhead at midnight, half lit: its standard magnitude 5 log(range/1000) on; the
// full face is brighter by 2.5 log pi.
TEST_F(Passes, TellBrightness) {
    Satellite craft = satellite("06251");
    Site site;
    site.latitude_deg = -42.88, site.longitude_deg = 147.33;
    const Span span{craft.epoch(), craft.epoch().plus_days(2)};
    for (const Pass& pass : passes(model_, site, craft, span))
        EXPECT_FALSE(pass.culmination.magnitude) << "not known";
    craft.standard_magnitude = -1.8;
    int seen = 0;
    for (const Pass& pass : passes(model_, site, craft, span)) {
        const SatellitePlace& v = pass.culmination;
        EXPECT_EQ(v.magnitude.has_value(), v.light != Light::umbra);
        EXPECT_EQ(v.sun_visible > 0, v.light != Light::umbra);
        if (!pass.best) continue;
        ++seen;
        EXPECT_LE(pass.best->sun_altitude_deg, -6);
        const double distance = 5 * std::log10(pass.best->range_km / 1000);
        EXPECT_GT(*pass.best->magnitude, -1.8 + distance - 2.5 * std::log10(M_PI));
        // Of a dull sphere, by the angle from the Sun in the sky: the Sun is as good as at
        // infinity.
        model_.observe_from(site);
        ASSERT_TRUE(model_.move_to(pass.best->at));
        const auto sun_at = horizontal_of(model_, *apparent_place(model_, sun()));
        const double a = sun_at.altitude_deg * kDegree, b = pass.best->altitude_deg * kDegree;
        const double turn = (sun_at.azimuth_deg - pass.best->azimuth_deg) * kDegree;
        const double phase = M_PI - std::acos(std::sin(a) * std::sin(b) +
                                              std::cos(a) * std::cos(b) * std::cos(turn));
        const double lit = std::sin(phase) + (M_PI - phase) * std::cos(phase);
        EXPECT_NEAR(*pass.best->magnitude,
                    -1.8 + distance - 2.5 * std::log10(lit * pass.best->sun_visible), 0.01);
        for (const LightChange& change : pass.light_changes)
            EXPECT_NEAR(change.place.sun_visible, change.place.sun_visible > 0.5 ? 1 : 0, 1e-3);
    }
    EXPECT_GT(seen, 0);
}

TEST(SatelliteLists, AreSearchedByNumberAndName) {
    const std::string set =
        "1 99001U 24017A   24123.45678901  .00001234  00000-0  56789-4 0  1233\n"
        "2 99001  51.6400 123.4567 0001234  45.6789 314.2718 15.50123456123457\n";
    const SatelliteList list =
        parse_satellites("STATION (ZVEZDA)\n" + set + "junk of no use\n" + set +
                         "1 99001U and nothing of what else is due\n");
    ASSERT_EQ(list.satellites.size(), 2u);
    EXPECT_THAT(list.problems, testing::ElementsAre("line 7: length"));
    for (const char* name : {"99001", "station", "Station (Zvezda)", "zvezda"})
        EXPECT_TRUE(find_satellite(list.satellites, name)) << name;
    EXPECT_EQ(find_satellite(list.satellites, "hubble").message(), "no satellite 'hubble'");
    EXPECT_EQ(list.satellites[0].epoch().iso(0), "2024-05-02T10:57:47Z");
    EXPECT_FALSE(read_satellites("no/such/file"));
}

// Wherever it is stopped, also within a pass: what was found are the first of all, whole.
TEST_F(Passes, StoppedAreTheFirstOfAll) {
    const Satellite craft = satellite("06251");
    const Span span{craft.epoch(), craft.epoch().plus_days(2)};
    const auto all = passes(model_, {}, craft, span);
    ASSERT_GE(all.size(), 3U);
    for (double part = 0.02; part < 1; part += 0.035) {
        SearchControl control([&](double done) {
            if (done > part) control.stop();
        });
        const auto some = passes(model_, {}, craft, span, {}, &control);
        ASSERT_LE(some.size(), all.size());
        for (std::size_t i = 0; i < some.size(); ++i) {
            ASSERT_TRUE(some[i].set);
            EXPECT_LT(seconds_between(some[i].set->at, all[i].set->at), 0.01) << part;
        }
    }
}

TEST_F(Passes, AnswerNothingForWhatIsNoSearch) {
    const Satellite craft = satellite("06251");
    const Instant t = craft.epoch();
    EXPECT_TRUE(passes(model_, {}, craft, {t, t}).empty());
    EXPECT_TRUE(passes(model_, {}, craft, {t, t.plus_days(-1)}).empty());
    EXPECT_TRUE(passes(model_, {}, craft, {t, t.plus_days(1)}, {NAN, 0}).empty());
    Satellite spoilt = craft;
    spoilt.elements.meanMotion = 0;
    EXPECT_TRUE(passes(model_, {}, spoilt, {t, t.plus_days(1)}).empty());
    EXPECT_FALSE(satellite_place(model_, {}, spoilt, t));
}

}  // namespace
