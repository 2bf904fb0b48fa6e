// Integration of a minor planet among all massive bodies, beside one planet's state of a DE
// file as the measure of the machine.
#include <benchmark/benchmark.h>

#include <cmath>

#include "ephemeris/integrator/integrated_motion.h"

namespace {

constexpr int kFirstDay = 2436935, kDays = 36500;  // 1960 to 2059, within DE405
// About as Juno: a = 2.67 au, e = 0.26.
const solsys::State kStart{{2.1, -0.5, 0.3}, {0.002, 0.0098, 0.0041}};

void with_file(bool file) {
    DE_Ephemeris::clear();
    if (file) DE_Ephemeris::open(SOLSYS_DE405);
}

void DeState(benchmark::State& run) {
    with_file(true);
    DE_EvalState state;
    double out[6], t = 0;
    for (auto _ : run) {
        t = t < 30000 ? t + 17.3 : 0;
        DE_Ephemeris::getState(state, kFirstDay, t, 5, 1, out);
        benchmark::DoNotOptimize(out);
    }
    DE_Ephemeris::clear();
}
BENCHMARK(DeState);

// The first body of a process pays for the places of the perturbing ones, others share them.
void Century(benchmark::State& run, bool file, bool shared) {
    with_file(file);
    auto perturbers = std::make_shared<solsys::Perturbers>(true);
    double steps = 0;
    for (auto _ : run) {
        if (!shared) perturbers = std::make_shared<solsys::Perturbers>(true);
        solsys::IntegratedMotion body(perturbers, solsys::kTheSun, {kFirstDay, 0.0}, kStart,
                                      {});
        solsys::State end{};
        if (!body.state({kFirstDay + kDays, 0.0}, end, {})) run.SkipWithError("not reached");
        benchmark::DoNotOptimize(end);
        steps = static_cast<double>(body.steps());
    }
    run.counters["steps"] = steps;
    DE_Ephemeris::clear();
}
BENCHMARK_CAPTURE(Century, de405, true, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Century, theory, false, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Century, de405_another_body, true, true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Century, theory_another_body, false, true)->Unit(benchmark::kMillisecond);

// A place within what has been integrated.
void Query(benchmark::State& run) {
    with_file(true);
    solsys::IntegratedMotion body(std::make_shared<solsys::Perturbers>(true), solsys::kTheSun,
                                  {kFirstDay, 0.0}, kStart, {});
    solsys::State out{};
    body.state({kFirstDay + kDays, 0.0}, out, {});
    double t = 0;
    for (auto _ : run) {
        t = t < 30000 ? t + 0.01 : 0;
        body.state({kFirstDay, t}, out, {});
        benchmark::DoNotOptimize(out);
    }
    DE_Ephemeris::clear();
}
BENCHMARK(Query);

}  // namespace
