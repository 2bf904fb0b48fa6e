// A year of risings, transits and settings at a site.
#include <benchmark/benchmark.h>

#include "core/constants.h"
#include "solsys/de_ephemeris.h"
#include "solsys/visibility.h"

namespace {

constexpr double kStart = 2453371.5;  // 2005 January 1
constexpr double kYear = 365;

const SSO_ID kBodies[] = {{SSO_PLNT, 10}, {SSO_MOON, 301}, {SSO_PLNT, 1}, {SSO_PLNT, 2},
                          {SSO_PLNT, 4},  {SSO_PLNT, 5},   {SSO_PLNT, 6}, {SSO_PLNT, 7},
                          {SSO_PLNT, 8},  {SSO_PLNT, 9}};

OBSERVER site(double latitude_deg) {
    OBSERVER o;
    o.kind = LOCATION_SURFACE;
    o.body_type = SSO_PLNT, o.body_number = 3;
    o.location[0] = 0.05 / solsys::kAuKm;
    o.location[2] = latitude_deg * 0.017453292519943295;
    return o;
}

// Range 0: 0 the built-in theories, 1 the DE file.
void open(CSWSolSys& model, benchmark::State& state) {
    DE_Ephemeris::clear();
    model.InitSys(state.range(0) == 1 ? SOLSYS_DE405 : "");
    if (model.HasEphemeris() != (state.range(0) == 1)) state.SkipWithError("no DE405 file");
}

// The Sun with its twilights, the Moon, seven planets and Pluto.
void YearOfAll(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    CSWVisibility visibility(&model);
    OBSERVER observer = site(static_cast<double>(state.range(1)));
    int days = 0;
    for ([[maybe_unused]] auto _ : state) {
        days = 0;
        for (const SSO_ID& body : kBodies) {
            visibility.InitSearch(kStart, kStart + kYear, body, &observer);
            days += visibility.SearchVisibility();
        }
    }
    state.counters["days"] = days;
}
BENCHMARK(YearOfAll)
    ->ArgNames({"file", "latitude"})
    ->Args({1, 51})
    ->Args({1, 0})
    ->Args({1, 70})
    ->Args({0, 51})
    ->Unit(benchmark::kMillisecond);

// Every rising and setting of the same bodies, none missed: to be compared with YearOfAll.
void YearOfCrossings(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    CSWVisibility visibility(&model);
    OBSERVER observer = site(static_cast<double>(state.range(1)));
    int crossings = 0;
    for ([[maybe_unused]] auto _ : state) {
        crossings = 0;
        for (const SSO_ID& body : kBodies) {
            visibility.InitSearch(kStart, kStart + kYear, body, &observer);
            const bool limb = body.type == SSO_MOON || body.number == 10;
            crossings += visibility.SearchCrossings(-0.0142, limb);
        }
    }
    state.counters["crossings"] = crossings;
}
BENCHMARK(YearOfCrossings)
    ->ArgNames({"file", "latitude"})
    ->Args({1, 51})
    ->Args({1, 0})
    ->Args({1, 70})
    ->Args({1, 90})
    ->Args({0, 51})
    ->Unit(benchmark::kMillisecond);

void YearOfOne(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    CSWVisibility visibility(&model);
    OBSERVER observer = site(51);
    for ([[maybe_unused]] auto _ : state) {
        visibility.InitSearch(kStart, kStart + kYear, kBodies[state.range(1)], &observer);
        benchmark::DoNotOptimize(visibility.SearchVisibility());
    }
}
BENCHMARK(YearOfOne)
    ->ArgNames({"file", "body"})
    ->ArgsProduct({{1}, {0, 1, 2, 5, 9}})
    ->Unit(benchmark::kMillisecond);

}  // namespace
