// Many instants in one call, beside the single calls and the DE state: nanoseconds per item.
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "solsys/de_ephemeris.h"
#include "solsys/sky/batch.h"

namespace {

using namespace solsys::sky;

constexpr std::size_t kCount = 20000;

// Half an hour apart, in order or over a century.
std::vector<Instant> instants(bool sorted) {
    std::mt19937_64 draw(405);
    std::uniform_real_distribution<double> jd(2436912.5, 2473487.5);
    std::vector<Instant> all;
    for (std::size_t i = 0; i < kCount; ++i)
        all.push_back(sorted ? Instant::from_utc({2451545, 0}).plus_days(double(i) / 48)
                             : Instant::from_utc(jd(draw)));
    return all;
}

Model model_on_file(SolsysReduction reduction) {
    auto model = Model::open(SOLSYS_DE405);
    model->classic().SetReduction(reduction);
    return std::move(*model);
}

void per_item(benchmark::State& bench, std::size_t items) {
    bench.SetItemsProcessed(bench.iterations() * static_cast<std::int64_t>(items));
    bench.counters["ns_per_item"] = benchmark::Counter(
        static_cast<double>(items) * 1e-9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void single_state(benchmark::State& bench) {
    const Model model = model_on_file(REDUCTION_MODERN);
    const auto all = instants(bench.range(1) != 0);
    DE_EvalState state;
    StateVector out{};
    for (auto _ : bench)
        for (const Instant& t : all) {
            const JulianDate tdb = t.tdb();
            DE_Ephemeris::getState(state, tdb.day, tdb.fraction,
                                   static_cast<short>(bench.range(0)), 1, out.data());
            benchmark::DoNotOptimize(out);
        }
    per_item(bench, kCount);
}

void batch_state(benchmark::State& bench) {
    const Model model = model_on_file(REDUCTION_MODERN);
    const auto all = instants(bench.range(1) != 0);
    std::vector<StateVector> out(kCount);
    for (auto _ : bench) {
        file_states(static_cast<int>(bench.range(0)), all, out);
        benchmark::DoNotOptimize(out.data());
    }
    per_item(bench, kCount);
}

// Ten bodies: an item is an instant with all of them.
void ten_single_places(benchmark::State& bench) {
    Model model = model_on_file(bench.range(0) != 0 ? REDUCTION_MODERN : REDUCTION_CLASSIC);
    const auto all = instants(bench.range(1) != 0);
    const auto bodies = *find_bodies("all");
    for (auto _ : bench)
        for (const Instant& t : all) {
            model.move_to(t);
            for (const Body& body : bodies)
                benchmark::DoNotOptimize(apparent_place(model, body));
        }
    per_item(bench, kCount);
}

void ten_places(benchmark::State& bench) {
    Model model = model_on_file(bench.range(0) != 0 ? REDUCTION_MODERN : REDUCTION_CLASSIC);
    const auto all = instants(bench.range(1) != 0);
    const auto bodies = *find_bodies("all");
    std::vector<Place> out(bodies.size() * kCount);
    for (auto _ : bench) {
        apparent_places(model, bodies, all, out);
        benchmark::DoNotOptimize(out.data());
    }
    per_item(bench, kCount);
}

BENCHMARK(single_state)->ArgNames({"body", "sorted"})->ArgsProduct({{1, 3, 5, 10}, {1, 0}});
BENCHMARK(batch_state)->ArgNames({"body", "sorted"})->ArgsProduct({{1, 3, 5, 10}, {1, 0}});
BENCHMARK(ten_single_places)->ArgNames({"modern", "sorted"})->ArgsProduct({{0, 1}, {1, 0}});
BENCHMARK(ten_places)->ArgNames({"modern", "sorted"})->ArgsProduct({{0, 1}, {1, 0}});

}  // namespace
