// Searches of the typed layer: conjunctions, gatherings, phenomena of satellites, occultations,
// the diary.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <thread>

#include "solsys/sky/sky.h"
#include "tests/support/csv.h"

namespace {

using namespace solsys::sky;
using solsys::test::read_csv;

Model de405() {
    auto model = Model::open(SOLSYS_DE405);
    EXPECT_TRUE(model) << model.message();
    return std::move(*model);
}

Body body(int number) { return Body(SSO_ID(number > 100 ? SSO_MOON : SSO_PLNT, number)); }
// Contacts at one limb: a star has one, a planet two.
int contacts_of(int number) { return number > 100 ? 1 : 2; }
Instant at(const char* iso) { return *Instant::from_iso(iso); }
double seconds(const Instant& a, const Instant& b) { return 86400 * days_between(b, a); }

// Every recorded one and none besides, to what the places of DE405 and DE431 differ by: 0.05
// arcsec up to Jupiter, 0.16 arcsec from Saturn on.
TEST(SkyConjunctions, AreThoseOfAnotherEphemeris) {
    Model model = de405();
    const std::map<std::string, ConjunctionWay> ways{{"ra", ConjunctionWay::kRightAscension},
                                                     {"longitude", ConjunctionWay::kLongitude},
                                                     {"closest", ConjunctionWay::kClosest}};
    for (const auto& row : read_csv(SOLSYS_TEST_DATA "/reference/conjunctions.csv")) {
        const Instant expected = Instant::from_tt(std::stod(row[3]));
        const Span span{expected.plus_days(-1), expected.plus_days(1)};
        const auto found = conjunctions(model, body(std::stoi(row[0])), body(std::stoi(row[1])),
                                        span, ways.at(row[2]), 15);
        ASSERT_EQ(found.size(), 1U)
            << row[0] << ' ' << row[1] << ' ' << row[2] << ' ' << row[3];
        const double rate = std::stod(row[6]);
        const auto beyond = [](int number) { return number >= 6 && number <= 9; };
        const bool far = beyond(std::stoi(row[0])) || beyond(std::stoi(row[1]));
        const double angle = far ? 8e-7 : 2.5e-7;
        // Of the least angle the rate is that of the slope of its square: twice the speed
        // squared.
        const double speed = row[2] == "closest" ? std::sqrt(rate / 2) : rate;
        const double doubt = angle / speed;
        EXPECT_NEAR(seconds(found[0].at, expected), 0, 86400 * doubt + 0.5)
            << row[0] << ' ' << row[1] << ' ' << row[2] << ' ' << row[3];
        EXPECT_NEAR(found[0].separation_deg * 0.017453292519943295, std::stod(row[4]), angle);
        const double turn = std::remainder(
            found[0].position_angle_deg - std::stod(row[5]) * 57.29577951308232, 360.0);
        EXPECT_NEAR(turn, 0, 0.05);
    }
}

// Mercury, Venus and Jupiter in 2013: from a scan of each hour.
TEST(SkyConjunctions, GatheringsHaveTheirLeastCircle) {
    Model model = de405();
    const std::vector<Body> three{body(1), body(2), body(5)};
    const Span span{at("2013-05-01"), at("2013-07-01")};
    const auto found = gatherings(model, three, span, 2.5);
    ASSERT_EQ(found.size(), 1U);
    const Gathering& g = found[0];
    EXPECT_EQ(g.at.iso(0).substr(0, 10), "2013-05-27");
    EXPECT_LT(seconds(g.within.from, g.at), 0);
    EXPECT_GT(seconds(g.within.to, g.at), 0);
    // Of three bodies the least circle is at least half their widest pair.
    double widest = 0;
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < i; ++j) {
            model.observe_from_earth_centre();
            ASSERT_TRUE(model.move_to(g.at));
            const Place a = *apparent_place(model, three[i]);
            const Place b = *apparent_place(model, three[j]);
            const double rad = 0.017453292519943295;
            const double cosine = std::sin(a.dec_deg * rad) * std::sin(b.dec_deg * rad) +
                                  std::cos(a.dec_deg * rad) * std::cos(b.dec_deg * rad) *
                                      std::cos((a.ra_deg - b.ra_deg) * rad);
            widest = std::max(widest, std::acos(cosine) / rad);
        }
    }
    EXPECT_GE(g.radius_deg, widest / 2 - 1e-5);
    EXPECT_LE(g.radius_deg, widest / std::sqrt(3.0) + 1e-5);  // Jung's theorem
    EXPECT_TRUE(gatherings(model, three, span, 1.0).empty());
    EXPECT_TRUE(gatherings(model, {body(1)}, span, 5).empty());
}

// The published lists, recomputed from another theory: every phenomenon within a minute; and
// those of a dense scan of the views of the satellites, none missing, none extra.
TEST(SkyPhenomena, AreThePublishedOnes) {
    Model model = de405();
    int count = 0;
    for (const auto& row : read_csv(SOLSYS_TEST_DATA "/reference/satellite_phenomena.csv")) {
        const Instant expected = at(row[0].c_str());
        const Span span{expected.plus_seconds(-600), expected.plus_seconds(600)};
        const auto all = satellite_phenomena(model, body(5), span);
        const auto match = std::find_if(all.begin(), all.end(), [&row](const auto& e) {
            return e.moon.id.number == std::stoi(row[1]) && to_string(e.kind) == row[2] &&
                   e.begins == (row[3] == "begins");
        });
        ASSERT_NE(match, all.end()) << row[0];
        EXPECT_NEAR(seconds(match->at, expected), 0, 60) << row[0] << ' ' << row[2];
        EXPECT_FALSE(match->hidden) << row[0];  // the lists leave out what is not seen
        ++count;
    }
    EXPECT_EQ(count, 113);
}

TEST(SkyPhenomena, AreAsManyAsADenseScanOfTheViews) {
    Model model = de405();
    for (const int planet : {5, 6}) {
        const Span span{at("2026-01-01"), at("2026-01-09")};
        std::map<std::string, int> scanned, found;
        for (const auto& e : satellite_phenomena(model, body(planet), span))
            if (e.kind == SatellitePhenomenon::Kind::kTransit ||
                e.kind == SatellitePhenomenon::Kind::kOccultation)
                ++found[e.moon.name + to_string(e.kind)];
        std::map<std::string, bool> last;
        for (Instant t = span.from; t < span.to; t = t.plus_seconds(120)) {
            ASSERT_TRUE(model.move_to(t));
            const auto disk = view_planet(model, body(planet));
            for (const int moon : {1, 2, 3, 4, 5, 6}) {
                if ((planet == 5) != (moon < 5) && moon != 3 && moon != 4) continue;
                const auto view = view_satellite(model, *disk, body(100 * planet + moon));
                const auto note = [&](const std::string& key, bool now) {
                    if (last.count(key) != 0 && last[key] != now) ++scanned[key];
                    last[key] = now;
                };
                note(view->moon.name + "transit", view->on_disk);
                note(view->moon.name + "occultation", view->behind_disk);
            }
        }
        EXPECT_EQ(found, scanned);
    }
}

// Recorded contacts of bright stars and planets (of these the centre, which the two contacts of
// a limb enclose), seen or not, over ten years.
TEST(SkyOccultations, AreThoseOfAnotherEphemeris) {
    Model model = de405();
    EXPECT_TRUE(lunar_occultations(model, {at("2017-01-01"), at("2017-02-01")}).empty());
    model.observe_from(*parse_site("51.4779,0,46"));
    OccultationOptions options;
    options.observable_only = false;
    options.faintest_star = 1.6;
    const auto all =
        lunar_occultations(model, {at("2014-12-31T23:59Z"), at("2024-12-31T23:59Z")}, options);
    const auto rows = read_csv(SOLSYS_TEST_DATA "/reference/occultations.csv");
    for (const auto& row : rows) {
        const Instant expected = Instant::from_tt(std::stod(row[3]));
        double sum = 0;
        int count = 0;
        for (const LunarOccultation& e : all) {
            const bool begins = e.contact == LunarOccultation::Contact::kDisappears ||
                                e.contact == LunarOccultation::Contact::kBeginsToDisappear;
            if (e.body.id.number != std::stoi(row[0]) || begins != (row[2] == "D") ||
                std::fabs(seconds(e.at, expected)) > 600)
                continue;
            sum += seconds(e.at, expected);
            ++count;
            EXPECT_EQ(e.dark_limb, e.cusp_angle_deg > 0);
        }
        ASSERT_EQ(count, contacts_of(std::stoi(row[0]))) << row[1] << ' ' << row[3];
        EXPECT_NEAR(sum / count, 0, 2) << row[1] << ' ' << row[3];
    }
    int of_recorded = 0;
    for (const LunarOccultation& e : all)
        for (const int id : {21421, 49669, 65474, 80763}) of_recorded += e.body.id.number == id;
    EXPECT_EQ(of_recorded, std::count_if(rows.begin(), rows.end(),
                                         [](const auto& r) { return r[0].size() > 2; }));
}

TEST(SkyDiary, IsInOrderAndTellsItself) {
    Model model = de405();
    model.observe_from(*find_city("London"));
    const Span span{at("2017-07-01"), at("2017-08-01")};
    const auto all = diary(model, span);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end(),
                               [](const auto& a, const auto& b) { return a.at < b.at; }));
    for (const DiaryEvent& e : all) {
        EXPECT_FALSE(e.text.empty());
        EXPECT_EQ(find_kind(name_of_kind(e.kind)), e.kind);
        EXPECT_TRUE(span.holds(e.at));
        EXPECT_TRUE(e.altitude_deg.has_value());
    }
    EXPECT_GE(all.size(), 40U);
    DiaryOptions moons;
    moons.kinds = {find_kind("full-moon"), find_kind("7")};
    EXPECT_EQ(diary(model, span, moons).size(), 2U);
    EXPECT_EQ(model.site()->name, find_city("London")->name);

    // The Sun eclipsed at 18:25:32 UT, its phase in the record of the new Moon; and the
    // contacts of an occultation that the search for occultations finds, too.
    const auto august = diary(model, {at("2017-08-20"), at("2017-08-23")});
    const auto eclipse = std::find_if(august.begin(), august.end(), [](const auto& e) {
        return e.kind == SKYEVENT_SOLAR_ECLIPSE;
    });
    ASSERT_NE(eclipse, august.end());
    EXPECT_EQ(eclipse->text, "Total eclipse of the Sun");
    EXPECT_NEAR(seconds(eclipse->at, at("2017-08-21T18:25:31Z")), 0, 10);

    DiaryOptions stars;
    stars.kinds = {SKYEVENT_STAR_CONJUNCTION};
    OccultationOptions every;
    every.observable_only = false;
    every.faintest_star = 0.9, every.planets = false;
    const Span autumn{at("2017-10-01"), at("2018-01-01")};
    const auto covered = lunar_occultations(model, autumn, every);
    ASSERT_FALSE(covered.empty());
    std::size_t contacts = 0;
    for (const DiaryEvent& e : diary(model, autumn, stars)) {
        if (e.second->id.number != 21421 || !e.contacts[0]) continue;
        for (const LunarOccultation& o : covered) {
            const bool begins = o.contact == LunarOccultation::Contact::kDisappears;
            contacts += o.body.id.number == 21421 &&
                        std::fabs(seconds(o.at, *e.contacts[begins ? 0 : 3])) < 2;
        }
    }
    EXPECT_EQ(contacts, std::count_if(covered.begin(), covered.end(),
                                      [](const auto& o) { return o.body.id.number == 21421; }));

    // A stop from another thread ends a century soon, and keeps what there is.
    SearchControl* running = nullptr;
    std::atomic<int> steps{0};
    SearchControl control([&](double) {
        if (++steps == 100) running->stop();
    });
    running = &control;
    const auto some = diary(model, {at("1960-01-01"), at("2059-01-01")}, {}, &control);
    EXPECT_LE(steps, 101);
    EXPECT_LT(some.size(), 100U);
}

// Where a satellite's shadow comes onto Jupiter and leaves it, it stands at the limb, and half
// way between these well within.
TEST(SatelliteViews, ShadowsComeAndGoAtTheLimb) {
    auto model = Model::open();
    ASSERT_TRUE(model);
    const Instant start = at("2015-01-24T00:00Z");
    constexpr double kRatio = 66854.0 / 71492;
    for (const char* name : {"Io", "Europa", "Callisto"}) {
        const auto from_centre = [&](double minutes, bool& on) {
            EXPECT_TRUE(model->move_to(start.plus_days(minutes / 1440)));
            const auto planet = view_planet(*model, *find_body("Jupiter"));
            const auto moon = view_satellite(*model, *planet, *find_body(name));
            on = moon->shadow_on_disk;
            return std::hypot(moon->shadow_x_radii, moon->shadow_y_radii / kRatio);
        };
        std::vector<double> times;
        bool before = false, on = false;
        for (int minute = 0; minute < 720; ++minute, before = on) {
            const double r = from_centre(minute, on);
            EXPECT_TRUE(!on || r < 1.001) << name << ' ' << minute;
            if (on == before) continue;
            times.push_back(minute);
            EXPECT_NEAR(on ? r : from_centre(minute - 1, before), 1, 0.03) << name;
        }
        ASSERT_EQ(times.size(), 2U) << name;
        EXPECT_LT(from_centre((times[0] + times[1]) / 2, on), 0.8) << name;
    }
}

}  // namespace
