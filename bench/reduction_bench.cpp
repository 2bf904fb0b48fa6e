// What the modern reduction costs beside the classic one: an instant and ten apparent places on
// an ephemeris file, at instants that follow one another and at random ones; and its series.
#include <benchmark/benchmark.h>

#include <memory>
#include <random>

#include "frames/pole_nodes.h"
#include "solsys/de_ephemeris.h"
#include "solsys/solar_system.h"

namespace {

constexpr int kBodies[] = {10, 301, 1, 2, 4, 5, 6, 7, 8, 9};

std::unique_ptr<CSWSolSys> make_model(SolsysReduction reduction) {
    DE_Ephemeris::clear();
    auto model = std::make_unique<CSWSolSys>();
    model->InitSys(SOLSYS_DE405);
    model->SetReduction(reduction);
    OBSERVER site;
    site.kind = LOCATION_SURFACE;
    site.body_type = SSO_PLNT, site.body_number = 3;
    site.location[1] = 0.1, site.location[2] = 0.9;
    model->SetObserver(&site);
    return model;
}

// range(0): 0 classic, 1 modern; range(1): 0 ten minutes on at every call, 1 anywhere.
void TenBodies(benchmark::State& state) {
    const auto model = make_model(state.range(0) != 0 ? REDUCTION_MODERN : REDUCTION_CLASSIC);
    std::mt19937_64 random(1);
    int step = 0;
    double place[3];
    for (auto _ : state) {
        if (state.range(1) != 0) step = static_cast<int>(random() % 4000000);
        model->UpdateSys(2440000 + step / 144, (step % 144) / 144.0);
        for (const int body : kBodies) {
            benchmark::DoNotOptimize(
                model->GetRADecVis({body > 100 ? SSO_MOON : SSO_PLNT, body}, place, 0.0));
        }
        step = step < 4000000 ? step + 1 : 0;
    }
}
BENCHMARK(TenBodies)->ArgsProduct({{0, 1}, {0, 1}})->ArgNames({"modern", "random"});

void Series(benchmark::State& state) {
    int day = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(solsys::pole_series({2440000 + (day++ % 30000), 0.3}));
}
BENCHMARK(Series);

void Nodes(benchmark::State& state) {
    solsys::PoleNodes nodes;
    int step = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(nodes.at({2440000 + step / 144, (step % 144) / 144.0}));
        step = step < 4000000 ? step + 1 : 0;
    }
}
BENCHMARK(Nodes);

}  // namespace
