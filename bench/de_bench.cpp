// States from DE405: random instants defeat every cache, sequential ones step through the file
// as a search does, and all bodies at one instant share the Sun.
#include <benchmark/benchmark.h>

#include <array>
#include <random>
#include <vector>

#include "solsys/de_ephemeris.h"

namespace {

// The span of DE405's test file [JD], left a day early so that steps do not run out of it.
constexpr double kStart = 2436912.5, kEnd = 2473487.5;

std::vector<double> random_instants() {
    std::mt19937_64 draw(405);
    std::uniform_real_distribution<double> instant(kStart, kEnd);
    std::vector<double> all(1 << 16);
    for (double& t : all) t = instant(draw);
    return all;
}

// Ten-minute steps.
std::vector<double> sequential_instants() {
    std::vector<double> all(1 << 16);
    for (std::size_t i = 0; i < all.size(); ++i)
        all[i] = 2451545.0 + static_cast<double>(i) / 144.0;
    return all;
}

void run(benchmark::State& bench, const std::vector<double>& instants, short velocities) {
    DE_Ephemeris::open(SOLSYS_DE405);
    const auto body = static_cast<short>(bench.range(0));
    DE_EvalState state;
    std::size_t i = 0;
    std::array<double, 6> out{};
    for (auto _ : bench) {
        const double t = instants[i++ % instants.size()];
        const int day = static_cast<int>(t);
        if (DE_Ephemeris::getState(state, day, t - day, body, velocities, out.data()) != 0) {
            bench.SkipWithError("no state: is the DE405 file there?");
            break;
        }
        benchmark::DoNotOptimize(out);
    }
}

void random_state(benchmark::State& bench) { run(bench, random_instants(), 1); }
void sequential_state(benchmark::State& bench) { run(bench, sequential_instants(), 1); }
void sequential_position(benchmark::State& bench) { run(bench, sequential_instants(), 0); }

void all_bodies_at_an_instant(benchmark::State& bench) {
    DE_Ephemeris::open(SOLSYS_DE405);
    const std::vector<double> instants = sequential_instants();
    DE_EvalState state;
    std::size_t i = 0;
    std::array<double, 6> out{};
    for (auto _ : bench) {
        const double t = instants[i++ % instants.size()];
        const int day = static_cast<int>(t);
        for (short body = 1; body <= 11; ++body) {
            DE_Ephemeris::getState(state, day, t - day, body, 1, out.data());
            benchmark::DoNotOptimize(out);
        }
    }
}

BENCHMARK(random_state)->DenseRange(1, 11);
BENCHMARK(sequential_state)->DenseRange(1, 11);
BENCHMARK(sequential_position)->Arg(4)->Arg(5)->Arg(10);
BENCHMARK(all_bodies_at_an_instant);

}  // namespace
