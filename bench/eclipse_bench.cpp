// Eclipses of centuries and millennia, one map, one site.
#include <benchmark/benchmark.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "solsys/de_ephemeris.h"
#include "solsys/eclipses.h"

namespace {

constexpr double k1901 = 2415385.5, k2101 = 2488434.5;
constexpr double k1960 = 2436934.5, k2060 = 2473459.5;
constexpr double kMinus1999 = 990922.5, k3001 = 2817152.5;

// On the DE file, or on the built-in theories.
void open(CSWSolSys& model, bool file, benchmark::State& state) {
    DE_Ephemeris::clear();
    model.InitSys(file ? SOLSYS_DE405 : "");
    if (model.HasEphemeris() != file) state.SkipWithError("no DE405 file");
}

void search(benchmark::State& state, bool file, bool precise, double from, double to) {
    CSWSolSys model;
    open(model, file, state);
    CSWEclipses eclipses(&model);
    eclipses.SetPrecise(precise);
    int found = 0;
    for ([[maybe_unused]] auto _ : state) {
        eclipses.InitSearch(from, to);
        found = eclipses.SearchEclipses(static_cast<short>(state.range(0)));
    }
    state.counters["found"] = found;
}

// Argument: 0 solar, 1 lunar.
void CenturyOnFile(benchmark::State& s) { search(s, true, true, k1960, k2060); }
BENCHMARK(CenturyOnFile)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
void CenturyOnFileClassic(benchmark::State& s) { search(s, true, false, k1960, k2060); }
BENCHMARK(CenturyOnFileClassic)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
void TwoCenturiesOnTheory(benchmark::State& s) { search(s, false, true, k1901, k2101); }
BENCHMARK(TwoCenturiesOnTheory)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
void CanonOnTheory(benchmark::State& s) { search(s, false, true, kMinus1999, k3001); }
BENCHMARK(CanonOnTheory)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);

// Every curve of one map, the path minute by minute.
void Map(benchmark::State& state) {
    CSWSolSys model;
    open(model, false, state);
    CSWEclipses eclipses(&model);
    eclipses.SetPrecise(true);
    ECLIPSE e;
    eclipses.InitSearch(2451398, 2451404);
    eclipses.SearchNext(&e, ECLIPSE_SOLAR);
    std::vector<EclipseCurve> curves;
    std::vector<EclipsePathPoint> path;
    EclipsePathPoint longest;
    for ([[maybe_unused]] auto _ : state) {
        eclipses.GetRiseSetCurves(&e, &curves);
        eclipses.GetMaximumAtHorizon(&e, &curves);
        eclipses.GetPenumbralLimits(&e, &curves);
        eclipses.GetIsochrones(&e, 30, &curves);
        for (const double magnitude : {0.2, 0.4, 0.6, 0.8})
            eclipses.GetMagnitudeCurve(&e, magnitude, &curves);
        eclipses.GetUmbralLimits(&e, &curves);
        eclipses.GetCentralLine(&e, &curves);
        eclipses.GetCentralPath(&e, 60, &path);
        eclipses.GetGreatestDuration(&e, &longest);
    }
}
BENCHMARK(Map)->Unit(benchmark::kMillisecond);

void LocalCircumstances(benchmark::State& state) {
    CSWSolSys model;
    open(model, false, state);
    CSWEclipses eclipses(&model);
    eclipses.SetPrecise(true);
    ECLIPSE e, local;
    eclipses.InitSearch(2451398, 2451404);
    eclipses.SearchNext(&e, ECLIPSE_SOLAR);
    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[2] = 0.85;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(
            eclipses.EclipseParamsForLocation(&e, ECLIPSE_SOLAR, &local, &site));
}
BENCHMARK(LocalCircumstances)->Unit(benchmark::kMicrosecond);

// From Stop in another thread to the end of the search.
void StoppedCanon(benchmark::State& state) {
    CSWSolSys model;
    open(model, false, state);
    CSWEclipses eclipses(&model);
    eclipses.SetPrecise(true);
    for ([[maybe_unused]] auto _ : state) {
        eclipses.InitSearch(kMinus1999, k3001);
        std::atomic<bool> running{false};
        std::chrono::steady_clock::time_point ended;
        std::thread search([&] {
            running = true;
            eclipses.SearchEclipses(ECLIPSE_SOLAR);
            ended = std::chrono::steady_clock::now();
        });
        while (!running) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        const auto asked = std::chrono::steady_clock::now();
        eclipses.Stop();
        search.join();
        state.SetIterationTime(std::chrono::duration<double>(ended - asked).count());
    }
}
BENCHMARK(StoppedCanon)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace
