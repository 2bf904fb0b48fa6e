// A million and a half minor planets looked through for an instant and for a month. The orbits
// are made up: a main belt, and one in forty near the Earth.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "solsys/sky/minor_planet_survey.h"

namespace {

using namespace solsys::sky;

constexpr int kOrbits = 1'500'000;

const MinorPlanetSurvey& survey() {
    static const MinorPlanetSurvey orbits = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> unit(0, 1);
        MinorPlanetSurvey out;
        for (int k = 1; k <= kOrbits; ++k) {
            AsteroidRecord record;
            Elements& el = record.elements;
            const bool near = k % 40 == 0;
            el.q = near ? 0.8 + 2 * unit(random) : 2.1 + 1.2 * unit(random);
            el.e = near ? 0.2 + 0.5 * unit(random) : 0.3 * unit(random);
            el.i = 0.4 * unit(random) * unit(random);
            el.node = 6.28 * unit(random), el.peri = 6.28 * unit(random);
            el.M = 6.28 * unit(random);
            el.epochDay = 2460200, el.epochFraction = 0.5;
            record.H = static_cast<float>(near ? 18 + 8 * unit(random) : 13 + 6 * unit(random));
            record.G = 0.15F;
            out.add(Body(SSO_ID(SSO_ASTR, k), "", record));
        }
        return out;
    }();
    return orbits;
}

void OneDegree(benchmark::State& state) {
    Model model = std::move(*Model::open());
    model.move_to(*Instant::from_iso("2023-10-20T03:00:00Z"));
    survey();  // made outside of the clock
    std::size_t found = 0;
    for (auto _ : state)
        found = survey().in_field(model, {30, 12, 1, 99}, {0.002, state.range(0) != 0}).size();
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(OneDegree)->Arg(1)->Arg(0)->ArgName("two_body")->Unit(benchmark::kMillisecond);

void BrightestOfAll(benchmark::State& state) {
    Model model = std::move(*Model::open());
    model.move_to(*Instant::from_iso("2023-10-20T03:00:00Z"));
    survey();  // made outside of the clock
    std::size_t found = 0;
    for (auto _ : state)
        found = survey().in_field(model, {0, 0, 180, 12.5}, {0.002, true}).size();
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(BrightestOfAll)->Unit(benchmark::kMillisecond);

void NearTheEarthInAMonth(benchmark::State& state) {
    Model model = std::move(*Model::open());
    const Span month{*Instant::from_iso("2023-10-01"), *Instant::from_iso("2023-10-31")};
    survey();  // made outside of the clock
    std::size_t found = 0;
    for (auto _ : state)
        found = survey().near_earth(model, month, 0.02, {0.002, state.range(0) != 0}).size();
    state.counters["found"] = static_cast<double>(found);
}
BENCHMARK(NearTheEarthInAMonth)
    ->Arg(1)
    ->Arg(0)
    ->ArgName("two_body")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

}  // namespace
