// The C interface against the typed layer that it stands on, and what it answers to misuse.
#include "solsys/c_api.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "solsys/sky/sky.h"

namespace {

namespace sky = solsys::sky;

struct Handles {
    solsys_model* model = nullptr;
    solsys_body *moon = nullptr, *mars = nullptr;
    solsys_site site{};
    solsys_instant from{}, to{};
    Handles() {
        site.size = sizeof site;
        EXPECT_EQ(solsys_model_open(nullptr, &model), SOLSYS_OK) << solsys_last_message();
        EXPECT_EQ(solsys_find_body("moon", nullptr, &moon), SOLSYS_OK);
        EXPECT_EQ(solsys_find_body("plnt:4", nullptr, &mars), SOLSYS_OK);
        EXPECT_EQ(solsys_find_city("Troms\u00f8", &site), SOLSYS_OK);
        EXPECT_EQ(solsys_parse_time("2026-08-01", nullptr, &from), SOLSYS_OK);
        EXPECT_EQ(solsys_parse_time("2026-09-01T02", "+02:00", &to), SOLSYS_OK);
    }
    ~Handles() {
        solsys_body_free(moon), solsys_body_free(mars);
        solsys_model_free(model);
    }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;
};

sky::Instant typed(solsys_instant t) { return sky::Instant::from_utc({t.day, t.fraction}); }

TEST(CInterface, PlacesAreThoseOfTheTypedLayer) {
    const Handles h;
    auto opened = sky::Model::open();
    sky::Model& model = *opened;
    const sky::Site site = *sky::find_city("Troms\u00f8");
    model.observe_from(site);
    model.move_to(typed(h.from));
    ASSERT_EQ(solsys_model_observe_from(h.model, &h.site), SOLSYS_OK);
    ASSERT_EQ(solsys_model_move_to(h.model, h.from), SOLSYS_OK);

    solsys_place place;
    solsys_horizontal horizontal;
    solsys_appearance looks{};
    looks.size = sizeof looks;
    ASSERT_EQ(solsys_apparent_place(h.model, h.moon, &place), SOLSYS_OK);
    ASSERT_EQ(solsys_horizontal_of(h.model, &place, &horizontal), SOLSYS_OK);
    ASSERT_EQ(solsys_appearance_of(h.model, h.moon, &looks), SOLSYS_OK);
    const sky::Place expected = *sky::apparent_place(model, sky::moon());
    EXPECT_EQ(place.ra_deg, expected.ra_deg);
    EXPECT_EQ(horizontal.azimuth_deg, sky::horizontal_of(model, expected).azimuth_deg);
    const sky::Appearance appearance = sky::appearance_of(model, sky::moon(), expected);
    EXPECT_EQ(looks.magnitude, *appearance.magnitude);
    EXPECT_EQ(looks.constellation, appearance.constellation);

    const solsys_body* bodies[] = {h.mars, h.moon};
    const solsys_instant instants[] = {h.to, h.from};
    solsys_place places[4];
    size_t done = 0;
    ASSERT_EQ(
        solsys_apparent_places(h.model, bodies, 2, instants, 2, places, 4, &done, nullptr),
        SOLSYS_OK);
    EXPECT_EQ(done, 4U);
    EXPECT_NEAR(places[3].ra_deg, place.ra_deg, 1e-11);
}

TEST(CInterface, SearchesFindWhatTheTypedLayerFinds) {
    const Handles h;
    auto opened = sky::Model::open();
    sky::Model& model = *opened;
    const sky::Site site = *sky::find_city("Troms\u00f8");
    const sky::Span span{typed(h.from), typed(h.to)};
    EXPECT_EQ(span.days(), 31);

    solsys_list* days = nullptr;
    ASSERT_EQ(solsys_risings(h.model, &h.site, h.moon, h.from, h.to, &days, nullptr),
              SOLSYS_OK);
    const auto rows = sky::risings(model, site, sky::moon(), span).rows;
    ASSERT_EQ(solsys_list_count(days), rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        solsys_rising day{};
        day.size = sizeof day;
        ASSERT_EQ(solsys_get_rising(days, i, &day), SOLSYS_OK);
        EXPECT_EQ(rows[i].rise.has_value(), std::isfinite(day.rise.fraction));
        if (rows[i].rise) {
            EXPECT_EQ(*rows[i].rise, typed(day.rise));
        }
    }
    solsys_list_free(days);
    solsys_control* control = nullptr;
    ASSERT_EQ(solsys_control_new(nullptr, nullptr, &control), SOLSYS_OK);
    solsys_control_stop(control);
    ASSERT_EQ(
        solsys_watched_risings(h.model, &h.site, h.moon, h.from, h.to, control, &days, nullptr),
        SOLSYS_STOPPED);
    EXPECT_EQ(solsys_list_count(days), 0U);
    solsys_list_free(days);
    solsys_control_free(control);

    // 2026 August 12: total in the north.
    solsys_list *eclipses = nullptr, *curves = nullptr;
    ASSERT_EQ(solsys_find_eclipses(h.model, SOLSYS_SOLAR, h.from, h.to, nullptr, &eclipses),
              SOLSYS_OK);
    ASSERT_EQ(solsys_list_count(eclipses), 1U);
    solsys_eclipse eclipse{};
    eclipse.size = sizeof eclipse;
    ASSERT_EQ(solsys_get_eclipse(eclipses, 0, &eclipse), SOLSYS_OK);
    EXPECT_STREQ(eclipse.type, "total");
    EXPECT_EQ(eclipse.saros, 126);
    solsys_local_eclipse local{};
    local.size = sizeof local;
    ASSERT_EQ(solsys_local_eclipse_of(h.model, eclipses, 0, &h.site, &local), SOLSYS_OK);
    const auto found = sky::find_eclipses(model, sky::EclipseKind::kSolar, span);
    EXPECT_EQ(local.magnitude, sky::eclipse_at(model, found.at(0), site)->magnitude);
    ASSERT_EQ(solsys_eclipse_map(h.model, eclipses, 0, &curves), SOLSYS_OK);
    solsys_map_curve curve{};
    curve.size = sizeof curve;
    ASSERT_EQ(solsys_get_map_curve(curves, 0, &curve), SOLSYS_OK);
    std::vector<solsys_ground_point> points(curve.point_count);
    ASSERT_EQ(solsys_get_map_points(curves, 0, points.data(), points.size()), SOLSYS_OK);
    const auto map = sky::eclipse_map(model, found.at(0));
    ASSERT_EQ(map.curves.at(0).points.size(), points.size());
    EXPECT_EQ(map.curves[0].points.back().latitude_deg, points.back().latitude_deg);
    EXPECT_EQ(solsys_get_body(eclipses, 0, nullptr), SOLSYS_BAD_ARGUMENT);
    solsys_list_free(curves), solsys_list_free(eclipses);

    solsys_list* events = nullptr;
    const int32_t full_moon[] = {solsys_diary_kind("full-moon")};
    ASSERT_EQ(solsys_diary(h.model, h.from, h.to, full_moon, 1, nullptr, &events), SOLSYS_OK);
    ASSERT_EQ(solsys_list_count(events), 1U);
    solsys_diary_event event{};
    event.size = sizeof event;
    ASSERT_EQ(solsys_get_diary_event(events, 0, &event), SOLSYS_OK);
    sky::DiaryOptions only_full;
    only_full.kinds = {9};
    EXPECT_EQ(event.text, sky::diary(model, span, only_full).at(0).text);
    solsys_list_free(events);
}

TEST(CInterface, PassesAreThoseOfTheTypedLayer) {
    const Handles h;
    const std::string sets =
        "ISS\n"
        "1 25544U 98067A   23055.54791667  .00016717  00000-0  10270-3 0  9007\n"
        "2 25544  51.6400 208.9163 0006317  69.9862  25.2906 15.50000000 00009\n";
    auto opened = sky::Model::open();
    const sky::Span span{sky::Instant::from_utc({2460000, 0}),
                         sky::Instant::from_utc({2460002, 0})};
    const auto list = sky::parse_satellites(sets);
    ASSERT_EQ(list.satellites.size(), 1U);
    sky::Site oslo = *sky::find_city("Oslo");
    const auto expected = sky::passes(*opened, oslo, list.satellites[0], span);
    solsys_site site{};
    site.size = sizeof site;
    ASSERT_EQ(solsys_find_city("Oslo", &site), SOLSYS_OK);
    solsys_list *satellites = nullptr, *found = nullptr;
    ASSERT_EQ(solsys_parse_satellites(sets.c_str(), &satellites), SOLSYS_OK);
    ASSERT_EQ(solsys_passes(h.model, &site, satellites, 0, NAN, {2460000, 0}, {2460002, 0}, 0,
                            0, nullptr, &found),
              SOLSYS_OK)
        << solsys_last_message();
    ASSERT_EQ(solsys_list_count(found), expected.size());
    ASSERT_GT(expected.size(), 5U);
    solsys_pass pass{};
    pass.size = sizeof pass;
    ASSERT_EQ(solsys_get_pass(found, 3, &pass), SOLSYS_OK);
    EXPECT_EQ(pass.culmination.altitude_deg, expected[3].culmination.altitude_deg);
    EXPECT_EQ(typed(pass.rise.at), expected[3].rise->at);
    solsys_list_free(found), solsys_list_free(satellites);
}

TEST(CInterface, SaysWhatWasWrong) {
    const Handles h;
    solsys_body* body = nullptr;
    solsys_site site{};
    solsys_place place;
    double state[6];
    const solsys_instant nowhen{0, NAN};
    const solsys_body* const none[] = {nullptr};
    solsys_rising no_size{};
    solsys_model* model = nullptr;
    const auto expect = [](solsys_status status, solsys_status expected, const char* says) {
        EXPECT_EQ(status, expected) << solsys_last_message();
        EXPECT_NE(std::string(solsys_last_message()).find(says), std::string::npos)
            << solsys_last_message();
    };
    expect(solsys_find_body("jupitre", nullptr, &body), SOLSYS_NOT_FOUND, "upiter");
    EXPECT_EQ(body, nullptr);
    expect(solsys_find_body(nullptr, nullptr, &body), SOLSYS_BAD_ARGUMENT, "name: null");
    expect(solsys_find_city("Oslo", &site), SOLSYS_BAD_ARGUMENT, "size");
    expect(solsys_model_open("/no/such/file", &model), SOLSYS_NOT_FOUND, "/no/such/file");
    expect(solsys_model_move_to(h.model, nowhen), SOLSYS_BAD_ARGUMENT, "not finite");
    expect(solsys_model_set_reduction(h.model, 7), SOLSYS_BAD_ARGUMENT, "classic");
    expect(solsys_apparent_places(h.model, none, 1, &h.from, 1, &place, 1, nullptr, nullptr),
           SOLSYS_BAD_ARGUMENT, "bodies");
    expect(solsys_apparent_places(h.model, none, SIZE_MAX, &h.from, 2, &place, 1, nullptr,
                                  nullptr),
           SOLSYS_BAD_ARGUMENT, "counts");
    expect(solsys_get_rising(nullptr, 0, &no_size), SOLSYS_BAD_ARGUMENT, "list: null");
    solsys_list* planets = nullptr;
    expect(solsys_find_bodies("planets", nullptr, &planets), SOLSYS_OK, "");
    expect(solsys_get_rising(planets, 0, &no_size), SOLSYS_BAD_ARGUMENT, "another kind");
    expect(solsys_get_body(planets, 8, &body), SOLSYS_NOT_FOUND, "8");
    solsys_list_free(planets);
    ASSERT_EQ(solsys_model_move_to(h.model, {2451545 + 4000 * 365, 0}), SOLSYS_OK);
    expect(solsys_heliocentric_state(h.model, h.mars, state), SOLSYS_NOT_COMPUTABLE, "Mars");
    // Each thread has a message of its own.
    std::thread([] { EXPECT_STREQ(solsys_last_message(), ""); }).join();
    EXPECT_STRNE(solsys_last_message(), "");
}

TEST(CInterface, CutsTextsBetweenCharacters) {
    solsys_body* body = nullptr;
    ASSERT_EQ(solsys_body_from_elements(
                  "name=Bo\u00f6tes,epoch=jd:2459800.5,a=2,e=0,i=0,node=0,peri=0,M=0", &body),
              SOLSYS_OK)
        << solsys_last_message();
    char name[8];
    const char* expected[] = {nullptr, "", "B", "Bo", "Bo", "Bo\u00f6", "Bo\u00f6t"};
    for (size_t size = 1; size < std::size(expected); ++size) {
        ASSERT_EQ(solsys_body_name(body, name, size), SOLSYS_OK);
        EXPECT_STREQ(name, expected[size]);
    }
    EXPECT_EQ(solsys_body_name(body, name, 0), SOLSYS_BAD_ARGUMENT);
    solsys_body_free(body);
}

}  // namespace
