// Searches of the diary, of conjunctions and of phenomena; the ratio to compare with is
// `DeState`.
#include <benchmark/benchmark.h>

#include "solsys/conjunctions.h"
#include "solsys/de_ephemeris.h"
#include "solsys/diary.h"
#include "solsys/sky/sky.h"

namespace {

constexpr double kStart = 2437000.5;  // 1960 March
constexpr double kYear = 365.25;

// Range 0: 0 the built-in theories, 1 the DE file.
void open(CSWSolSys& model, benchmark::State& state) {
    DE_Ephemeris::clear();
    model.InitSys(state.range(0) == 1 ? SOLSYS_DE405 : "");
    if (model.HasEphemeris() != (state.range(0) == 1)) state.SkipWithError("no DE405 file");
}

void DeState(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    double t = kStart;
    double out[6];
    for ([[maybe_unused]] auto _ : state) {
        model.SetTime(0, t += 1.0 / 64, false);
        model.GetHelVec2K({SSO_PLNT, 5}, 1, out);
        benchmark::DoNotOptimize(out);
        if (t > kStart + 30000) t = kStart;
    }
}
BENCHMARK(DeState)->Arg(1);

void Diary(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    CSkyDiaryEvents diary(&model);
    diary.ShowConjunctions(true);
    for ([[maybe_unused]] auto _ : state) {
        diary.InitSearch(nullptr, kStart, kStart + kYear * static_cast<double>(state.range(1)),
                         false);
        state.counters["events"] = diary.SearchAll();
    }
}
BENCHMARK(Diary)
    ->ArgNames({"file", "years"})
    ->Args({1, 1})
    ->Args({1, 99})
    ->Args({0, 1})
    ->Unit(benchmark::kMillisecond);

void MoonPhases(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    CSkyDiaryEvents diary(&model);
    for ([[maybe_unused]] auto _ : state) {
        diary.InitSearch(nullptr, kStart, kStart + 99.6 * kYear, false);
        state.counters["events"] = diary.SearchMoonPhases();
    }
}
BENCHMARK(MoonPhases)->Arg(1)->Unit(benchmark::kMillisecond);

void VenusJupiter(benchmark::State& state) {
    CSWSolSys model;
    open(model, state);
    CSWConjunc search(&model);
    std::vector<SSO_ID> pair{{SSO_PLNT, 2}, {SSO_PLNT, 5}};
    for ([[maybe_unused]] auto _ : state) {
        search.InitSearch(kStart, kStart + 99.6 * kYear, &pair, 0, false);
        state.counters["events"] = search.SearchAll();
    }
}
BENCHMARK(VenusJupiter)->Arg(1)->Unit(benchmark::kMillisecond);

void GalileanPhenomena(benchmark::State& state) {
    CSWSolSys classic;
    open(classic, state);
    solsys::sky::Model model(classic);
    const auto from = solsys::sky::Instant::from_utc(2458484.5);
    const solsys::sky::Body jupiter(SSO_ID(SSO_PLNT, 5));
    for ([[maybe_unused]] auto _ : state)
        state.counters["events"] = static_cast<double>(
            satellite_phenomena(model, jupiter, {from, from.plus_days(365)}).size());
}
BENCHMARK(GalileanPhenomena)->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

}  // namespace
