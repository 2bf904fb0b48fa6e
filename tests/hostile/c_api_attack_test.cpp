// Every function of the C interface with nulls, NaN, absurd numbers, unset sizes, texts that
// are none and counts that do not fit: an answer in bounded time, and no byte beyond what was
// given.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>
#include <string_view>
#include <vector>

#include "solsys/c_api.h"

namespace {

constexpr size_t kRoom = 64;  // values behind every pointer
constexpr const char* kSet =
    "1 25544U 98067A   23055.54791667  .00016717  00000-0  10270-3 0  9007\n"
    "2 25544  51.6400 208.9163 0006317  69.9862  25.2906 15.50000000 00009\n";

std::mt19937 draw_from(2026);
size_t pick(size_t n) { return draw_from() % n; }

// What lives as long as the test.
struct World {
    std::vector<solsys_model*> models;
    std::vector<solsys_body*> bodies;
    std::vector<solsys_list*> lists;
    std::vector<solsys_control*> controls;
};
World world;

template <class T>
T one_of(std::initializer_list<T> all) {
    return all.begin()[pick(all.size())];
}
double number() {
    return one_of({0.0, -0.0, 1.0, -1.0, 0.5, 89.9, 180.0, 1e9, -1e300, 2451545.0, 2460000.5,
                   static_cast<double>(INFINITY), static_cast<double>(NAN), 4.9e-324});
}
int32_t integer() {
    return one_of({0, 1, 2, 3, 9, 32, 33, 87, 88, -1, 2451545, INT_MAX, INT_MIN});
}

// Arguments by their types. Memory is made anew for each, of just its size, so that a sanitizer
// sees what goes beyond it.
std::vector<std::shared_ptr<void>> held;
template <class T>
T* room(size_t count) {
    std::shared_ptr<T[]> made(new T[count]());
    held.push_back(made);
    return made.get();
}
template <class T>
T draw();

void fill(double& x) { x = number(); }
void fill(solsys_instant& t) {
    // Spans between these are short, or beyond every ephemeris.
    t = {one_of({2460000, 2460010, 2460400, 2460401, INT_MAX, INT_MIN}), 0.25};
    if (pick(8) == 0)
        t.fraction = one_of({-0.5, 1e-300, -1e300, 1e18, static_cast<double>(INFINITY),
                             static_cast<double>(NAN)});
}
template <class T>
void fill(T& x) {
    if constexpr (std::is_pointer_v<T>) {
        x = draw<T>();
    } else if constexpr (std::is_integral_v<T>) {
        x = static_cast<T>(integer());
    } else {
        // Records: every double of them, and a size that is mostly right.
        for (size_t at = 0; at + sizeof(double) <= sizeof(T); at += sizeof(double)) {
            const double d = number();
            std::memcpy(reinterpret_cast<unsigned char*>(&x) + at, &d, sizeof d);
        }
        if constexpr (requires { x.size; }) x.size = pick(8) == 0 ? pick(sizeof(T)) : sizeof(T);
        if constexpr (requires { x.zone; })
            if (pick(2) == 0) {
                x = T{};
                x.size = sizeof x;
                x.latitude_deg = 60, x.longitude_deg = 200;
            }
    }
}

// Half of them among the first, which are known to be good: how many the attack has added by
// then depends on the speed of the machine.
template <class T>
T handle(const std::vector<T>& all) {
    constexpr size_t kFirst = 9;  // lists of every kind
    if (pick(8) == 0 || all.empty()) return nullptr;
    return all[pick(pick(2) == 0 ? std::min(kFirst, all.size()) : all.size())];
}
template <class T>
T draw() {
    using Held = std::remove_cv_t<std::remove_pointer_t<T>>;
    if constexpr (std::is_same_v<Held, solsys_model>) {
        return handle(world.models);
    } else if constexpr (std::is_same_v<Held, solsys_body>) {
        return handle(world.bodies);
    } else if constexpr (std::is_same_v<Held, solsys_list>) {
        return handle(world.lists);
    } else if constexpr (std::is_same_v<Held, solsys_control>) {
        return handle(world.controls);
    } else if constexpr (std::is_same_v<T, const char*>) {
        return one_of<const char*>({nullptr, "", "moon", "planets", "Oslo", "2026-01-01",
                                    "\xff\xfe\x80", "51.5,-0.1", "1e400,NaN", "UTC",
                                    "epoch=jd:2459800.5,q=1,e=1e308,i=NaN,tp=jd:0",
                                    "epoch=jd:2459800.5,a=2,e=0.1,i=1,node=0,peri=0,M=0",
                                    "%s%n", "/dev/zero", ".", "build/de405/de405.bin", kSet});
    } else if constexpr (std::is_same_v<T, size_t>) {
        return one_of<size_t>({0, 1, 2, 4, 6, 12, 24, kRoom});
    } else if constexpr (std::is_pointer_v<T> && std::is_function_v<Held>) {
        return pick(2) == 0 ? nullptr : T([](double, void*) {});
    } else if constexpr (std::is_same_v<T, void*>) {
        return nullptr;
    } else if constexpr (std::is_pointer_v<T>) {
        if (pick(8) == 0) return nullptr;
        Held* values = room<Held>(kRoom);
        for (size_t i = 0; i < kRoom; ++i) fill(values[i]);
        return values;
    } else {
        T value{};
        fill(value);
        return value;
    }
}

template <class T>
void keep(T** out, std::vector<T*>& all, void (*free)(T*)) {
    if (out == nullptr || *out == nullptr) return;
    if (all.size() < 200) {
        all.push_back(*out);
    } else {
        std::swap(all[pick(all.size())], *out);
        free(*out);
    }
}
void keep(solsys_model** out) { keep(out, world.models, solsys_model_free); }
void keep(solsys_body** out) { keep(out, world.bodies, solsys_body_free); }
void keep(solsys_list** out) { keep(out, world.lists, solsys_list_free); }
void keep(solsys_control** out) { keep(out, world.controls, solsys_control_free); }
template <class T>
void keep(const T&) {}

// What a handle's way out starts as: nothing, to tell what came out.
template <class T>
constexpr bool kWayOut = std::is_pointer_v<T>&& std::is_pointer_v<std::remove_pointer_t<T>> &&
                         !std::is_const_v<std::remove_pointer_t<std::remove_pointer_t<T>>>;

template <class... Args>
solsys_status attack(solsys_status (*function)(Args...)) {
    std::tuple<Args...> arguments{draw<Args>()...};
    std::apply(
        [](auto&... a) {
            (
                (void)[&] {
                    if constexpr (kWayOut<std::remove_reference_t<decltype(a)>>)
                        if (a != nullptr) *a = nullptr;
                }(),
                ...);
        },
        arguments);
    const solsys_status status = std::apply(function, arguments);
    EXPECT_EQ(status == SOLSYS_OK, solsys_last_message()[0] == '\0');
    std::apply([](auto... a) { (keep(a), ...); }, arguments);
    held.clear();
    return status;
}

#define CASE(f)                      \
    {                                \
#f, [] { return attack(f); } \
    }
const struct {
    const char* name;
    solsys_status (*run)();
} kFunctions[] = {
    CASE(solsys_now),
    CASE(solsys_instant_from_utc),
    CASE(solsys_instant_from_tt),
    CASE(solsys_parse_time),
    CASE(solsys_time_text),
    CASE(solsys_terrestrial_time),
    CASE(solsys_find_city),
    CASE(solsys_parse_site),
    CASE(solsys_find_body),
    CASE(solsys_find_bodies),
    CASE(solsys_get_body),
    CASE(solsys_body_from_elements),
    CASE(solsys_body_from_file),
    CASE(solsys_body_name),
    CASE(solsys_body_code),
    CASE(solsys_model_open),
    CASE(solsys_model_set_reduction),
    CASE(solsys_model_set_earth),
    CASE(solsys_model_observe_from),
    CASE(solsys_model_move_to),
    CASE(solsys_model_source),
    CASE(solsys_apparent_place),
    CASE(solsys_astrometric_place),
    CASE(solsys_heliocentric_state),
    CASE(solsys_horizontal_of),
    CASE(solsys_ecliptic_of),
    CASE(solsys_galactic_of),
    CASE(solsys_appearance_of),
    CASE(solsys_constellation_at),
    CASE(solsys_constellation_name),
    CASE(solsys_control_new),
    CASE(solsys_apparent_places),
    CASE(solsys_astrometric_places),
    CASE(solsys_heliocentric_states),
    CASE(solsys_magnitudes),
    CASE(solsys_horizontals),
    CASE(solsys_constellations),
    CASE(solsys_separations),
    CASE(solsys_horizon_of),
    CASE(solsys_risings),
    CASE(solsys_get_rising),
    CASE(solsys_passages),
    CASE(solsys_watched_risings),
    CASE(solsys_watched_passages),
    CASE(solsys_get_passage),
    CASE(solsys_conjunctions),
    CASE(solsys_get_conjunction),
    CASE(solsys_gatherings),
    CASE(solsys_get_gathering),
    CASE(solsys_find_eclipses),
    CASE(solsys_get_eclipse),
    CASE(solsys_local_eclipse_of),
    CASE(solsys_eclipse_map),
    CASE(solsys_get_map_curve),
    CASE(solsys_get_map_points),
    CASE(solsys_diary),
    CASE(solsys_get_diary_event),
    CASE(solsys_diary_kind_name),
    CASE(solsys_parse_satellites),
    CASE(solsys_read_satellites),
    CASE(solsys_get_satellite),
    CASE(solsys_satellite_at),
    CASE(solsys_passes),
    CASE(solsys_get_pass),
};
#undef CASE

// Lists with rows, which chance would seldom make.
void make_good_lists() {
    solsys_model* model = nullptr;
    solsys_body *moon = nullptr, *venus = nullptr;
    ASSERT_EQ(solsys_model_open(nullptr, &model), SOLSYS_OK);
    ASSERT_EQ(solsys_find_body("moon", nullptr, &moon), SOLSYS_OK);
    ASSERT_EQ(solsys_find_body("venus", nullptr, &venus), SOLSYS_OK);
    const solsys_body* both[] = {moon, venus};
    const solsys_instant from{2461250, 0}, to{2461300, 0};  // a solar eclipse is between
    solsys_site site{};
    site.size = sizeof site, site.latitude_deg = 60;
    const solsys_altitude horizon{};
    int32_t up = 0;
    solsys_list* list = nullptr;
    const auto add = [](solsys_status status, solsys_list*& made) {
        EXPECT_EQ(status, SOLSYS_OK);
        EXPECT_GT(solsys_list_count(made), 0U);
        world.lists.push_back(made);
        return made;
    };
    add(solsys_gatherings(model, both, 2, from, to, 10, nullptr, &list), list);
    add(solsys_conjunctions(model, moon, venus, from, to, 0, 10, nullptr, &list), list);
    solsys_list* const satellites = add(solsys_parse_satellites(kSet, &list), list);
    add(solsys_passes(model, &site, satellites, 0, -1, {2460000, 0}, {2460003, 0}, 0, 0,
                      nullptr, &list),
        list);
    solsys_list* const eclipses =
        add(solsys_find_eclipses(model, SOLSYS_SOLAR, from, to, nullptr, &list), list);
    add(solsys_eclipse_map(model, eclipses, 0, &list), list);
    add(solsys_diary(model, from, to, nullptr, 0, nullptr, &list), list);
    add(solsys_risings(model, &site, venus, from, {2461253, 0}, &list, &up), list);
    add(solsys_passages(model, &site, venus, &horizon, 1, from, {2461253, 0}, &list), list);
    world.models.push_back(model);
    world.bodies.insert(world.bodies.end(), {moon, venus});
}

TEST(CInterface, SurvivesEveryFunction) {
    make_good_lists();
    constexpr int kRounds = 3000;
    // Seconds of the processor: of a call, of all calls of a function.
    constexpr double kBound = 20, kEnough = 0.08;
    // No files of orbits or satellites are at hand.
    const auto reads = [](std::string_view name) {
        return name == "solsys_body_from_file" || name == "solsys_read_satellites";
    };
    std::vector<int> answered(std::size(kFunctions));
    std::vector<double> spent(std::size(kFunctions));
    for (int round = 0; round < kRounds; ++round)
        for (size_t i = 0; i < std::size(kFunctions); ++i) {
            const bool may_end = answered[i] > 0 || reads(kFunctions[i].name);
            if (spent[i] > kEnough && may_end) continue;
            const std::clock_t start = std::clock();
            answered[i] += kFunctions[i].run() == SOLSYS_OK;
            const double took = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
            ASSERT_LT(took, kBound) << kFunctions[i].name;
            spent[i] += took;
        }
    // An attack whose every call is refused at the door says nothing of what is behind it.
    for (size_t i = 0; i < std::size(kFunctions); ++i)
        EXPECT_TRUE(answered[i] > 0 || reads(kFunctions[i].name)) << kFunctions[i].name;
    solsys_model_free(nullptr), solsys_body_free(nullptr), solsys_list_free(nullptr);
    solsys_control_stop(nullptr), solsys_control_free(nullptr);
    EXPECT_EQ(solsys_list_count(nullptr), 0U);
    EXPECT_EQ(solsys_diary_kind(nullptr), 0);
    EXPECT_TRUE(solsys_c_api_version() > 0 && solsys_library_version()[0] != '\0');
    for (auto* list : world.lists) solsys_list_free(list);
    for (auto* body : world.bodies) solsys_body_free(body);
    for (auto* model : world.models) solsys_model_free(model);
    for (auto* control : world.controls) solsys_control_free(control);
}

}  // namespace
