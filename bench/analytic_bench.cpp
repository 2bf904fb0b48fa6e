// One state of the built-in theory, by body, with and without velocity.
#include <benchmark/benchmark.h>

#include "ephemeris/analytic/analytic_theory.h"

namespace {

// Planets 1 to 9, the Moon as 10.
void analytic_state(benchmark::State& bench) {
    const int body = static_cast<int>(bench.range(0));
    const bool with_velocity = bench.range(1) != 0;
    solsys::Instant t{2451545, 0.0};
    solsys::State state{};
    for (auto _ : bench) {
        t.day = 2415020 + (t.day * 7 + 1) % 73049;  // no instant twice in a row
        const bool known = body == 10 ? solsys::analytic_moon(t, with_velocity, state)
                                      : solsys::analytic_planet(body, t, with_velocity, state);
        if (!known) bench.SkipWithError("no state");
        benchmark::DoNotOptimize(state);
    }
}
BENCHMARK(analytic_state)
    ->ArgNames({"body", "velocity"})
    ->ArgsProduct({benchmark::CreateDenseRange(1, 10, 1), {0, 1}});

}  // namespace
