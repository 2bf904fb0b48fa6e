// The figures of docs/performance.md: run on a quiet machine, it prints the document.
//
// Every figure is the shortest of several runs, in processor time of this thread, and stands
// beside the same figure as a multiple of one state of a DE file, which is measured right
// before and after it: on another machine, or a loaded one, the multiples stay.
#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>
#include <new>
#include <random>
#include <thread>
#include <vector>

#include "core/constants.h"
#include "ephemeris/integrator/integrated_motion.h"
#include "solsys/conjunctions.h"
#include "solsys/de_ephemeris.h"
#include "solsys/diary.h"
#include "solsys/eclipses.h"
#include "solsys/element_sets.h"
#include "solsys/sky/batch.h"
#include "solsys/sky/sky.h"
#include "solsys/visibility.h"

namespace {
std::atomic<long> allocations{0};
}  // namespace

void* operator new(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size > 0 ? size : 1)) return p;
    throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

constexpr double kStart = 2437000.5;  // 1960 March
constexpr double kYear = 365.25, kCentury = 99.6 * kYear;
const SSO_ID kTenBodies[] = {{SSO_PLNT, 10}, {SSO_MOON, 301}, {SSO_PLNT, 1}, {SSO_PLNT, 2},
                             {SSO_PLNT, 4},  {SSO_PLNT, 5},   {SSO_PLNT, 6}, {SSO_PLNT, 7},
                             {SSO_PLNT, 8},  {SSO_PLNT, 9}};

double processor_seconds() {
    return static_cast<double>(std::clock()) / static_cast<double>(CLOCKS_PER_SEC);
}

// Seconds of the shortest run, of three at least and of half a second.
double shortest(const std::function<void()>& run) {
    double least = HUGE_VAL, spent = 0;
    for (int i = 0; i < 3 || spent < 0.5; ++i) {
        const double begun = processor_seconds();
        run();
        const double seconds = processor_seconds() - begun;
        least = std::min(least, seconds);
        spent += seconds;
    }
    return least;
}

// Seconds of one state of a planet, with velocity, at ever new instants.
double de_state_seconds() {
    constexpr int kStates = 20'000;
    DE_EvalState state;
    double out[6], sum = 0;
    const double seconds = shortest([&] {
        for (int i = 0; i < kStates; ++i) {
            DE_Ephemeris::getState(state, 2437000, 1.7 * i, 5, 1, out);
            sum += out[0];
        }
    });
    if (!(sum < HUGE_VAL)) std::abort();
    return seconds / kStates;
}

// The processor's clock [GHz], by a chain of 64-bit products, each of which waits three cycles
// for the one before (on x86-64 processors since 2008).
double clock_ghz() {
    constexpr int kProducts = 20'000'000;
    volatile unsigned long long odd = 3;
    unsigned long long x = odd, factor = odd;
    const double seconds = shortest([&] {
        for (int i = 0; i < kProducts; ++i) x *= factor;
        odd = x;
    });
    return 3e-9 * kProducts / seconds;
}

struct Case {
    const char* name;
    bool file;
    int repeats;                          // of what `run` does inside, for the figure of one
    double aim_seconds;                   // 0: none
    std::function<long(CSWSolSys&)> run;  // answers how much it found
};

const char* unit_of(double seconds) {
    return seconds < 1e-6 ? "ns" : seconds < 1e-3 ? "µs" : seconds < 1 ? "ms" : "s";
}
double in_unit(double seconds) {
    return seconds * (seconds < 1e-6 ? 1e9 : seconds < 1e-3 ? 1e6 : seconds < 1 ? 1e3 : 1);
}

void print_figure(double seconds) {
    std::printf(" %.3g %s |", in_unit(seconds), unit_of(seconds));
}

void print_case(const Case& c) {
    DE_Ephemeris::clear();
    DE_Ephemeris::open(SOLSYS_DE405);
    const double before = de_state_seconds();
    CSWSolSys model;
    model.UseEphemeris(c.file);
    if (!model.InitSys(SOLSYS_DE405) || model.HasEphemeris() != c.file) std::abort();
    long found = 0, allocated = 0;
    const double seconds = shortest([&] {
                               const long first = allocations;
                               found = c.run(model);
                               allocated = allocations - first;
                           }) /
                           c.repeats;
    const double unit = std::min(before, de_state_seconds());
    std::printf("| %s | %s |", c.name, c.file ? "DE405" : "theories");
    print_figure(seconds);
    std::printf(" %.3g |", seconds / unit);
    c.aim_seconds > 0 ? print_figure(c.aim_seconds) : static_cast<void>(std::printf(" |"));
    std::printf(" %ld | %.1f |\n", found,
                found > 0 ? static_cast<double>(allocated) / static_cast<double>(found) : 0.0);
    std::fflush(stdout);
}

OBSERVER site(double latitude_deg) {
    OBSERVER o;
    o.kind = LOCATION_SURFACE;
    o.body_type = SSO_PLNT, o.body_number = 3;
    o.location[0] = 0.05 / solsys::kAuKm;
    o.location[2] = latitude_deg * 0.017453292519943295;
    return o;
}

constexpr int kPlaces = 200;
long ten_places(CSWSolSys& model) {
    OBSERVER here = site(51.5);
    model.SetObserver(&here);
    double place[3];
    for (int i = 0; i < kPlaces; ++i) {
        model.UpdateSys(2440000 + i / 144, (i % 144) / 144.0);
        for (const SSO_ID& body : kTenBodies)
            if (!model.GetRADecVis(body, place, 0)) std::abort();
    }
    return 0;
}

template <long run(CSWSolSys&)>
long modern(CSWSolSys& model) {
    model.SetReduction(REDUCTION_MODERN);
    return run(model);
}

// Half an hour apart, or over a century.
constexpr int kBatch = 20'000;
const std::vector<solsys::sky::Instant>& batch_of_instants(bool sorted) {
    using solsys::sky::Instant;
    static const auto both = [] {
        std::array<std::vector<Instant>, 2> all;
        std::mt19937_64 random(405);
        std::uniform_real_distribution<double> jd(2436912.5, 2473487.5);
        for (int i = 0; i < kBatch; ++i) {
            all[1].push_back(Instant::from_utc({2451545, 0}).plus_days(i / 48.0));
            all[0].push_back(Instant::from_utc(jd(random)));
        }
        return all;
    }();
    return both[sorted ? 1 : 0];
}

template <int kBody, bool kSorted>
long batch_of_states(CSWSolSys&) {
    static std::vector<solsys::sky::StateVector> out(kBatch);
    return static_cast<long>(*solsys::sky::file_states(kBody, batch_of_instants(kSorted), out));
}

template <bool kSorted>
long batch_of_places(CSWSolSys& classic) {
    classic.SetReduction(REDUCTION_MODERN);
    solsys::sky::Model model(classic);
    static const auto bodies = *solsys::sky::find_bodies("all");
    static std::vector<solsys::sky::Place> out(bodies.size() * kBatch);
    return static_cast<long>(*apparent_places(model, bodies, batch_of_instants(kSorted), out));
}

// A catalogue of near-earth element sets at an instant, its whole and one by one.
constexpr int kSets = 20'000;
TLERecord element_set(int k) {
    TLERecord set;
    set.epochDay = 2460000, set.epochFraction = 0.5;
    set.meanMotion = 13 + k % 100 * 0.025, set.eccentricity = 1e-3 + k % 7 * 1e-3;
    set.inclination = 30 + k % 69, set.node = k % 360, set.perigee = k * 7 % 360;
    set.meanAnomaly = k * 13 % 360, set.bstar = 1e-4;
    return set;
}
long element_sets(CSWSolSys&) {
    static TLECatalogue sets = [] {
        TLECatalogue all;
        for (int k = 0; k < kSets; ++k) all.Add(element_set(k));
        return all;
    }();
    static std::vector<double> states(std::size_t{kSets} * 6);
    static std::vector<unsigned char> status(kSets);
    const int day = 2460000;
    const double fraction = 0.75;
    sets.GetStates(&day, &fraction, 1, states.data(), status.data());
    return std::count(status.begin(), status.end(), TLE_OK);
}

long prescribed_risings(CSWSolSys& model) {
    CSWVisibility visibility(&model);
    OBSERVER here = site(51.5);
    long days = 0;
    for (const SSO_ID& body : kTenBodies) {
        visibility.InitSearch(kStart, kStart + kYear, body, &here);
        days += visibility.SearchVisibility();
    }
    return days;
}

// The Sun with its three twilights.
long certified_risings(CSWSolSys& model) {
    CSWVisibility visibility(&model);
    OBSERVER here = site(51.5);
    long crossings = 0;
    for (const SSO_ID& body : kTenBodies) {
        visibility.InitSearch(kStart, kStart + kYear, body, &here);
        const bool sun = body == SSO_ID(SSO_PLNT, 10);
        crossings += visibility.SearchCrossings(-0.0099, sun || body.type == SSO_MOON);
        for (const double degrees : {-6.0, -12.0, -18.0})
            if (sun) crossings += visibility.SearchCrossings(degrees * 0.01745329252, false);
    }
    return crossings;
}

template <double kDays>
long whole_diary(CSWSolSys& model) {
    CSkyDiaryEvents diary(&model);
    diary.ShowConjunctions(true);
    diary.InitSearch(nullptr, kStart, kStart + kDays, false);
    return diary.SearchAll();
}

long moon_quarters(CSWSolSys& model) {
    CSkyDiaryEvents diary(&model);
    diary.InitSearch(nullptr, kStart, kStart + kCentury, false);
    return diary.SearchMoonPhases();
}

long venus_and_jupiter(CSWSolSys& model) {
    CSWConjunc search(&model);
    std::vector<SSO_ID> pair{{SSO_PLNT, 2}, {SSO_PLNT, 5}};
    search.InitSearch(kStart, kStart + kCentury, &pair, 0, false);
    return search.SearchAll();
}

long galilean_phenomena(CSWSolSys& classic) {
    solsys::sky::Model model(classic);
    const auto from = solsys::sky::Instant::from_utc(2458484.5);
    const solsys::sky::Body jupiter(SSO_ID(SSO_PLNT, 5));
    return static_cast<long>(
        satellite_phenomena(model, jupiter, {from, from.plus_days(365)}).size());
}

long solar_eclipses(CSWSolSys& model) {
    CSWEclipses eclipses(&model);
    eclipses.SetPrecise(true);
    eclipses.InitSearch(kStart, kStart + kCentury);
    ECLIPSE eclipse;
    long found = 0;
    while (eclipses.SearchNext(&eclipse, ECLIPSE_SOLAR)) ++found;
    return found;
}

// A minor planet over a century; the first of a process pays for the perturbing ones too.
long century_of_motion(std::shared_ptr<solsys::Perturbers> perturbers) {
    solsys::IntegratedMotion body(std::move(perturbers), solsys::kTheSun, {2436935, 0.0},
                                  {{2.1, -0.5, 0.3}, {0.002, 0.0098, 0.0041}}, {});
    solsys::State end{};
    if (!body.state({2436935 + 36500, 0.0}, end, {})) std::abort();
    return static_cast<long>(body.steps());
}
long first_motion(CSWSolSys& model) {
    return century_of_motion(std::make_shared<solsys::Perturbers>(model.HasEphemeris()));
}
long another_motion(CSWSolSys&) {
    static const auto shared = std::make_shared<solsys::Perturbers>(true);
    return century_of_motion(shared);
}

// Processor time that a search takes after another thread has stopped it [s], the longest of
// ten.
double stopping_seconds() {
    CSWSolSys model;
    model.InitSys(SOLSYS_DE405);
    CSkyDiaryEvents diary(&model);
    diary.ShowConjunctions(true);
    double longest = 0;
    for (int i = 0; i < 10; ++i) {
        diary.InitSearch(nullptr, kStart, kStart + kCentury, false);
        double stopped = 0;
        std::thread other([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20 + 50 * i));
            stopped = processor_seconds();
            diary.Stop();
        });
        diary.SearchAll();
        const double ended = processor_seconds();
        other.join();
        longest = std::max(longest, ended - stopped);
    }
    return longest;
}

const Case kCases[] = {
    {"ten apparent places of an instant, frames and observer", true, kPlaces, 0, ten_places},
    {"the same", false, kPlaces, 20e-6, ten_places},
    {"the same by the modern reduction", true, kPlaces, 0, modern<ten_places>},
    {"ten places by the modern reduction in a batch, each half hour", true, kBatch, 6e-6,
     batch_of_places<true>},
    {"the same at random instants of a century", true, kBatch, 25e-6, batch_of_places<false>},
    {"a state of Jupiter in a batch, each half hour", true, kBatch, 25e-9,
     batch_of_states<5, true>},
    {"the same at random instants of a century", true, kBatch, 45e-9,
     batch_of_states<5, false>},
    {"a state of the Earth in a batch, each half hour", true, kBatch, 25e-9,
     batch_of_states<3, true>},
    {"the same at random instants of a century", true, kBatch, 45e-9,
     batch_of_states<3, false>},
    {"a near-earth element set of a catalogue", true, kSets, 125e-9, element_sets},
    {"risings of ten bodies, a year, 51.5° N, by days", true, 1, 0, prescribed_risings},
    {"the same by the modern reduction", true, 1, 0, modern<prescribed_risings>},
    {"the same certified, with three twilights", true, 1, 45e-3, certified_risings},
    {"the same by the modern reduction", true, 1, 0, modern<certified_risings>},
    {"the same certified, with three twilights", false, 1, 0, certified_risings},
    {"diary of a year, conjunctions too", true, 1, 40e-3, whole_diary<kYear>},
    {"diary of a year, conjunctions too", false, 1, 400e-3, whole_diary<kYear>},
    {"diary of a century, conjunctions too", true, 1, 4, whole_diary<kCentury>},
    {"quarters of the Moon, a century", true, 1, 60e-3, moon_quarters},
    {"conjunctions of Venus and Jupiter, a century", true, 1, 15e-3, venus_and_jupiter},
    {"phenomena of the Galilean moons, a year", true, 1, 300e-3, galilean_phenomena},
    {"phenomena of the Galilean moons, a year", false, 1, 3, galilean_phenomena},
    {"solar eclipses, a century", true, 1, 0, solar_eclipses},
    {"a minor planet integrated, 1960-2060 (steps)", true, 1, 20e-3, first_motion},
    {"another one beside it (steps)", true, 1, 0, another_motion},
    {"a minor planet integrated, 1960-2060 (steps)", false, 1, 300e-3, first_motion},
};

}  // namespace

int main() {
    if (!DE_Ephemeris::open(SOLSYS_DE405)) return std::fprintf(stderr, "no DE405 file\n"), 1;
    std::printf(
        "# Performance\n\n"
        "The output of `bench/report` (`cmake --preset release -DSOLSYS_BUILD_BENCH=ON`). "
        "Each\n"
        "figure is the processor time of the shortest of several runs on one thread; beside "
        "it\n"
        "stands the same as a multiple of one state of a DE405 file, here %.0f ns. Aims are "
        "set\n"
        "for a machine that takes 4.5 µs for the first line, at 3.6 GHz: on one that is "
        "slower\n"
        "(here %.1f GHz), or shared, compare with that line. Allocations are those of the "
        "whole\n"
        "call for each thing found: the lists and the records in them, and what an "
        "integration\n"
        "keeps; searches have none for a sample.\n\n"
        "| what | source | time | DE states | aim | found | allocations for each |\n"
        "|---|---|---|---|---|---|---|\n",
        1e9 * de_state_seconds(), clock_ghz());
    for (const Case& c : kCases) print_case(c);
    std::printf(
        "\nThe diary of a century, stopped from another thread, takes %.2g ms of processor "
        "time\n"
        "more at the most, in ten trials; the aim is 50 ms.\n",
        1e3 * stopping_seconds());
}
